// Rows of YUV 4:2:2 pairs to and from 32-bit RGB pixels, and blended over them, for one instruction set.
#pragma once

#include "isa/caches.h"
#include "isa/kernels.h"
#include "row/over.h"
#include "row/yuv_lanes.h"

namespace vexlor {
namespace {

// make(vector, pair) and put(vector, pair, made) take whole vectors of pairs or a part of one; without vectors, pairs go
// one by one through one(pair).
inline void for_pairs(i32 count, [[maybe_unused]] auto make, [[maybe_unused]] auto put,
                      [[maybe_unused]] auto one)
{
    if (count < 2)
        return;
#if defined(__SSE2__)
    const auto at = [](u32 i) { return static_cast<i32>(i); };
    cover<4>(
        static_cast<u32>(whole_pairs(count)), [=](auto vector, u32 i) { return make(vector, at(i)); },
        [=](auto vector, u32 i, auto made) { put(vector, at(i), made); });
#else
    for (i32 i = 0; i < whole_pairs(count); ++i)
        one(i);
#endif
}

// The vectors of pairs and pixels that a vector of units stands for.
template <class Units> using PairsOf = PairVector<Units::bytes>;

template <class Yuv, class Rgb> void decode_row(const void* src, void* dst, i32 count)
{
    const Target target{static_cast<u32*>(dst), count >= static_cast<i32>(far_from)};
    for_pairs(
        count,
        [=](auto vector, i32 i) {
            return PairsOf<decltype(vector)>::template decode<Yuv, Rgb>(vector.load(pair_at(src, i)));
        },
        [=](auto vector, i32 i, auto pixels) { target.twice(vector, i, pixels); },
        [=](i32 i) { store_pixels(dst, i, decode<Yuv, Rgb>(load<u32>(pair_at(src, i)))); });
}

// Rows that touch may come as one. A picture that fills the caches goes past them, in whole lines of them.
template <class Yuv, class Rgb> void decode_rows(const void* src, void* dst, i32 count)
{
#if defined(__SSE2__)
    constexpr i32 made = vector_bytes / 4, line = 64;
    const auto to_line = static_cast<i32>(-reinterpret_cast<uintptr_t>(dst) % line);
    if (to_line % 8 == 0 && count > 0 && fills_caches(bytes_of(count, 4))) {
        i32 i = to_line / 8;
        decode_row<Yuv, Rgb>(src, dst, 2 * i);
        for (; whole_pairs(count) - i >= made; i += made) {
            const auto pairs = load<Vector<vector_bytes>::U32>(pair_at(src, i));
            const auto pixels = PairVector<vector_bytes>::decode<Yuv, Rgb>(pairs);
            stream(left_pixel_at(dst, i), native(pixels.low));
            stream(moved(left_pixel_at(dst, i), vector_bytes), native(pixels.high));
        }
        _mm_sfence();
        return decode_row<Yuv, Rgb>(pair_at(src, i), left_pixel_at(dst, i), count - 2 * i);
    }
#endif
    decode_row<Yuv, Rgb>(src, dst, count);
}

template <class Rgb, class Yuv> void encode_row(const void* src, void* dst, i32 count)
{
    for_pairs(
        count,
        [=](auto vector, i32 i) {
            const auto pixels = vector.load_twice(left_pixel_at(src, i));
            return PairsOf<decltype(vector)>::template encode<Rgb, Yuv>(pixels);
        },
        [=](auto vector, i32 i, auto pairs) { vector.store(pair_at(dst, i), pairs); },
        [=](i32 i) { store(pair_at(dst, i), encode<Rgb, Yuv>(load_pixels(src, i))); });
}

// The blend itself is always that of 32-bit pixels.
inline PixelPair blend_pixels(PixelPair s, PixelPair d, Constant g)
{
    return {blend<Straight>(s.left, d.left, g.f), blend<Straight>(s.right, d.right, g.f)};
}

#if defined(__SSE2__)
template <class Pixels> inline Twice<Pixels> blend_pixels(Twice<Pixels> s, Twice<Pixels> d, auto g)
{
    const auto over = [=](Pixels a, Pixels b) { return blend_vector<Straight, sizeof(Pixels)>(a, b, g); };
    return {over(s.low, d.low), over(s.high, d.high)};
}
#endif

template <class Yuv, class Rgb> void yuv_over_rgb(const void* src, void* dst, i32 count, auto g)
{
    for_pairs(
        count,
        [=](auto vector, i32 i) {
            const auto s = PairsOf<decltype(vector)>::template decode<Yuv, Rgb>(vector.load(pair_at(src, i)));
            return blend_pixels(s, vector.load_twice(left_pixel_at(dst, i)), g);
        },
        [=](auto vector, i32 i, auto pixels) { vector.store_twice(left_pixel_at(dst, i), pixels); },
        [=](i32 i) {
            const PixelPair s = decode<Yuv, Rgb>(load<u32>(pair_at(src, i)));
            store_pixels(dst, i, blend_pixels(s, load_pixels(dst, i), g));
        });
}

// A YUV destination goes through RGB and back; either order of bytes in between gives the same.
template <class Yuv> void yuv_over_yuv(const void* src, void* dst, i32 count, auto g)
{
    using Rgb = X8R8G8B8;
    for_pairs(
        count,
        [=](auto vector, i32 i) {
            using Pairs = PairsOf<decltype(vector)>;
            const auto s = Pairs::template decode<Yuv, Rgb>(vector.load(pair_at(src, i)));
            const auto d = Pairs::template decode<Yuv, Rgb>(vector.load(pair_at(dst, i)));
            return Pairs::template encode<Rgb, Yuv>(blend_pixels(s, d, g));
        },
        [=](auto vector, i32 i, auto pairs) { vector.store(pair_at(dst, i), pairs); },
        [=](i32 i) {
            const PixelPair s = decode<Yuv, Rgb>(load<u32>(pair_at(src, i)));
            const PixelPair d = decode<Yuv, Rgb>(load<u32>(pair_at(dst, i)));
            store(pair_at(dst, i), encode<Rgb, Yuv>(blend_pixels(s, d, g)));
        });
}

template <class Yuv, class Rgb> void yuv_over_rgb_by(const void* src, void* dst, i32 count, u32 g)
{
    with_weight(g, [=](auto weight) { yuv_over_rgb<Yuv, Rgb>(src, dst, count, weight); });
}
template <class Yuv> void yuv_over_yuv_by(const void* src, void* dst, i32 count, u32 g)
{
    with_weight(g, [=](auto weight) { yuv_over_yuv<Yuv>(src, dst, count, weight); });
}

} // namespace
} // namespace vexlor

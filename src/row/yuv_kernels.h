// Rows of YUV 4:2:2 pairs to and from 32-bit RGB pixels, and blended over them, for one instruction set.
#pragma once

#include "row/over.h"
#include "row/yuv_lanes.h"

namespace vexlor {
namespace {

// Calls vectors(pair) for as many whole vectors of pairs as there are, widest first, then one(pair) for the rest.
// vectors takes the vector's bytes as a constant.
template <u32 Bytes> struct Wide {
    static constexpr u32 bytes = Bytes;
    static constexpr i32 pairs = static_cast<i32>(Bytes / 4);
};
inline void for_pairs(i32 count, auto vectors, auto one)
{
    i32 i = 0;
    const i32 pairs = whole_pairs(count);
    if constexpr (vector_bytes > 16)
        for (; pairs - i >= Wide<vector_bytes>::pairs; i += Wide<vector_bytes>::pairs)
            vectors(Wide<vector_bytes>{}, i);
    if constexpr (vector_bytes != 0)
        for (; pairs - i >= Wide<16>::pairs; i += Wide<16>::pairs)
            vectors(Wide<16>{}, i);
    for (; i < pairs; ++i)
        one(i);
}

template <class Yuv, class Rgb> void decode_row(const void* src, void* dst, i32 count)
{
    const auto vectors = [=](auto wide, i32 i) {
        using V = PairVector<wide.bytes>;
        const auto pixels = V::template decode<Yuv, Rgb>(load<typename V::U32>(pair_at(src, i)));
        store(left_pixel_at(dst, i), pixels.low);
        store(left_pixel_at(dst, i + wide.pairs / 2), pixels.high);
    };
    for_pairs(count, vectors,
              [=](i32 i) { store_pixels(dst, i, decode<Yuv, Rgb>(load<u32>(pair_at(src, i)))); });
}

template <class Rgb, class Yuv> void encode_row(const void* src, void* dst, i32 count)
{
    const auto vectors = [=](auto wide, i32 i) {
        using V = PairVector<wide.bytes>;
        using U32 = typename V::U32;
        const U32 first = load<U32>(left_pixel_at(src, i));
        const U32 second = load<U32>(left_pixel_at(src, i + wide.pairs / 2));
        store(pair_at(dst, i), V::template encode<Rgb, Yuv>(first, second));
    };
    for_pairs(count, vectors, [=](i32 i) { store(pair_at(dst, i), encode<Rgb, Yuv>(load_pixels(src, i))); });
}

// The blend itself is always that of 32-bit pixels.
inline PixelPair blend_pixels(PixelPair s, PixelPair d, u32 g)
{
    return {blend<Straight>(s.left, d.left, g), blend<Straight>(s.right, d.right, g)};
}

template <u32 Bytes>
inline typename Vector<Bytes>::U32 blend_pixels(typename Vector<Bytes>::U32 s, typename Vector<Bytes>::U32 d,
                                                u32 g)
{
    return blend_vector<Straight, Bytes>(s, d, Constant{g}.halves(s));
}

template <class Yuv, class Rgb> void yuv_over_rgb(const void* src, void* dst, i32 count, u32 g)
{
    const auto vectors = [=](auto wide, i32 i) {
        using V = PairVector<wide.bytes>;
        using U32 = typename V::U32;
        const auto s = V::template decode<Yuv, Rgb>(load<U32>(pair_at(src, i)));
        void* const first = left_pixel_at(dst, i);
        void* const second = left_pixel_at(dst, i + wide.pairs / 2);
        store(first, blend_pixels<wide.bytes>(s.low, load<U32>(first), g));
        store(second, blend_pixels<wide.bytes>(s.high, load<U32>(second), g));
    };
    const auto one = [=](i32 i) {
        const PixelPair s = decode<Yuv, Rgb>(load<u32>(pair_at(src, i)));
        store_pixels(dst, i, blend_pixels(s, load_pixels(dst, i), g));
    };
    for_pairs(count, vectors, one);
}

// A YUV destination goes through RGB and back; either order of bytes in between gives the same.
template <class Yuv> void yuv_over_yuv(const void* src, void* dst, i32 count, u32 g)
{
    using Rgb = X8R8G8B8;
    const auto vectors = [=](auto wide, i32 i) {
        using V = PairVector<wide.bytes>;
        using U32 = typename V::U32;
        const auto s = V::template decode<Yuv, Rgb>(load<U32>(pair_at(src, i)));
        const auto d = V::template decode<Yuv, Rgb>(load<U32>(pair_at(dst, i)));
        store(pair_at(dst, i), V::template encode<Rgb, Yuv>(blend_pixels<wide.bytes>(s.low, d.low, g),
                                                            blend_pixels<wide.bytes>(s.high, d.high, g)));
    };
    const auto one = [=](i32 i) {
        const PixelPair s = decode<Yuv, Rgb>(load<u32>(pair_at(src, i)));
        const PixelPair d = decode<Yuv, Rgb>(load<u32>(pair_at(dst, i)));
        store(pair_at(dst, i), encode<Rgb, Yuv>(blend_pixels(s, d, g)));
    };
    for_pairs(count, vectors, one);
}

} // namespace
} // namespace vexlor

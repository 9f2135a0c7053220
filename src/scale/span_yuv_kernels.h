// Spans of unfiltered scaling from YUV to RGB, for one instruction set.
#pragma once

#include "row/yuv_kernels.h"
#include "scale/span_kernels.h"

namespace vexlor {
namespace {

constexpr u32 yuv_block = 256; // source pairs that are converted at a time

// Returns the pairs that it made. Where vectors are a whole number of source pairs apart, in a picture that is enlarged 2 or
// 4 times, each pair is decoded once, into a block of pixels that the copies are picked from, alike for every vector.
template <class Yuv, class Rgb>
u32 enlarge_yuv([[maybe_unused]] const Stepped& source, [[maybe_unused]] void* dst,
                [[maybe_unused]] u32 pairs)
{
#if defined(__AVX2__)
    using Pixels = Vector<vector_bytes>::U32;
    constexpr u32 made = lane_count<Pixels> / 2; // pairs of a vector
    const u32 by = static_cast<u32>(source.step) * made >> 16;
    if (source.step <= 0 || source.step > 0x8000 || (i64{source.step} * made & 0xFFFF) != 0)
        return 0;
    alignas(vector_bytes) u32 pixels[2 * (yuv_block + made)];
    const Pixels lane = lane_numbers<Pixels>();
    const Pixels steps = (lane >> 1) * static_cast<u32>(source.step) + static_cast<u32>(source.x & 0xFFFF);
    const Pixels index = (steps >> 16) * 2 + (lane & 1);
    const u32 all = pairs - pairs % made;
    for (u32 i = 0; i < all;) {
        const ptrdiff_t first = Position(source.x).unit + static_cast<ptrdiff_t>(size_t{i / made} * by);
        const u32 most = yuv_block / by, left = (all - i) / made;
        const u32 vectors = left < most ? left : most;
        // The last vector may pick from the pair behind the block.
        const ptrdiff_t rest = source.length - first, longest = yuv_block + 1;
        const auto decoded = static_cast<i32>(rest < longest ? rest : longest);
        decode_row<Yuv, Rgb>(source.at(first), pixels, 2 * decoded);
        for (u32 k = 0; k < vectors; ++k, i += made)
            store(left_pixel_at(dst, static_cast<i32>(i)),
                  pick(load<Pixels>(pixels + size_t{2} * k * by), index));
    }
    return all;
#else
    return 0;
#endif
}

// As many pairs as come from one vector and go into one. Returns the pairs that it made.
template <class Yuv, class Rgb>
u32 scale_yuv_vector([[maybe_unused]] const Stepped& source, [[maybe_unused]] void* dst,
                     [[maybe_unused]] u32 pairs)
{
#if defined(__AVX512BW__)
    using Pairs = First<4>::U32;
    if (pairs == 0 || source.step < 0 || source.step > 0x10000)
        return 0;
    const u32 number = pairs < lane_count<Pairs> ? pairs : lane_count<Pairs>;
    const Position start(source.x);
    const auto step = static_cast<u32>(source.step);
    const ptrdiff_t read = source.from(0, number).length - start.unit;
    const Pairs window = First<4>{static_cast<u32>(read)}.load(source.at(start.unit));
    First<4>{number}.store_twice(
        dst, PairVector<64>::template decode<Yuv, Rgb>(pick(window, start.lanes<Pairs>(step))));
    return number;
#else
    return 0;
#endif
}

template <class Yuv, class Rgb>
void scale_opaque_nofilt_yuv(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    constexpr u32 few = 48;
    const u32 pairs = count / 2;
    const Stepped source(src, x, step, pairs);
    const auto to = [=](u32 i) { return left_pixel_at(dst, static_cast<i32>(i)); };
    u32 i = pairs > few ? enlarge_yuv<Yuv, Rgb>(source, dst, pairs) : 0;
    if (pairs - i <= few)
        while (const u32 made = scale_yuv_vector<Yuv, Rgb>(source.from(i, pairs - i), to(i), pairs - i))
            i += made;
    u32 picked[yuv_block];
    for (; i < pairs; i += yuv_block) {
        const u32 number = pairs - i < yuv_block ? pairs - i : yuv_block;
        write_units(source.from(i, number), picked, number, [](auto pair) { return pair; });
        decode_row<Yuv, Rgb>(picked, to(i), static_cast<i32>(2 * number));
    }
}

} // namespace
} // namespace vexlor

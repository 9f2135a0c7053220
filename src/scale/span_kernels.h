// Spans of unfiltered scaling, for one instruction set.
#pragma once

#include "row/leading.h"
#include "row/over.h"
#include "row/stepped.h"
#include "row/unzip.h"
#include "row/windows.h"
#include "row/yuv_kernels.h"

namespace vexlor {
namespace {

#if defined(__AVX2__)

// Calls put(i, units) for as many whole vectors as find their units in so many windows of a vector, and returns how many
// units they are.
template <u32 WindowCount> u32 put_from_windows(const Stepped& source, u32 count, auto put)
{
    using Units = Vector<vector_bytes>::U32;
    constexpr u32 units = lane_count<Units>;
    const auto step = static_cast<u32>(source.step);
    const u32 by = step * units;
    const i64 room = ((source.length - i64{WindowCount} * units + 1) << 16) - source.x; // for positions
    const i64 fitting = room <= 0 ? 0 : by == 0 ? count : (room + by - 1) / by;
    const u32 vectors = fitting < count / units ? static_cast<u32>(fitting) : count / units;
    const auto picked = [](const u8* window, Units index) {
        if constexpr (WindowCount == 1)
            return pick(load<Units>(window), index);
        else
            return pick_of_two(load<Units>(window), load<Units>(window + vector_bytes), index);
    };
    Position at(source.x);
    if (by % 0x10000 != 0) {
        for (u32 i = 0; i < vectors; ++i, at.advance(by))
            put(i * units, picked(source.at(at.unit), at.lanes<Units>(step)));
        return vectors * units;
    }
    // All windows are picked from alike.
    const auto walk = [&](const u8* window, auto units_in) {
        for (u32 i = 0; i < vectors; ++i, window += size_t{by} / 0x10000 * 4)
            put(i * units, units_in(window));
    };
    // Halves start at the row's second unit, and read from its first one on: rows are better aligned there.
    if (step == 0x20000 && source.x >= 0x10000)
        walk(source.at(at.unit - 1), [](const u8* window) {
            return odd_units(load<Units>(window), load<Units>(window + vector_bytes));
        });
    else
        walk(source.at(at.unit),
             [=, index = at.lanes<Units>(step)](const u8* window) { return picked(window, index); });
    return vectors * units;
}

#endif

// Calls put(i, units) for all whole vectors of a source, and returns how many units they are.
template <u32 Bytes> u32 put_vectors(const Stepped& source, u32 count, auto put)
{
    using Units = typename Vector<Bytes>::U32;
    u32 i = 0;
#if defined(__AVX2__)
    if (source.step >= 0 && source.step <= 0x10000)
        i = put_from_windows<1>(source, count, put);
    else if (source.step > 0 && source.step <= 0x20000)
        i = put_from_windows<2>(source, count, put);
#endif
    for (; count - i >= lane_count<Units>; i += lane_count<Units>)
        put(i, source.pixels<Units>(i));
    return i;
}

// Writes every unit of a source through a rule that takes a unit or a vector of them.
inline void write_units(const Stepped& source, void* dst, u32 count, auto rule)
{
    auto* const to = static_cast<u32*>(dst);
    u32 i = 0;
    if constexpr (vector_bytes != 0)
        i = put_vectors<vector_bytes>(source, count,
                                      [=](u32 at, auto units) { store(to + at, rule(units)); });
    for (; i < count; ++i)
        store(to + i, rule(source[i]));
}

inline void scale_opaque_nofilt_32(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    write_units(Stepped(src, x, step, count), dst, count, [](auto p) { return p; });
}

inline void scale_opaque_nofilt_aone_8888(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 alpha = 0xFFu << vexlor_fmt_get_alpha_shift(format);
    write_units(Stepped(src, x, step, count), dst, count, [=](auto p) { return p | alpha; });
}

// Returns the pixels that it made. The last vector ends at the row's end, and may make pixels anew.
inline u32 scale_565_vectors([[maybe_unused]] const void* src, [[maybe_unused]] u16* dst,
                             [[maybe_unused]] u32 count, [[maybe_unused]] i32 x, [[maybe_unused]] i32 step)
{
#if defined(__AVX2__)
    using Units = Vector<vector_bytes>::U32;
    constexpr u32 units = lane_count<Units>, pixels = 2 * units;
    if (step < 0 || step > 0x20000 || count < pixels)
        return 0;
    const auto by = static_cast<u32>(step);
    const Position start(x);
    const auto place = [=](u32 i) {
        return Position(static_cast<i64>(start.fraction) + static_cast<i64>(u64{i} * by));
    };
    const SourceRow<u16> row{static_cast<const u8*>(moved(src, bytes_of(start.unit, 2))),
                             place(count - 1).unit};
    const Windows<u16, pixels + 1> windows(row);
    const auto make = [&](u32 i, Position at) {
        const auto half = [&] { return pick_halves(windows(at.unit), at.lanes<Units>(by)); };
        const Units first = half();
        at.advance(by * units);
        store(dst + i, low_halves(first, half()));
    };
    Position at = place(0);
    for (u32 i = 0; i < count - pixels; i += pixels, at.advance(by * pixels))
        make(i, at);
    make(count - pixels, place(count - pixels));
    return count;
#else
    return 0;
#endif
}

inline void scale_opaque_nofilt_565(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    auto* const pixels = static_cast<u16*>(dst);
    u32 i = scale_565_vectors(src, pixels, count, x, step);
    for (i64 at = x + i64{i} * step; i < count; ++i, at += step)
        store(pixels + i, load<u16>(moved(src, bytes_of(at >> 16, 2))));
}

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
        const i64 first = (source.x >> 16) + i64{i / made} * by;
        const u32 most = yuv_block / by, left = (all - i) / made;
        const u32 vectors = left < most ? left : most;
        // The last vector may pick from the pair behind the block.
        const i64 rest = source.length - first;
        const auto decoded = static_cast<i32>(rest < yuv_block + 1 ? rest : yuv_block + 1);
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
    using Pairs = Leading::U32;
    if (pairs == 0 || source.step < 0 || source.step > 0x10000)
        return 0;
    const u32 number = pairs < lane_count<Pairs> ? pairs : lane_count<Pairs>;
    const Position start(source.x);
    const auto step = static_cast<u32>(source.step);
    const i64 read = source.from(0, number).length - start.unit;
    const Pairs window = Leading{static_cast<u32>(read)}.load(source.at(start.unit));
    Leading{number}.store_twice(
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

// Both alpha shifts are that of the destination's format.
template <class Mix, class Alpha>
void scale_blend_over_src_nofilt(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(format);
    over<Mix>(Stepped(src, x, step, count), static_cast<u32*>(dst), count, PixelAlpha{shift}, Alpha{shift});
}

} // namespace
} // namespace vexlor

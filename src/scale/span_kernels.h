// Spans of unfiltered scaling of 32-bit units, for one instruction set.
#pragma once

#include "row/over.h"
#include "row/stepped.h"
#include "row/unzip.h"

namespace vexlor {
namespace {

#if defined(__AVX2__)

// Calls put(i, units) for the vectors of a source of so many units, and returns how many units they are: all of them, or none
// where the row is too short for so many windows of a vector. Steps are forward, and at most as many units as windows. The
// last vector ends at the row's end, and may make units anew.
template <u32 WindowCount> u32 put_from_windows(const Stepped& source, u32 count, auto put)
{
    using Units = Vector<vector_bytes>::U32;
    constexpr u32 units = lane_count<Units>;
    const auto step = static_cast<u32>(source.step);
    const u32 by = step * units;
    const Position at(source.x);
    const ptrdiff_t last = source.length - ptrdiff_t{WindowCount} * ptrdiff_t{units};
    if (count < units || last < at.unit)
        return 0;
    const u8* const end = source.at(last); // the last window
    const auto picked = [](const u8* window, Units index) {
        if constexpr (WindowCount == 1)
            return pick(load<Units>(window), index);
        else
            return pick_of_two(load<Units>(window), load<Units>(window + vector_bytes), index);
    };
    u32 i = 0;
    if (by % 0x10000 != 0) {
        const u8* window = source.at(at.unit);
        for (u32 fraction = at.fraction; window <= end; i += units) {
            put(i, picked(window, (lane_numbers<Units>() * step + fraction) >> 16));
            fraction += by;
            window += size_t{fraction >> 16} * 4;
            fraction &= 0xFFFF;
        }
    } else {
        // All windows are picked from alike. Halves start at the row's second unit, and read from its first one on: rows are
        // better aligned there.
        const auto walk = [&](ptrdiff_t before, auto units_in) {
            const u8* window = source.at(at.unit);
            for (; window <= end; i += units, window += size_t{by} / 0x10000 * 4)
                put(i, units_in(window - before));
        };
        const bool halves = WindowCount == 2 && step == 0x20000 && source.x >= 0x10000;
        if constexpr (WindowCount == 2)
            if (halves)
                walk(4, [](const u8* window) {
                    return odd_units(load<Units>(window), load<Units>(window + vector_bytes));
                });
        if (!halves)
            walk(0, [=, index = at.lanes<Units>(step)](const u8* window) { return picked(window, index); });
    }
    for (; i < count; i += units) {
        i = i < count - units ? i : count - units;
        const Position near = source.place(i);
        put(i, picked(end, near.lanes<Units>(step) + static_cast<u32>(near.unit - last)));
    }
    return count;
}

#endif

// Calls put(i, units) for all whole vectors of a source, and returns how many units they are.
template <u32 Bytes> u32 put_vectors(const Stepped& source, u32 count, auto put)
{
    using Units = typename Vector<Bytes>::U32;
    u32 i = 0;
#if defined(__AVX2__)
    if (source.step > 0 && source.step <= 0x10000)
        i = put_from_windows<1>(source, count, put);
    else if (source.step > 0 && source.step <= 0x20000)
        i = put_from_windows<2>(source, count, put);
#endif
    for (; count - i >= lane_count<Units>; i += lane_count<Units>)
        put(i, source.pixels<Units>(i));
    return i;
}

// Makes every unit of a source by a rule that takes a unit or a vector of them, and calls put(i, write) with what writes
// them to an address.
inline void put_units(const Stepped& source, u32 count, auto rule, auto put)
{
    u32 i = 0;
    if constexpr (vector_bytes != 0)
        i = put_vectors<vector_bytes>(source, count, [=](u32 first, auto units) {
            put(first, [made = rule(units)](void* to) { store(to, made); });
        });
#if defined(__AVX512BW__)
    const First<4> rest{count - i};
    if (rest.units != 0)
        put(i, [=, made = rule(rest.units_of(source, i))](void* to) { rest.store(to, made); });
#else
    for (; i < count; ++i)
        put(i, [made = rule(source[i])](void* to) { store(to, made); });
#endif
}

inline void write_units(const Stepped& source, void* dst, u32 count, auto rule)
{
    put_units(source, count, rule, [=](u32 i, auto write) { write(static_cast<u32*>(dst) + i); });
}

constexpr auto as_they_are = [](auto units) { return units; };

// Of long rows, lines of the cache are fetched ahead: the next span's in a picture that is enlarged so many times, those that
// follow in one that is reduced.
template <u32 Rows> inline void put_in_rows(const Stepped& source, void* dst, u32 stride, u32 count)
{
    constexpr u32 long_row = 128;
    const i64 covered = i64{source.step} * Rows;
    const bool enlarging = Rows > 1 && covered <= 0x10000 && covered + source.step > 0x10000;
    const bool reducing = Rows == 1 && source.step > 0x10000;
    const bool fetching = count >= long_row && (enlarging || reducing);
    const uintptr_t ahead = reducing ? 1024 : bytes_of(Rows, stride);
    const auto put = [=](auto fetch) {
        put_units(source, count, as_they_are, [=](u32 i, auto write) {
            u8* const at = static_cast<u8*>(dst) + uintptr_t{i} * 4;
            for (u32 row = 0; row < Rows; ++row) {
                u8* const to = moved(at, bytes_of(row, stride));
                write(to);
                fetch(to);
            }
        });
    };
    if (fetching)
        put([=](u8* to) { __builtin_prefetch(moved(to, ahead), 1); }); // any address will do
    else
        put([](u8*) {});
}

inline void scale_opaque_nofilt_32(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    put_in_rows<1>(Stepped(src, x, step, count), dst, 0, count);
}

// Into so many rows below each other. Flat: calls within would copy the source, and wait for what it was made of.
[[gnu::flatten]] inline void scale_opaque_nofilt_32_rows(const void* src, void* dst, u32 stride, u32 rows,
                                                         u32 count, i32 x, i32 step)
{
    const Stepped source(src, x, step, count);
    for (; rows > 3; rows -= 2, dst = moved(dst, bytes_of(2, stride)))
        put_in_rows<2>(source, dst, stride, count);
    switch (rows) {
    case 1: return put_in_rows<1>(source, dst, stride, count);
    case 2: return put_in_rows<2>(source, dst, stride, count);
    case 3: return put_in_rows<3>(source, dst, stride, count);
    }
}

inline void scale_opaque_nofilt_aone_8888(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 alpha = 0xFFu << vexlor_fmt_get_alpha_shift(format);
    write_units(Stepped(src, x, step, count), dst, count, [=](auto p) { return p | alpha; });
}

// Both alpha shifts are that of the destination's format.
template <class Mix, class Alpha>
void scale_blend_over_src_nofilt(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(format);
    const PixelAlpha weight{shift};
    const Alpha alpha{shift};
    const Stepped source(src, x, step, count);
    auto* const to = static_cast<u32*>(dst);
#if defined(__AVX2__)
    constexpr Whole<vector_bytes> vector;
    constexpr u32 units = vector_bytes / 4, long_row = 8 * units;
    if (count >= long_row) { // shorter rows are covered faster
        const Target target{to, count >= Stepped::far_from};
        const auto make = [=](u32 i, auto s) {
            return alpha(blend_vector<Mix, vector_bytes>(s, vector.load(to + i), weight), s);
        };
        // What is left of whole vectors is part of one that overlaps them: made first, from pixels as they were.
        const u32 last = count - units, rest = count % units;
        Vector<vector_bytes>::U32 end{};
        if (rest != 0)
            end = make(last, vector.units_of(source, last));
        put_vectors<vector_bytes>(source, count - rest,
                                  [=](u32 i, auto s) { target(vector, i, make(i, s)); });
        if (rest != 0)
            target(vector, last, end);
        return;
    }
#endif
    over<Mix>(source, to, count, weight, alpha);
}

} // namespace
} // namespace vexlor

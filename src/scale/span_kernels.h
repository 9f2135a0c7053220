// Spans of unfiltered scaling, for one instruction set.
#pragma once

#include "row/over.h"
#include "row/stepped.h"
#include "row/unzip.h"
#include "row/windows.h"

namespace vexlor {
namespace {

#if defined(__AVX2__)

// Calls put(i, units) for as many whole vectors of a source of so many units as find theirs in so many windows of a vector,
// and returns how many units they are. Steps are forward, and at most as many units as windows.
template <u32 WindowCount> u32 put_from_windows(const Stepped& source, u32 count, auto put)
{
    using Units = Vector<vector_bytes>::U32;
    constexpr u32 units = lane_count<Units>;
    const auto step = static_cast<u32>(source.step);
    const u32 by = step * units;
    // From so few steps before the last one on, windows would reach beyond the last unit.
    const u32 fraction_at_end = (static_cast<u32>(source.x) + (count - 1) * step) & 0xFFFF;
    const u32 near_end = (fraction_at_end + (WindowCount * units - 2) * 0x10000) / step + 1;
    const u32 vectors = count <= near_end ? 0 : (count - near_end + units - 1) / units;
    const auto picked = [](const u8* window, Units index) {
        if constexpr (WindowCount == 1)
            return pick(load<Units>(window), index);
        else
            return pick_of_two(load<Units>(window), load<Units>(window + vector_bytes), index);
    };
    const Position at(source.x);
    if (by % 0x10000 != 0) {
        const u8* window = source.at(at.unit);
        u32 fraction = at.fraction;
        for (u32 i = 0; i < vectors; ++i) {
            put(i * units, picked(window, (lane_numbers<Units>() * step + fraction) >> 16));
            fraction += by;
            window += size_t{fraction >> 16} * 4;
            fraction &= 0xFFFF;
        }
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
    if (source.step > 0 && source.step <= 0x10000)
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

#if defined(__AVX2__)
// A vector of pixels of 16 bits: picked from one or two windows of a vector, or half by half from such a one and a bit more.
struct Vector565 {
    using Units = Vector<vector_bytes>::U32;
    static constexpr u32 pixels = vector_bytes / 2;
    static constexpr u32 window = vector_bytes == 64 ? 2 * pixels : pixels + 1;
#if defined(__AVX512BW__)
    using Order = Vector<vector_bytes>::U16;
    static Order order(Position at, u32 by)
    {
        return low_halves(at.lanes<Units>(by), at.lanes<Units>(by, pixels / 2));
    }
    static auto make(const Windows<u16, window>& windows, Position at, u32 by, Order order)
    {
        return by <= 0x10000 ? pick_words(windows(at.unit), order)
                             : pick_words_of_two(windows(at.unit), order);
    }
#else
    struct Order {};
    static Order order(Position, u32) { return {}; }
    static auto make(const Windows<u16, window>& windows, Position at, u32 by, Order)
    {
        const auto half = [&] { return pick_halves(windows(at.unit), at.lanes<Units>(by)); };
        const Units first = half();
        at.advance(by * (pixels / 2));
        return low_halves(first, half());
    }
#endif
};
#endif

// Returns the pixels that it made. The last vector ends at the row's end, and may make pixels anew.
inline u32 scale_565_vectors([[maybe_unused]] const void* src, [[maybe_unused]] u16* dst,
                             [[maybe_unused]] u32 count, [[maybe_unused]] i32 x, [[maybe_unused]] i32 step)
{
#if defined(__AVX2__)
    constexpr u32 pixels = Vector565::pixels;
    if (step < 0 || step > 0x20000 || count < pixels)
        return 0;
    const auto by = static_cast<u32>(step);
    const Position start(x);
    const auto place = [=](u32 i) {
        return Position(static_cast<i64>(start.fraction) + static_cast<i64>(u64{i} * by));
    };
    const SourceRow<u16> row{static_cast<const u8*>(moved(src, bytes_of(start.unit, 2))),
                             place(count - 1).unit};
    const Windows<u16, Vector565::window> windows(row);
    Position at = place(0);
    const bool alike = by * pixels % 0x10000 == 0; // all vectors are picked alike
    auto order = Vector565::order(at, by);
    for (u32 i = 0; i < count - pixels; i += pixels) {
        store(dst + i, Vector565::make(windows, at, by, order));
        at.advance(by * pixels);
        if (!alike)
            order = Vector565::order(at, by);
    }
    const Position last = place(count - pixels);
    store(dst + (count - pixels), Vector565::make(windows, last, by, Vector565::order(last, by)));
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

// Both alpha shifts are that of the destination's format.
template <class Mix, class Alpha>
void scale_blend_over_src_nofilt(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(format);
    over<Mix>(Stepped(src, x, step, count), static_cast<u32*>(dst), count, PixelAlpha{shift}, Alpha{shift});
}

} // namespace
} // namespace vexlor

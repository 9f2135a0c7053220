// Spans of unfiltered scaling of 565 pixels, for one instruction set.
#pragma once

#include "row/stepped.h"
#include "row/unzip.h"

#include <string.h>

namespace vexlor {
namespace {

#if defined(__AVX2__)
// Pixels of 16 bits, picked from a window of twice as many, or of as many where steps are short.
struct Vector565 {
    using Units = Vector<vector_bytes>::U32;
#if defined(__AVX512BW__)
    static constexpr u32 pixels = 32;
    using Order = Vector<64>::U16;
    static ptrdiff_t window(u32 by) { return ptrdiff_t{pixels} * (by <= 0x10000 ? 1 : 2); }
    static Order order(Position at, u32 by, u32 units_on)
    {
        return low_halves(at.lanes<Units>(by) + units_on, at.lanes<Units>(by, pixels / 2) + units_on);
    }
    static Order make(const u8* window, u32 by, Order order)
    {
        return by <= 0x10000 ? pick_words(window, order) : pick_words_of_two(window, order);
    }
#else
    static constexpr u32 pixels = 8;
    using Order = Units;
    static ptrdiff_t window(u32) { return ptrdiff_t{pixels} * 2; }
    static Order order(Position at, u32 by, u32 units_on) { return at.lanes<Units>(by) + units_on; }
    static __m128i make(const u8* window, u32, Order order)
    {
        const Units picked = pick(load<Units>(window), order >> 1) >> ((order & 1) << 4);
        return _mm256_castsi256_si128(native(low_halves(picked, picked)));
    }
#endif
};
#endif

// Returns the pixels that it made. The last vector ends at the row's end, and may make pixels anew; windows do not reach
// beyond it.
inline u32 scale_565_vectors([[maybe_unused]] const void* src, [[maybe_unused]] u16* dst,
                             [[maybe_unused]] u32 count, [[maybe_unused]] i32 x, [[maybe_unused]] i32 step)
{
#if defined(__AVX2__)
    constexpr u32 pixels = Vector565::pixels;
    if (step < 0 || step > 0x20000 || count < pixels)
        return 0;
    const auto by = static_cast<u32>(step);
    const ptrdiff_t window = Vector565::window(by);
    const u32 fraction = static_cast<u32>(x) & 0xFFFF;
    const auto place = [=](u32 i) { return Position(static_cast<i64>(fraction + u64{i} * by)); };
    const auto* row = static_cast<const u8*>(moved(src, bytes_of(x >> 16, 2)));
    const ptrdiff_t length = place(count - 1).unit + 1;
    u16 short_row[2 * pixels];
    if (length < window)
        row = static_cast<const u8*>(memcpy(short_row, row, static_cast<size_t>(length) * 2));
    const ptrdiff_t last = length < window ? 0 : length - window; // of windows
    Position at = place(0);
    const bool alike = by * pixels % 0x10000 == 0; // all vectors are picked alike
    auto order = Vector565::order(at, by, 0);
    u32 i = 0;
    for (; i < count - pixels && at.unit <= last; i += pixels) {
        store(dst + i, Vector565::make(row + at.unit * 2, by, order));
        at.advance(by * pixels);
        if (!alike)
            order = Vector565::order(at, by, 0);
    }
    for (; i < count; i += pixels) { // no vector that is left begins before the last window
        i = i < count - pixels ? i : count - pixels;
        at = place(i);
        order = Vector565::order(at, by, static_cast<u32>(at.unit - last));
        store(dst + i, Vector565::make(row + last * 2, by, order));
    }
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

} // namespace
} // namespace vexlor

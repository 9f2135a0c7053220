// Rows covered by vectors without a scalar rest.
#pragma once

#include "row/vectors.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

// Covers a row of units of so many bytes: make(vector, i) reads the units from i on, put(vector, i, made) writes them,
// where vector is a Whole, a First or a Part. Flat: calls within a loop would cost more than the pixels.

#if defined(__AVX512BW__)

// The last vector overlaps the one before and is made first, from units as they were. Long rows begin with what lies before
// the first line of the cache in dst: vectors that each touch two lines take longer.
template <u32 Unit>
[[gnu::flatten]] inline void cover(u32 count, auto make, auto put, const void* dst = nullptr)
{
    constexpr u32 units = First<Unit>::all, long_row = 32 * units;
    constexpr Whole<64> whole;
    const auto behind = static_cast<u32>(reinterpret_cast<uintptr_t>(dst) % 64 / Unit); // a line
    const bool aligning = count >= long_row && behind != 0;
    u32 i = 0;
    if (aligning || count < units) {
        const First<Unit> first{aligning ? units - behind : count};
        put(first, i, make(first, i));
        i = first.units;
    }
    if (i == count)
        return;
    const u32 last = count - units;
    const auto end = make(whole, last);
    for (; i < last; i += units)
        put(whole, i, make(whole, i));
    put(whole, last, end);
}

#else

// The last vector is made first, from units as they were.
template <class Vector, u32 Unit> [[gnu::flatten]] inline void cover_by(u32 count, auto make, auto put)
{
    constexpr Vector vector;
    constexpr u32 units = Vector::span / Unit;
    const u32 last = count - units;
    const auto end = make(vector, last);
    for (u32 i = 0; i < last; i += units)
        put(vector, i, make(vector, i));
    put(vector, last, end);
}

template <u32 Unit> inline void cover(u32 count, auto make, auto put, const void* = nullptr)
{
    if constexpr (vector_bytes >= 32)
        if (count >= 32 / Unit)
            return cover_by<Whole<32>, Unit>(count, make, put);
    if (count >= 16 / Unit)
        return cover_by<Whole<16>, Unit>(count, make, put);
    if constexpr (Unit == 2)
        switch (count) {
        case 7: return cover_by<Part<14>, Unit>(count, make, put);
        case 5: return cover_by<Part<10>, Unit>(count, make, put);
        case 3: return cover_by<Part<6>, Unit>(count, make, put);
        case 1: return cover_by<Part<2>, Unit>(count, make, put);
        }
    if (count >= 12 / Unit)
        return cover_by<Part<12>, Unit>(count, make, put);
    if (count >= 8 / Unit)
        return cover_by<Part<8>, Unit>(count, make, put);
    if (count >= 4 / Unit)
        return cover_by<Part<4>, Unit>(count, make, put);
}

#endif

#endif

} // namespace
} // namespace vexlor

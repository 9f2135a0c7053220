// Four 32-bit pixels as eight 16-bit lanes, for the mixes of over.h.
#pragma once

#include "row/over.h"

#include <emmintrin.h>

namespace vexlor {
namespace {

// One channel per lane: products and differences wrap at 16 bits and never meet a neighbour.
typedef u16 Octet __attribute__((vector_size(16)));
typedef u32 Pixels4 __attribute__((vector_size(16)));

inline Octet octet(u32 value) { return Octet{} + static_cast<u16>(value); }

// Each pixel's factor in both its lanes. The test for 0 compares integers: alphas read as floating-point
// numbers would all be denormal.
inline Octet pixel_factors(Octet pixels, u32 shift)
{
    const Pixels4 a = reinterpret_cast<Pixels4>(pixels) >> shift & 0xFF;
    const Pixels4 f = a - reinterpret_cast<Pixels4>(a != 0);
    return reinterpret_cast<Octet>(f | f << 16);
}

inline Octet load_pixels(const void* at)
{
    return reinterpret_cast<Octet>(_mm_loadu_si128(static_cast<const __m128i*>(at)));
}
inline Octet load_aligned(const void* at)
{
    return reinterpret_cast<Octet>(_mm_load_si128(static_cast<const __m128i*>(at)));
}
inline void store_aligned(void* at, Octet pixels)
{
    _mm_store_si128(static_cast<__m128i*>(at), reinterpret_cast<__m128i>(pixels));
}

} // namespace
} // namespace vexlor

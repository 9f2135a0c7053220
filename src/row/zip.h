// Two vectors of 32-bit units as one row that takes from them in turn.
#pragma once

#include "row/cover.h"
#include "row/permute.h"

namespace vexlor {
namespace {

#if defined(__AVX2__)

template <class Units> inline Twice<Units> zip_units(Units a, Units b)
{
#if defined(__AVX512F__)
    const Units lane = lane_numbers<Units>();
    const Units low = (lane >> 1) + (lane & 1) * lane_count<Units>;
    return {pick_of_two(a, b, low), pick_of_two(a, b, low + lane_count<Units> / 2)};
#else
    const auto x = reinterpret_cast<__m256i>(a), y = reinterpret_cast<__m256i>(b);
    const __m256i low = _mm256_unpacklo_epi32(x, y), high = _mm256_unpackhi_epi32(x, y);
    return {reinterpret_cast<Units>(_mm256_permute2x128_si256(low, high, 0x20)),
            reinterpret_cast<Units>(_mm256_permute2x128_si256(low, high, 0x31))};
#endif
}

#endif

} // namespace
} // namespace vexlor

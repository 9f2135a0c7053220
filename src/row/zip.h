// Rows of 16- and 32-bit units that are put together from vectors of them.
#pragma once

#include "row/byte_ops.h"
#include "row/cover.h"
#include "row/permute.h"

namespace vexlor {
namespace {

#if defined(__AVX2__)

// The units one place further, and a new one at the end. A load from there would wait for the stores that it spans.
template <class Units> inline Units moved_up(Units v, u32 next)
{
#if defined(__AVX512F__)
    return reinterpret_cast<Units>(_mm512_alignr_epi32(
        _mm512_castsi128_si512(_mm_cvtsi32_si128(static_cast<int>(next))), reinterpret_cast<__m512i>(v), 1));
#else
    const auto rotated = reinterpret_cast<__m256i>(pick(v, lane_numbers<Units>() + 1));
    return reinterpret_cast<Units>(
        _mm256_blend_epi32(rotated, _mm256_set1_epi32(static_cast<int>(next)), 0x80));
#endif
}

// One row that takes from two vectors in turn.
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
inline Twice<Vector<vector_bytes>::U16> zip_units(Vector<vector_bytes>::U16 a, Vector<vector_bytes>::U16 b)
{
    using Units = Vector<vector_bytes>::U16;
    const auto x = in_zip_order(native(a)), y = in_zip_order(native(b));
    return {reinterpret_cast<Units>(zip_words_low(x, y)), reinterpret_cast<Units>(zip_words_high(x, y))};
}

#endif

} // namespace
} // namespace vexlor

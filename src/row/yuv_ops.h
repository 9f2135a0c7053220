// What vectors of YUV pairs need beyond the operations of byte_ops.h, as overloads on the width.
#pragma once

#include "row/byte_ops.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

// zip works within 128-bit lanes. Quarters swapped beforehand come out in order; and after packs, swapped again.
inline __m128i in_zip_order(__m128i v) { return v; }
inline __m128i from_pack_order(__m128i v) { return v; }
// Two vectors of 32-bit units as signed words.
inline __m128i pack_units(__m128i a, __m128i b) { return _mm_packs_epi32(a, b); }

#if defined(__SSSE3__)
// The left pixel of each pair in place of both.
inline __m128i left_twice(__m128i v) { return _mm_castps_si128(_mm_moveldup_ps(_mm_castsi128_ps(v))); }
#endif

#if defined(__AVX2__)
inline __m256i in_zip_order(__m256i v) { return _mm256_permute4x64_epi64(v, 0xD8); }
inline __m256i from_pack_order(__m256i v) { return _mm256_permute4x64_epi64(v, 0xD8); }
inline __m256i pack_units(__m256i a, __m256i b) { return _mm256_packs_epi32(a, b); }
inline __m256i left_twice(__m256i v)
{
    return _mm256_castps_si256(_mm256_moveldup_ps(_mm256_castsi256_ps(v)));
}
#endif

#if defined(__AVX512BW__)
inline __m512i in_zip_order(__m512i v)
{
    return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7), v);
}
inline __m512i from_pack_order(__m512i v)
{
    return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), v);
}
inline __m512i pack_units(__m512i a, __m512i b) { return _mm512_packs_epi32(a, b); }
inline __m512i left_twice(__m512i v)
{
    return _mm512_castps_si512(_mm512_moveldup_ps(_mm512_castsi512_ps(v)));
}
#endif

#endif

} // namespace
} // namespace vexlor

// What the compilers' vector operators lack, as overloads on the width. Shuffles, packs and zips work within 128-bit
// lanes: vectors put in zip order beforehand are zipped in their own order, and packed ones come back from pack order.
#pragma once

#include "row/lanes.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

#if defined(__SSSE3__)
inline __m128i multiply_add_bytes(__m128i a, __m128i b)
{
    return _mm_maddubs_epi16(a, b);
} // unsigned a, signed b
inline __m128i shuffle_bytes(__m128i a, __m128i order) { return _mm_shuffle_epi8(a, order); }
// The left one of each pair of 32-bit units in place of both.
inline __m128i left_twice(__m128i v) { return _mm_castps_si128(_mm_moveldup_ps(_mm_castsi128_ps(v))); }
#endif
inline void stream(void* at, __m128i v) { _mm_stream_si128(static_cast<__m128i*>(at), v); }
inline __m128i lesser(__m128i a, __m128i b) { return _mm_min_epi16(a, b); } // signed words
inline __m128i add_neighbours(__m128i a) { return _mm_madd_epi16(a, _mm_set1_epi16(1)); }
inline __m128i add_saturated(__m128i a, __m128i b) { return _mm_adds_epi16(a, b); }
inline __m128i subtract_saturated(__m128i a, __m128i b) { return _mm_subs_epi16(a, b); }
inline __m128i pack_signed(__m128i a, __m128i b) { return _mm_packs_epi16(a, b); }
inline __m128i pack_unsigned(__m128i a, __m128i b) { return _mm_packus_epi16(a, b); }
inline __m128i pack_units(__m128i a, __m128i b) { return _mm_packs_epi32(a, b); } // to signed words
inline __m128i from_pack_order(__m128i v) { return v; }
inline __m128i in_zip_order(__m128i v) { return v; }
inline __m128i zip_bytes_low(__m128i a, __m128i b) { return _mm_unpacklo_epi8(a, b); }
inline __m128i zip_bytes_high(__m128i a, __m128i b) { return _mm_unpackhi_epi8(a, b); }
inline __m128i zip_words_low(__m128i a, __m128i b) { return _mm_unpacklo_epi16(a, b); }
inline __m128i zip_words_high(__m128i a, __m128i b) { return _mm_unpackhi_epi16(a, b); }

#if defined(__AVX2__)
inline __m256i multiply_add_bytes(__m256i a, __m256i b)
{
    return _mm256_maddubs_epi16(a, b);
} // unsigned a, signed b
inline void stream(void* at, __m256i v) { _mm256_stream_si256(static_cast<__m256i*>(at), v); }
inline __m256i lesser(__m256i a, __m256i b) { return _mm256_min_epi16(a, b); } // signed words
inline __m256i add_neighbours(__m256i a) { return _mm256_madd_epi16(a, _mm256_set1_epi16(1)); }
inline __m256i add_saturated(__m256i a, __m256i b) { return _mm256_adds_epi16(a, b); }
inline __m256i subtract_saturated(__m256i a, __m256i b) { return _mm256_subs_epi16(a, b); }
inline __m256i pack_signed(__m256i a, __m256i b) { return _mm256_packs_epi16(a, b); }
inline __m256i pack_unsigned(__m256i a, __m256i b) { return _mm256_packus_epi16(a, b); }
inline __m256i pack_units(__m256i a, __m256i b) { return _mm256_packs_epi32(a, b); } // to signed words
inline __m256i from_pack_order(__m256i v) { return _mm256_permute4x64_epi64(v, 0xD8); }
inline __m256i in_zip_order(__m256i v) { return _mm256_permute4x64_epi64(v, 0xD8); }
inline __m256i zip_bytes_low(__m256i a, __m256i b) { return _mm256_unpacklo_epi8(a, b); }
inline __m256i zip_bytes_high(__m256i a, __m256i b) { return _mm256_unpackhi_epi8(a, b); }
inline __m256i zip_words_low(__m256i a, __m256i b) { return _mm256_unpacklo_epi16(a, b); }
inline __m256i zip_words_high(__m256i a, __m256i b) { return _mm256_unpackhi_epi16(a, b); }
inline __m256i shuffle_bytes(__m256i a, __m128i order)
{
    return _mm256_shuffle_epi8(a, _mm256_broadcastsi128_si256(order));
}
inline __m256i left_twice(__m256i v)
{
    return _mm256_castps_si256(_mm256_moveldup_ps(_mm256_castsi256_ps(v)));
}
#endif

#if defined(__AVX512BW__)
inline __m512i multiply_add_bytes(__m512i a, __m512i b)
{
    return _mm512_maddubs_epi16(a, b);
} // unsigned a, signed b
inline void stream(void* at, __m512i v) { _mm512_stream_si512(static_cast<__m512i*>(at), v); }
inline __m512i lesser(__m512i a, __m512i b) { return _mm512_min_epi16(a, b); } // signed words
inline __m512i add_neighbours(__m512i a) { return _mm512_madd_epi16(a, _mm512_set1_epi16(1)); }
inline __m512i add_saturated(__m512i a, __m512i b) { return _mm512_adds_epi16(a, b); }
inline __m512i subtract_saturated(__m512i a, __m512i b) { return _mm512_subs_epi16(a, b); }
inline __m512i pack_signed(__m512i a, __m512i b) { return _mm512_packs_epi16(a, b); }
inline __m512i pack_unsigned(__m512i a, __m512i b) { return _mm512_packus_epi16(a, b); }
inline __m512i pack_units(__m512i a, __m512i b) { return _mm512_packs_epi32(a, b); } // to signed words
inline __m512i from_pack_order(__m512i v)
{
    return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), v);
}
inline __m512i in_zip_order(__m512i v)
{
    return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7), v);
}
inline __m512i zip_bytes_low(__m512i a, __m512i b) { return _mm512_unpacklo_epi8(a, b); }
inline __m512i zip_bytes_high(__m512i a, __m512i b) { return _mm512_unpackhi_epi8(a, b); }
inline __m512i zip_words_low(__m512i a, __m512i b) { return _mm512_unpacklo_epi16(a, b); }
inline __m512i zip_words_high(__m512i a, __m512i b) { return _mm512_unpackhi_epi16(a, b); }
inline __m512i shuffle_bytes(__m512i a, __m128i order)
{
    return _mm512_shuffle_epi8(a, _mm512_broadcast_i32x4(order));
}
inline __m512i left_twice(__m512i v)
{
    return _mm512_castps_si512(_mm512_moveldup_ps(_mm512_castsi512_ps(v)));
}
// A mask of bytes of every 32-bit unit. As a constant of 64 bits, 32-bit processors would get it through memory, and wait for
// its halves, at every use.
inline __mmask64 bytes_of_units(u32 bytes)
{
    return _mm512_movepi8_mask(_mm512_set1_epi32(static_cast<int>(bytes)));
}
#endif

template <u32 Bytes> struct Native;
template <> struct Native<16> {
    using Type = __m128i;
};
#if defined(__AVX2__)
template <> struct Native<32> {
    using Type = __m256i;
};
#endif
#if defined(__AVX512BW__)
template <> struct Native<64> {
    using Type = __m512i;
};
#endif

template <class V> inline typename Native<sizeof(V)>::Type native(V v)
{
    return reinterpret_cast<typename Native<sizeof(V)>::Type>(v);
}

// The bytes of an order of shuffle_bytes, repeated for each of four 32-bit units.
inline __m128i unit_order(u32 a, u32 b, u32 c, u32 d)
{
    const auto order = [=](u32 unit) {
        return static_cast<int>((a | b << 8 | c << 16 | d << 24) + unit * 0x04040404);
    };
    return _mm_setr_epi32(order(0), order(1), order(2), order(3));
}

#endif

} // namespace
} // namespace vexlor

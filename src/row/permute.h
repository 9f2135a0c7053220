// Pixels picked from a row by index, a vector at a time.
#pragma once

#include "row/vectors.h"

namespace vexlor {
namespace {

template <class Pixels> constexpr u32 lane_count = sizeof(Pixels) / 4;

template <class Pixels> inline Pixels lane_numbers()
{
    Pixels n;
    for (u32 i = 0; i < lane_count<Pixels>; ++i)
        n[i] = i;
    return n;
}

// Whether pick and pick_of_two are single instructions for these vectors, and gather there at all.
template <class Pixels> constexpr bool can_permute = vector_bytes >= 32 && sizeof(Pixels) == vector_bytes;

#if defined(__AVX2__)

// index < lanes: the pixel there of a window of one vector.
template <class Pixels> inline Pixels pick(Pixels window, Pixels index)
{
#if defined(__AVX512F__)
    return reinterpret_cast<Pixels>(
        _mm512_permutexvar_epi32(reinterpret_cast<__m512i>(index), reinterpret_cast<__m512i>(window)));
#else
    return reinterpret_cast<Pixels>(
        _mm256_permutevar8x32_epi32(reinterpret_cast<__m256i>(window), reinterpret_cast<__m256i>(index)));
#endif
}

// index < 2 * lanes: the pixel there of a window of two vectors.
template <class Pixels> inline Pixels pick_of_two(Pixels low, Pixels high, Pixels index)
{
#if defined(__AVX512F__)
    return reinterpret_cast<Pixels>(_mm512_permutex2var_epi32(
        reinterpret_cast<__m512i>(low), reinterpret_cast<__m512i>(index), reinterpret_cast<__m512i>(high)));
#else
    // The blend looks at the top bit of each lane: bit 3 of the index tells the halves apart.
    return reinterpret_cast<Pixels>(_mm256_blendv_ps(reinterpret_cast<__m256>(pick(low, index)),
                                                     reinterpret_cast<__m256>(pick(high, index)),
                                                     reinterpret_cast<__m256>(index << 28)));
#endif
}

#if defined(__AVX512BW__)
// index < 32: the 16-bit units there of a window of one vector; index < 64: of two.
inline Vector<64>::U16 pick_words(const u8* window, Vector<64>::U16 index)
{
    return reinterpret_cast<Vector<64>::U16>(
        _mm512_permutexvar_epi16(reinterpret_cast<__m512i>(index), load<__m512i>(window)));
}
inline Vector<64>::U16 pick_words_of_two(const u8* window, Vector<64>::U16 index)
{
    return reinterpret_cast<Vector<64>::U16>(_mm512_permutex2var_epi16(
        load<__m512i>(window), reinterpret_cast<__m512i>(index), load<__m512i>(window + 64)));
}
#endif

// index < 2 * lanes: two neighbours of 16 bits from the one there, of a window of half as many units and one more.
template <class Pixels> inline Pixels pick_halves(const u8* window, Pixels index)
{
    const Pixels even = pick(load<Pixels>(window), index >> 1);
    const Pixels odd = pick(load<Pixels>(window + 2), index >> 1);
    return (index & 1) != 0 ? odd : even;
}

template <class Pixels> inline Pixels gather(const void* row, Pixels index)
{
#if defined(__AVX512F__)
    return reinterpret_cast<Pixels>(_mm512_i32gather_epi32(reinterpret_cast<__m512i>(index), row, 4));
#else
    return reinterpret_cast<Pixels>(
        _mm256_i32gather_epi32(static_cast<const int*>(row), reinterpret_cast<__m256i>(index), 4));
#endif
}

#if defined(__AVX512BW__)
// The first so many, and zeros.
template <class Pixels> inline Pixels gather_first(const void* row, Pixels index, u32 pixels)
{
    return reinterpret_cast<Pixels>(_mm512_mask_i32gather_epi32(__m512i{}, first_of_16(pixels),
                                                                reinterpret_cast<__m512i>(index), row, 4));
}
#endif

#endif

} // namespace
} // namespace vexlor

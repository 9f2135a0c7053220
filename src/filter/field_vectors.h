// Fields of pixels as colours, and rows of pixels packed from the fields of colours.
#pragma once

#include "filter/colour_vectors.h"
#include "filter/pixels.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

inline __m128 unpack_fields(__m128i fields, __m128 reciprocals)
{
    return _mm_mul_ps(_mm_cvtepi32_ps(fields), reciprocals);
}

#if defined(__AVX2__)
inline __m256 unpack_fields(__m256i fields, __m256 reciprocals)
{
    return _mm256_mul_ps(_mm256_cvtepi32_ps(fields), reciprocals);
}
#endif
#if defined(__AVX512F__)
inline __m512 unpack_fields(__m512i fields, __m128 reciprocals)
{
    return _mm512_mul_ps(_mm512_cvtepi32_ps(fields), _mm512_broadcast_f32x4(reciprocals));
}
#endif

// What the filters do pixel by pixel, here for vectors: fields from and into memory.
template <class Pixel> struct Fields;

template <> struct Fields<Pixel8888> {
    static constexpr bool pack_clamps = true; // components below 0 and above 1
    static __m128i of(u32 pixel)
    {
        const __m128i bytes = _mm_cvtsi32_si128(static_cast<int>(pixel)), zero = _mm_setzero_si128();
        return _mm_unpacklo_epi16(_mm_unpacklo_epi8(bytes, zero), zero);
    }
    static __m128 reciprocals() { return _mm_set1_ps(1.0F / 255); }
    static __m128 scales() { return _mm_set1_ps(255); }
    static __m128 unpacked(u32 pixel) { return unpack_fields(of(pixel), reciprocals()); }
#if defined(__AVX2__)
    static __m256 unpacked_pair(const void* pair)
    {
        return unpack_fields(_mm256_cvtepu8_epi32(_mm_loadl_epi64(static_cast<const __m128i*>(pair))),
                             _mm256_set1_ps(1.0F / 255));
    }
#endif
#if defined(__AVX512F__)
    static __m512 unpacked_four(const void* four)
    {
        return unpack_fields(_mm512_cvtepu8_epi32(_mm_loadu_si128(static_cast<const __m128i*>(four))),
                             reciprocals());
    }
#endif

    // A product of 255 and a single below n / 255 is rounded to a single below n, so that cutting it off needs no more
    // digits.
#if defined(__AVX512F__)
    static Ints cut_off(Floats c, float scale = 255)
    {
        return _mm512_cvttps_epi32(_mm512_mul_ps(c, _mm512_set1_ps(scale)));
    }
    static void pack(Ints a, Ints b, Ints c, Ints d, void* out)
    {
        const Ints pixels = _mm512_packus_epi16(_mm512_packs_epi32(a, b), _mm512_packs_epi32(c, d));
        store(out, _mm512_permutexvar_epi32(
                       _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15), pixels));
    }
#elif defined(__AVX2__)
    static Ints cut_off(Floats c, float scale = 255)
    {
        return _mm256_cvttps_epi32(_mm256_mul_ps(c, _mm256_set1_ps(scale)));
    }
    static void pack(Ints a, Ints b, Ints c, Ints d, void* out)
    {
        const Ints pixels = _mm256_packus_epi16(_mm256_packs_epi32(a, b), _mm256_packs_epi32(c, d));
        store(out, _mm256_permutevar8x32_epi32(pixels, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)));
    }
#else
    static Ints cut_off(Floats c) { return _mm_cvttps_epi32(_mm_mul_ps(c, _mm_set1_ps(255))); }
    static void pack(Ints a, Ints b, Ints c, Ints d, void* out)
    {
        store(out, _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d)));
    }
#endif
};

template <> struct Fields<Pixel565> {
    static constexpr bool pack_clamps = false;
    static __m128i of(u32 pixel)
    {
#if defined(__AVX2__)
        const __m128i shifted =
            _mm_srlv_epi32(_mm_set1_epi32(static_cast<int>(pixel)), _mm_setr_epi32(11, 5, 0, 0));
        return _mm_and_si128(shifted, _mm_setr_epi32(31, 63, 31, 0));
#else
        const auto field = [](u32 value) { return static_cast<int>(value); };
        return _mm_setr_epi32(field(pixel >> 11), field(pixel >> 5 & 63), field(pixel & 31), 0);
#endif
    }
    static __m128 reciprocals() { return _mm_setr_ps(1.0F / 31, 1.0F / 63, 1.0F / 31, 0); }
    static __m128 unpacked(u32 pixel) { return unpack_fields(of(pixel), reciprocals()); }
#if defined(__AVX2__)
    static __m256 unpacked_pair(const void* pair)
    {
        const __m256i shifted = _mm256_srlv_epi32(_mm256_set1_epi32(load<i32>(pair)),
                                                  _mm256_setr_epi32(11, 5, 0, 0, 27, 21, 16, 0));
        const __m256i fields = _mm256_and_si256(shifted, _mm256_setr_epi32(31, 63, 31, 0, 31, 63, 31, 0));
        return unpack_fields(fields, _mm256_set_m128(reciprocals(), reciprocals()));
    }
#endif
#if defined(__AVX512F__)
    static __m512 unpacked_four(const void* four)
    {
        const __m512i words = _mm512_maskz_permutexvar_epi16(
            0x5555'5555, _mm512_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3),
            _mm512_castsi128_si512(_mm_loadl_epi64(static_cast<const __m128i*>(four))));
        const __m512i shifted = _mm512_srlv_epi32(words, _mm512_broadcast_i32x4(_mm_setr_epi32(11, 5, 0, 0)));
        const __m512i masks = _mm512_broadcast_i32x4(_mm_setr_epi32(31, 63, 31, 0));
        return unpack_fields(_mm512_and_si512(shifted, masks), reciprocals());
    }
#endif
    static __m128 scales() { return _mm_setr_ps(31, 63, 31, 0); }

#if defined(__AVX512F__)
    static Ints cut_off(Floats c)
    {
        return _mm512_cvttps_epi32(
            _mm512_mul_round_ps(c, _mm512_broadcast_f32x4(scales()), _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC));
    }
    static void pack(Ints a, Ints b, Ints c, Ints d, void* out)
    {
        const Ints places = _mm512_set1_epi64(0x0000'0001'0020'0800);
        const auto pixels = [=](Ints x, Ints y) { // in the low words of 64 bits each
            const Ints sums = _mm512_madd_epi16(_mm512_packs_epi32(x, y), places);
            return _mm512_add_epi32(sums, _mm512_srli_epi64(sums, 32));
        };
        const Ints order = _mm512_castsi256_si512(
            _mm256_setr_epi16(0, 8, 16, 24, 4, 12, 20, 28, 32, 40, 48, 56, 36, 44, 52, 60));
        store(out, _mm512_castsi512_si256(_mm512_permutex2var_epi16(pixels(a, b), order, pixels(c, d))));
    }
#elif defined(__AVX2__)
    // Products of 31 would be rounded up to whole numbers. The sum is rounded to whole numbers instead, half a one too
    // low: only a component of 1, exactly between two, comes out one too low.
    static Ints cut_off(Floats c)
    {
        const Floats whole_numbers = _mm256_set1_ps(0x1p23F);
        const Floats sum =
            _mm256_fmadd_ps(c, _mm256_set_m128(scales(), scales()), _mm256_set1_ps(0x1p23F - 0.5F));
        const Ints n = _mm256_sub_epi32(_mm256_castps_si256(_mm256_max_ps(sum, whole_numbers)),
                                        _mm256_castps_si256(whole_numbers));
        return _mm256_sub_epi32(n, _mm256_castps_si256(_mm256_cmp_ps(c, _mm256_set1_ps(1), _CMP_EQ_OQ)));
    }
    static void pack(Ints a, Ints b, Ints c, Ints d, void* out)
    {
        const Ints places = _mm256_set1_epi64x(0x0000'0001'0020'0800);
        const Ints pixels = _mm256_hadd_epi32(_mm256_madd_epi16(_mm256_packs_epi32(a, b), places),
                                              _mm256_madd_epi16(_mm256_packs_epi32(c, d), places));
        const Ints words = _mm256_packus_epi32(pixels, pixels);
        store(out, _mm_unpacklo_epi16(_mm256_castsi256_si128(words), _mm256_extracti128_si256(words, 1)));
    }
#else
    static Ints cut_off(Floats c)
    {
        const Colour exact = Colour::widened(c) * Colour::widened(scales());
        return _mm_unpacklo_epi64(_mm_cvttpd_epi32(exact.a), _mm_cvttpd_epi32(exact.b));
    }
    static void pack(Ints a, Ints b, Ints c, Ints d, void* out)
    {
        const Ints places = _mm_set1_epi64x(0x0000'0001'0020'0800);
        const __m128 ab = _mm_castsi128_ps(_mm_madd_epi16(_mm_packs_epi32(a, b), places));
        const __m128 cd = _mm_castsi128_ps(_mm_madd_epi16(_mm_packs_epi32(c, d), places));
        const Ints pixels = _mm_add_epi32(_mm_castps_si128(_mm_shuffle_ps(ab, cd, 0b10'00'10'00)),
                                          _mm_castps_si128(_mm_shuffle_ps(ab, cd, 0b11'01'11'01)));
        // Signed halves, which the pack leaves alone.
        const Ints halves = _mm_srai_epi32(_mm_slli_epi32(pixels, 16), 16);
        _mm_storel_epi64(static_cast<__m128i*>(out), _mm_packs_epi32(halves, halves));
    }
#endif
};

// The fields of values: as many as are packed at once.
template <class Pixel> inline Ints fields_of(const Value* values)
{
#if defined(__AVX512F__)
    // Products are exact, and cut off where they are added to what has no digits behind the point.
    const auto cut_off = [](const double* two) {
        return _mm512_castpd_si512(_mm512_fmadd_round_pd(
            _mm512_loadu_pd(two), _mm512_broadcast_f64x4(_mm256_cvtps_pd(Fields<Pixel>::scales())),
            _mm512_set1_pd(0x1p52), _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC));
    };
    return _mm512_permutex2var_epi32(
        cut_off(values), _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30),
        cut_off(values + 2 * components));
#else
    return Fields<Pixel>::cut_off(load<Floats>(values));
#endif
}

// Packs count pixels from the fields(i) of pixel i and, with wide vectors, of its neighbour.
template <class Pixel> inline void pack_row(u32 count, void* out, auto fields)
{
    constexpr u32 bytes = sizeof(typename Pixel::Word);
    const auto pack = [&](u32 i, void* to) __attribute__((always_inline))
    {
        constexpr u32 n = block_pixels / 4;
        Fields<Pixel>::pack(fields(i), fields(i + n), fields(i + 2 * n), fields(i + 3 * n), to);
    };
    u32 i = 0;
    for (; count - i >= block_pixels; i += block_pixels)
        pack(i, moved(out, uintptr_t{i} * bytes));
    if (i < count) {
        typename Pixel::Word rest[block_pixels];
        pack(i, rest);
        __builtin_memcpy(moved(out, uintptr_t{i} * bytes), rest, (count - i) * bytes);
    }
}

#endif

} // namespace
} // namespace vexlor

// Passes of the filter that is Gaussian both across and down, of 32-bit pixels, for one instruction set: single precision
// is faster there.
//
// A component is its field times 65793 / 2^24 and a small rest: 0, or a power of two from 2^-31 to 2^-23. Fields and rests
// are summed apart, without rounding. A fused product then rounds both sums at once, as the filter rounds its sum of
// components, and what it rounds away or adds becomes a new rest. All sums are four times as large as the filter's, so
// that all rests are whole multiples of 2^-31, and no sum of them needs more than 24 digits.
#pragma once

#include "filter/gauss_catrom_kernels.h"

namespace vexlor {
namespace {

#if defined(__AVX2__)

constexpr float per_field = 0x1.0101p-8F;

// Of two pixels or of two columns.
struct FieldSums {
    __m256 fields, rests;

    static FieldSums unpacked(__m256i bytes)
    {
        const __m256 fields = _mm256_cvtepi32_ps(bytes);
        const __m256 colours = _mm256_mul_ps(fields, _mm256_set1_ps(1.0F / 255));
        return {fields, _mm256_fmadd_ps(fields, _mm256_set1_ps(-per_field), colours)};
    }
    static FieldSums of_taps(const FieldSums& a, const FieldSums& b, const FieldSums& c)
    {
        const __m256 two = _mm256_set1_ps(2);
        return {_mm256_fmadd_ps(b.fields, two, _mm256_add_ps(a.fields, c.fields)),
                _mm256_fmadd_ps(b.rests, two, _mm256_add_ps(a.rests, c.rests))};
    }
    __m256 rounded() const { return _mm256_fmadd_ps(fields, _mm256_set1_ps(per_field), rests); }
    FieldSums with_rounded_rests() const
    {
        return {fields, _mm256_fnmadd_ps(fields, _mm256_set1_ps(per_field), rounded())};
    }

    static constexpr size_t floats = 16;
    static FieldSums at(const float* pair) { return {_mm256_loadu_ps(pair), _mm256_loadu_ps(pair + 8)}; }
    void to(float* pair) const
    {
        _mm256_storeu_ps(pair, fields);
        _mm256_storeu_ps(pair + 8, rests);
    }
};

// The pixels before a pair's second one, each: the second of the pair before, and the first of this one.
inline __m256 one_back(__m256 before, __m256 pair) { return _mm256_permute2f128_ps(before, pair, 0x21); }

// Half as wide: the taps of neighbouring columns meet, and four pixels from the centre of a pair of columns on are all
// that it adds. Returns how many columns it made; the last ones may have taps behind the row.
inline u32 gauss_across_halved(const RowPixels<Pixel8888>& pixels, i64 centre, u32 count, float* out)
{
    const __m128i first = _mm_cvtsi32_si128(static_cast<int>(pixels.at(centre - 1)));
    FieldSums between = FieldSums::unpacked(_mm256_cvtepu8_epi32(_mm_unpacklo_epi64(first, first)));
    between = {one_back(between.fields, between.fields), one_back(between.rests, between.rests)};
    u32 i = 0;
    for (; i < count && pixels.has(centre + 3); i += 2, centre += 4, out += FieldSums::floats) {
        const __m128i four = _mm_loadu_si128(static_cast<const __m128i*>(pixels.address(centre)));
        const __m128i apart = _mm_shuffle_epi32(four, 0b11'01'10'00);
        const FieldSums centres = FieldSums::unpacked(_mm256_cvtepu8_epi32(apart));
        const FieldSums right = FieldSums::unpacked(_mm256_cvtepu8_epi32(_mm_srli_si128(apart, 8)));
        const FieldSums left{one_back(between.fields, right.fields), one_back(between.rests, right.rests)};
        FieldSums::of_taps(left, centres, right).with_rounded_rests().to(out);
        between = right;
    }
    return i;
}

inline void gauss_across_for_gauss_8888(TapRow row, const vexlor_filter_params& p, const void* columns,
                                        void* values)
{
    constexpr size_t floats = 2 * components; // fields of a pixel, then its rests
    alignas(64) float unpacked[block_room * floats];
    const RowPixels<Pixel8888> pixels(row);
    const auto* const column = static_cast<const Gauss::Column*>(columns);
    auto* const out = static_cast<float*>(values);
    const auto unpack_pair = [&](u32 i, __m128i pair) {
        const FieldSums sums = FieldSums::unpacked(_mm256_cvtepu8_epi32(pair));
        _mm256_storeu_ps(unpacked + i * floats, _mm256_permute2f128_ps(sums.fields, sums.rests, 0x20));
        _mm256_storeu_ps(unpacked + (i + 1) * floats, _mm256_permute2f128_ps(sums.fields, sums.rests, 0x31));
    };
    const auto unpack = [&](i64 place, u32 number) {
        pixels.for_each(
            place, number,
            [&](u32 i, u32 pixel) { unpack_pair(i, _mm_cvtsi32_si128(static_cast<int>(pixel))); },
            [&](u32 i, const void* pair) {
                unpack_pair(i, _mm_loadl_epi64(static_cast<const __m128i*>(pair)));
            });
    };
    const u32 done = p.xstep == 0x20000 ? gauss_across_halved(pixels, column[0].centre, p.count, out) : 0;
    for_columns<Gauss>(column, done, p.count, unpack, [&](u32 i, u32 index) {
        const auto tap = [&](u32 j) { return _mm256_loadu_ps(unpacked + (index + j) * floats); };
        const __m256 sums = _mm256_fmadd_ps(tap(1), _mm256_set1_ps(2), _mm256_add_ps(tap(0), tap(2)));
        const __m128 fields = _mm256_castps256_ps128(sums), rests = _mm256_extractf128_ps(sums, 1);
        const __m128 scale = _mm_set1_ps(per_field);
        float* const sum = out + i / 2 * FieldSums::floats + i % 2 * components;
        _mm_storeu_ps(sum, fields);
        _mm_storeu_ps(sum + floats, _mm_fnmadd_ps(fields, scale, _mm_fmadd_ps(fields, scale, rests)));
    });
}

inline void gauss_down_of_gauss_8888(const void* const* values, const vexlor_filter_params& p, void* out)
{
    const auto at = [&](u32 row, u32 i) {
        return FieldSums::at(static_cast<const float*>(values[row]) + i / 2 * FieldSums::floats);
    };
    const auto sixteenfold = [&](u32 i) {
        return FieldSums::of_taps(at(0, i), at(1, i), at(2, i)).rounded();
    };
    pack_row<Pixel8888>(p.count, out, [&](u32 i) {
#if defined(__AVX512F__)
        const __m512 sums = _mm512_insertf32x8(_mm512_castps256_ps512(sixteenfold(i)), sixteenfold(i + 2), 1);
        return Fields<Pixel8888>::cut_off(_mm512_mul_ps(sums, _mm512_set1_ps(1.0F / 16)));
#else
        return Fields<Pixel8888>::cut_off(_mm256_mul_ps(sixteenfold(i), _mm256_set1_ps(1.0F / 16)));
#endif
    });
}

#else

constexpr AcrossFn gauss_across_for_gauss_8888 = across<Pixel8888, Gauss>;
constexpr DownFn gauss_down_of_gauss_8888 = down<Pixel8888, Gauss>;

#endif

} // namespace
} // namespace vexlor

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

constexpr u32 floats_at_once = sizeof(Floats) / sizeof(float);
constexpr u32 pixels_at_once = floats_at_once / components;

inline Floats every(float value) { return Floats{} + value; }
#if defined(__AVX512F__)
inline Floats plus_product(Floats sum, Floats a, Floats b) { return _mm512_fmadd_ps(a, b, sum); }
inline Floats minus_product(Floats sum, Floats a, Floats b) { return _mm512_fnmadd_ps(a, b, sum); }
inline Floats fields_of(__m128i pixels) { return _mm512_cvtepi32_ps(_mm512_cvtepu8_epi32(pixels)); }
// Of every second pixel of eight.
inline Floats fields_of(__m256i pixels, int first)
{
    const __m512i bytes =
        _mm512_add_epi32(_mm512_setr_epi32(0, 1, 2, 3, 8, 9, 10, 11, 16, 17, 18, 19, 24, 25, 26, 27),
                         _mm512_set1_epi32(4 * first));
    return _mm512_cvtepi32_ps(
        _mm512_maskz_permutexvar_epi8(0x1111'1111'1111'1111, bytes, _mm512_castsi256_si512(pixels)));
}
// The pixels before those of a register, each: the last one of the register before, and all but this one's last.
inline Floats one_back(Floats before, Floats here)
{
    return _mm512_castsi512_ps(
        _mm512_alignr_epi32(_mm512_castps_si512(here), _mm512_castps_si512(before), 12));
}
#else
inline Floats plus_product(Floats sum, Floats a, Floats b) { return _mm256_fmadd_ps(a, b, sum); }
inline Floats minus_product(Floats sum, Floats a, Floats b) { return _mm256_fnmadd_ps(a, b, sum); }
inline Floats fields_of(__m128i pixels) { return _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(pixels)); }
// The pixels before a pair's, each: the second of the pair before, and the first of this one.
inline Floats one_back(Floats before, Floats here) { return _mm256_permute2f128_ps(before, here, 0x21); }
#endif

// Of as many pixels or columns as a register holds.
struct FieldSums {
    Floats fields, rests;

    static FieldSums unpacked(__m128i pixels) { return of(fields_of(pixels)); }
    static FieldSums of(Floats fields)
    {
        return {fields, plus_product(fields * every(1.0F / 255), fields, every(-per_field))};
    }
    static FieldSums of_taps(const FieldSums& a, const FieldSums& b, const FieldSums& c)
    {
        const Floats two = every(2);
        return {plus_product(a.fields + c.fields, b.fields, two),
                plus_product(a.rests + c.rests, b.rests, two)};
    }
    Floats rounded() const { return plus_product(rests, fields, every(per_field)); }
    FieldSums with_rounded_rests() const
    {
        return {fields, minus_product(rounded(), fields, every(per_field))};
    }

    static constexpr size_t floats = size_t{2} * floats_at_once;
    static FieldSums at(const float* sums)
    {
        return {load<Floats>(sums), load<Floats>(sums + floats_at_once)};
    }
    void to(float* sums) const
    {
        store(sums, fields);
        store(sums + floats_at_once, rests);
    }
};

inline FieldSums one_back(const FieldSums& before, const FieldSums& here)
{
    return {one_back(before.fields, here.fields), one_back(before.rests, here.rests)};
}

struct TwoSums {
    FieldSums even, odd;
};
// Of every second pixel of twice as many as a register holds.
inline TwoSums unpacked_apart(const void* pixels)
{
#if defined(__AVX512F__)
    const __m256i all = _mm256_loadu_si256(static_cast<const __m256i*>(pixels));
    return {FieldSums::of(fields_of(all, 0)), FieldSums::of(fields_of(all, 1))};
#else
    const __m128i apart =
        _mm_shuffle_epi32(_mm_loadu_si128(static_cast<const __m128i*>(pixels)), 0b11'01'10'00);
    return {FieldSums::unpacked(apart), FieldSums::unpacked(_mm_srli_si128(apart, 8))};
#endif
}

// Half as wide: the taps of neighbouring columns meet, and twice as many pixels as columns are all that a register of
// columns adds. Returns how many columns it made; the last ones may have taps behind the row.
inline u32 gauss_across_halved(const RowPixels<Pixel8888>& pixels, i64 centre, u32 count, float* out)
{
    constexpr u32 read = 2 * pixels_at_once;
    FieldSums between = FieldSums::unpacked(_mm_set1_epi32(static_cast<int>(pixels.at(centre - 1))));
    u32 i = 0;
    for (; i < count && pixels.has(centre + read - 1);
         i += pixels_at_once, centre += read, out += FieldSums::floats) {
        const auto [centres, right] = unpacked_apart(pixels.address(centre));
        FieldSums::of_taps(one_back(between, right), centres, right).with_rounded_rests().to(out);
        between = right;
    }
    return i;
}

// Two pixels, each its fields and then its rests.
inline void unpack_sums(__m128i pair, float* out)
{
    const FieldSums sums = FieldSums::unpacked(pair);
#if defined(__AVX512F__)
    const __m512i order = _mm512_setr_epi32(0, 1, 2, 3, 16, 17, 18, 19, 4, 5, 6, 7, 20, 21, 22, 23);
    _mm512_storeu_ps(out, _mm512_permutex2var_ps(sums.fields, order, sums.rests));
#else
    _mm256_storeu_ps(out, _mm256_permute2f128_ps(sums.fields, sums.rests, 0x20));
    _mm256_storeu_ps(out + 2 * components, _mm256_permute2f128_ps(sums.fields, sums.rests, 0x31));
#endif
}

inline void gauss_across_for_gauss_8888(TapRow row, const vexlor_filter_params& p, const void* columns,
                                        void* values)
{
    constexpr size_t floats = 2 * components;              // fields of a pixel, then its rests
    alignas(64) float unpacked[(block_room + 1) * floats]; // pixels are unpacked in pairs
    const RowPixels<Pixel8888> pixels(row);
    const auto* const column = static_cast<const Gauss::Column*>(columns);
    auto* const out = static_cast<float*>(values);
    const auto unpack = [&](i64 place, u32 number, u32 index) {
        float* const sums = unpacked + index * floats;
        pixels.for_each<2>(
            place, number,
            [&](u32 i, u32 pixel) {
                unpack_sums(_mm_cvtsi32_si128(static_cast<int>(pixel)), sums + i * floats);
            },
            [&](u32 i, const void* pair) {
                unpack_sums(_mm_loadl_epi64(static_cast<const __m128i*>(pair)), sums + i * floats);
            });
    };
    const u32 done = p.xstep == 0x20000 ? gauss_across_halved(pixels, column[0].centre, p.count, out) : 0;
    const auto mix = [&](u32 i, size_t index) {
        const auto tap = [&](u32 j) { return _mm256_loadu_ps(unpacked + (index + j) * floats); };
        const __m256 sums = _mm256_fmadd_ps(tap(1), _mm256_set1_ps(2), _mm256_add_ps(tap(0), tap(2)));
        const __m128 fields = _mm256_castps256_ps128(sums), rests = _mm256_extractf128_ps(sums, 1);
        const __m128 scale = _mm_set1_ps(per_field);
        float* const sum = out + i / pixels_at_once * FieldSums::floats + i % pixels_at_once * components;
        _mm_storeu_ps(sum, fields);
        _mm_storeu_ps(sum + floats_at_once, _mm_fnmadd_ps(fields, scale, _mm_fmadd_ps(fields, scale, rests)));
    };
    for_columns<Gauss>(column, done, p.count, unpack, [&](u32 i, size_t index, size_t next_index) {
        mix(i, index);
        mix(i + 1, next_index);
    });
}

inline void gauss_down_of_gauss_8888(const void* const* values, const vexlor_filter_params& p, void* out)
{
    const auto at = [&](u32 row, u32 i) {
        return FieldSums::at(static_cast<const float*>(values[row]) + i / pixels_at_once * FieldSums::floats);
    };
    pack_row<Pixel8888>(p.count, out, [&](u32 i) {
        const Floats sixteenfold = FieldSums::of_taps(at(0, i), at(1, i), at(2, i)).rounded();
        return Fields<Pixel8888>::cut_off(sixteenfold, 255.0F / 16);
    });
}

#else

constexpr AcrossFn gauss_across_for_gauss_8888 = across<Pixel8888, Gauss>;
constexpr DownFn gauss_down_of_gauss_8888 = down<Pixel8888, Gauss>;

#endif

} // namespace
} // namespace vexlor

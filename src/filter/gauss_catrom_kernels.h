// Passes of the Gaussian and Catmull-Rom filters, for one instruction set. A value has the four components of a colour in
// double precision, each of them a single as the filters store it: products of two singles are exact, so that fusing them
// with a sum rounds as the filters do.
#pragma once

#include "filter/gauss_catrom.h"
#include "row/lanes.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

#if defined(__AVX2__)
struct Colour {
    __m256d v;
    static Colour at(const double* value) { return {_mm256_loadu_pd(value)}; }
    static Colour all(double component) { return {_mm256_set1_pd(component)}; }
    static Colour widened(__m128 components) { return {_mm256_cvtps_pd(components)}; }
    __m128 rounded() const { return _mm256_cvtpd_ps(v); }
    void to(double* value) const { _mm256_storeu_pd(value, v); }
    friend Colour operator*(Colour a, Colour b) { return {_mm256_mul_pd(a.v, b.v)}; }
};
inline Colour plus_product(Colour sum, Colour a, Colour b) { return {_mm256_fmadd_pd(a.v, b.v, sum.v)}; }
#else
struct Colour {
    __m128d a, b;
    static Colour at(const double* value) { return {_mm_loadu_pd(value), _mm_loadu_pd(value + 2)}; }
    static Colour all(double component) { return {_mm_set1_pd(component), _mm_set1_pd(component)}; }
    static Colour widened(__m128 components)
    {
        return {_mm_cvtps_pd(components), _mm_cvtps_pd(_mm_movehl_ps(components, components))};
    }
    __m128 rounded() const { return _mm_movelh_ps(_mm_cvtpd_ps(a), _mm_cvtpd_ps(b)); }
    void to(double* value) const
    {
        _mm_storeu_pd(value, a);
        _mm_storeu_pd(value + 2, b);
    }
    friend Colour operator*(Colour x, Colour y) { return {_mm_mul_pd(x.a, y.a), _mm_mul_pd(x.b, y.b)}; }
};
inline Colour plus_product(Colour sum, Colour x, Colour y)
{
    return {_mm_add_pd(sum.a, _mm_mul_pd(x.a, y.a)), _mm_add_pd(sum.b, _mm_mul_pd(x.b, y.b))};
}
#endif

// The components of a pixel, or of two that lie half a block of pixels apart.
#if defined(__AVX2__)
using Floats = __m256;
using Ints = __m256i;
inline Floats floats_at(u32 i, auto components) { return _mm256_set_m128(components(i + 4), components(i)); }
inline Floats clamped(Floats c)
{
    return _mm256_min_ps(_mm256_max_ps(c, _mm256_setzero_ps()), _mm256_set1_ps(1));
}
#else
using Floats = __m128;
using Ints = __m128i;
inline Floats floats_at(u32 i, auto components) { return components(i); }
#endif
inline __m128 clamped(__m128 c) { return _mm_min_ps(_mm_max_ps(c, _mm_setzero_ps()), _mm_set1_ps(1)); }

constexpr u32 block_pixels = sizeof(Floats) / 4; // that are packed at once
constexpr u32 components = 4;                    // of a value; the fourth of a 565 pixel is 0

// What the filters do pixel by pixel, here for vectors: fields from and into memory.
template <class Pixel> struct Fields;

template <> struct Fields<Pixel8888> {
    static __m128i of(u32 pixel)
    {
        const __m128i bytes = _mm_cvtsi32_si128(static_cast<int>(pixel)), zero = _mm_setzero_si128();
        return _mm_unpacklo_epi16(_mm_unpacklo_epi8(bytes, zero), zero);
    }
    static __m128 reciprocals() { return _mm_set1_ps(1.0F / 255); }

    // A product of 255 and a single below n / 255 is rounded to a single below n, so that cutting it off needs no more
    // digits.
#if defined(__AVX2__)
    static Ints cut_off(Floats c) { return _mm256_cvttps_epi32(_mm256_mul_ps(c, _mm256_set1_ps(255))); }
    static void pack(Ints a, Ints b, Ints c, Ints d, void* out)
    {
        store(out, _mm256_packus_epi16(_mm256_packs_epi32(a, b), _mm256_packs_epi32(c, d)));
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
    static __m128i of(u32 pixel)
    {
        const auto field = [](u32 value) { return static_cast<int>(value); };
        return _mm_setr_epi32(field(pixel >> 11), field(pixel >> 5 & 63), field(pixel & 31), 0);
    }
    static __m128 reciprocals() { return _mm_setr_ps(1.0F / 31, 1.0F / 63, 1.0F / 31, 0); }
    static __m128 scales() { return _mm_setr_ps(31, 63, 31, 0); }

#if defined(__AVX2__)
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
        store(out,
              _mm256_castsi256_si128(_mm256_permute4x64_epi64(_mm256_packus_epi32(pixels, pixels), 0b1000)));
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

// The sum of the taps by their weights, in their order.
template <class Kernel> inline Colour mixed(const Colour (&weights)[Kernel::taps], auto tap)
{
    Colour sum = weights[0] * Colour::at(tap(0));
    for (u32 j = 1; j < Kernel::taps; ++j)
        sum = plus_product(sum, weights[j], Colour::at(tap(j)));
    return sum;
}

// Where the pixels under a block's taps are unpacked to.
constexpr u32 block_columns = 64;
constexpr u32 block_room = block_columns * 4; // at least as many as columns have taps

// Walks the columns: calls unpack(place in the row, number) for the pixels under the taps of a block of columns,
// then mix(column number, column, index of its first tap) for each of them. Pixels are unpacked once for a block, or where
// columns lie far apart for each.
template <class X>
inline void for_columns(const vexlor_filter_params& p, const void* columns, auto unpack, auto mix)
{
    const auto* const column = static_cast<const typename X::Column*>(columns);
    const auto first_tap = [&](u32 i) { return i64{column[i].centre} - 1; };
    for (u32 begin = 0; begin < p.count; begin += block_columns) {
        const u32 end = p.count - begin < block_columns ? p.count : begin + block_columns;
        const i64 from = first_tap(begin);
        const i64 span = first_tap(end - 1) - from + X::taps;
        if (span <= block_room) {
            unpack(from, static_cast<u32>(span));
            for (u32 i = begin; i < end; ++i)
                mix(i, column[i], static_cast<u32>(first_tap(i) - from));
        } else {
            for (u32 i = begin; i < end; ++i) {
                unpack(first_tap(i), X::taps);
                mix(i, column[i], 0);
            }
        }
    }
}

// Before and behind a row its ends repeat.
template <class Pixel> class RowPixels {
public:
    explicit RowPixels(TapRow row)
        : start(row.start), last(static_cast<i64>((row.end - row.start) / sizeof(Word)))
    {}
    u32 at(i64 place) const { return load<Word>(address(place < 0 ? 0 : place > last ? last : place)); }
    bool has(i64 place, u32 number) const { return place >= 0 && place + number <= last + 1; }
    const void* address(i64 place) const
    {
        return reinterpret_cast<const void*>(start + bytes_of(place, sizeof(Word)));
    }

private:
    using Word = typename Pixel::Word;
    uintptr_t start;
    i64 last;
};

template <class Pixel, class X>
void colours_across(TapRow row, const vexlor_filter_params& p, const void* columns, void* values)
{
    alignas(32) double colours[block_room * components];
    const RowPixels<Pixel> pixels(row);
    const __m128 reciprocals = Fields<Pixel>::reciprocals();
    const auto unpack = [&](i64 place, u32 number) {
        for (u32 i = 0; i < number; ++i) {
            const __m128 fields = _mm_cvtepi32_ps(Fields<Pixel>::of(pixels.at(place + i)));
            Colour::widened(_mm_mul_ps(fields, reciprocals)).to(colours + i * components);
        }
    };
    for_columns<X>(p, columns, unpack, [&](u32 i, const typename X::Column& column, u32 index) {
        const double* const taps = colours + index * components;
        double* const out = static_cast<double*>(values) + uintptr_t{i} * components;
        if (column.is_on_pixel())
            return Colour::at(taps + components).to(out);
        Colour weights[X::taps];
        for (u32 j = 0; j < X::taps; ++j)
            weights[j] = Colour::all(column.weight(j));
        const __m128 sum = mixed<X>(weights, [&](u32 j) { return taps + j * components; }).rounded();
        Colour::widened(__is_same(X, CatRom) ? clamped(sum) : sum).to(out);
    });
}

// Packs count pixels from the fields(i) of pixel i and, with wide vectors, of the one half a block further.
template <class Pixel> inline void pack_row(u32 count, void* out, auto fields)
{
    constexpr u32 bytes = sizeof(typename Pixel::Word);
    const auto pack = [&](u32 i, void* to) {
        Fields<Pixel>::pack(fields(i), fields(i + 1), fields(i + 2), fields(i + 3), to);
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

template <class Pixel, class Y>
void colours_down(const void* const* values, const vexlor_filter_params& p, void* out)
{
    const auto at = [&](u32 row, u32 i) {
        return static_cast<const double*>(values[row]) + uintptr_t{i} * components;
    };
    const typename Y::Column kernel = Y::column(p.ypos, 0);
    if (kernel.is_on_pixel())
        return pack_row<Pixel>(p.count, out, [&](u32 first) {
            return Fields<Pixel>::cut_off(
                floats_at(first, [&](u32 i) { return Colour::at(at(1, i)).rounded(); }));
        });
    Colour weights[Y::taps];
    for (u32 j = 0; j < Y::taps; ++j)
        weights[j] = Colour::all(kernel.weight(j));
    pack_row<Pixel>(p.count, out, [&](u32 first) {
        const Floats sums = floats_at(
            first, [&](u32 i) { return mixed<Y>(weights, [&](u32 j) { return at(j, i); }).rounded(); });
        return Fields<Pixel>::cut_off(__is_same(Y, CatRom) ? clamped(sums) : sums);
    });
}

#if defined(__AVX2__)

// Gaussian both across and down, of 32-bit pixels: single precision is faster there. A component is a field times 65793
// / 2^24 and a small rest, a power of two from 2^-31 to 2^-23. Fields and rests are summed apart, without rounding; a
// fused product then rounds both sums once, as the filter rounds a sum of components. A value is a sum of fields and the
// rest that rounding leaves, each four times as large as the filter's: rests are whole multiples of 2^-31 all along.
constexpr float component_per_field = 0x1.0101p-8F;

// Where the sums of column i are: its four fields, beside them those of the column half a block of pixels further, and
// behind both their rests.
constexpr uintptr_t sums_of(u32 i) { return (uintptr_t{i} / 8 * 8 + i % 4 * 2) * 8 + i / 4 % 2 * 4; }
constexpr u32 rests_behind = 8;

void gauss_across_for_gauss(TapRow row, const vexlor_filter_params& p, const void* columns, void* values)
{
    alignas(32) float fields[block_room * components], rests[block_room * components];
    const RowPixels<Pixel8888> pixels(row);
    const auto unpack_pair = [&](__m128i pair, u32 at) {
        const __m256 f = _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(pair));
        const __m256 component = _mm256_mul_ps(f, _mm256_set1_ps(1.0F / 255));
        _mm256_storeu_ps(fields + at * components, f);
        _mm256_storeu_ps(rests + at * components,
                         _mm256_fmadd_ps(f, _mm256_set1_ps(-component_per_field), component));
    };
    const auto unpack = [&](i64 place, u32 number) {
        for (u32 i = 0; i < number; i += 2)
            unpack_pair(pixels.has(place + i, 2)
                            ? _mm_loadl_epi64(static_cast<const __m128i*>(pixels.address(place + i)))
                            : _mm_setr_epi32(static_cast<int>(pixels.at(place + i)),
                                             static_cast<int>(pixels.at(place + i + 1)), 0, 0),
                        i);
    };
    for_columns<Gauss>(p, columns, unpack, [&](u32 i, const Gauss::Column&, u32 index) {
        const auto sum = [&](const float* taps) {
            const auto tap = [&](u32 j) { return _mm_loadu_ps(taps + (index + j) * components); };
            return _mm_fmadd_ps(tap(1), _mm_set1_ps(2), _mm_add_ps(tap(0), tap(2)));
        };
        const __m128 scale = _mm_set1_ps(component_per_field), n = sum(fields);
        float* const out = static_cast<float*>(values) + sums_of(i);
        _mm_storeu_ps(out, n);
        _mm_storeu_ps(out + rests_behind, _mm_fnmadd_ps(n, scale, _mm_fmadd_ps(n, scale, sum(rests))));
    });
}

void gauss_down_of_gauss(const void* const* values, const vexlor_filter_params& p, void* out)
{
    pack_row<Pixel8888>(p.count, out, [&](u32 i) {
        const auto sum = [&](u32 behind) {
            const auto row = [&](u32 j) {
                return _mm256_loadu_ps(static_cast<const float*>(values[j]) + sums_of(i) + behind);
            };
            return _mm256_fmadd_ps(row(1), _mm256_set1_ps(2), _mm256_add_ps(row(0), row(2)));
        };
        const __m256 component =
            _mm256_fmadd_ps(sum(0), _mm256_set1_ps(component_per_field), sum(rests_behind));
        return Fields<Pixel8888>::cut_off(_mm256_mul_ps(component, _mm256_set1_ps(1.0F / 16)));
    });
}

#endif

// What the table names. Without vectors of doubles the filters do it alone.
template <class Pixel, class Kernel> constexpr AcrossFn across = colours_across<Pixel, Kernel>;
template <class Pixel, class Kernel> constexpr DownFn down = colours_down<Pixel, Kernel>;
#if defined(__AVX2__)
constexpr AcrossFn across_for_gauss = gauss_across_for_gauss;
constexpr DownFn down_of_gauss = gauss_down_of_gauss;
#else
constexpr AcrossFn across_for_gauss = across<Pixel8888, Gauss>;
constexpr DownFn down_of_gauss = down<Pixel8888, Gauss>;
#endif

#else

template <class Pixel, class Kernel> constexpr AcrossFn across = nullptr;
template <class Pixel, class Kernel> constexpr DownFn down = nullptr;
constexpr AcrossFn across_for_gauss = nullptr;
constexpr DownFn down_of_gauss = nullptr;

#endif

} // namespace
} // namespace vexlor

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

// Colours of n pixels from a place in the row on; before and behind the row its ends repeat.
template <class Pixel> inline void unpack(TapRow row, i64 last, i64 from, u32 n, double* out)
{
    using Word = typename Pixel::Word;
    const __m128 reciprocals = Fields<Pixel>::reciprocals();
    for (u32 i = 0; i < n; ++i) {
        const i64 wanted = from + i;
        const i64 place = wanted < 0 ? 0 : wanted > last ? last : wanted;
        const auto pixel =
            load<Word>(reinterpret_cast<const void*>(row.start + bytes_of(place, sizeof(Word))));
        Colour::widened(_mm_mul_ps(_mm_cvtepi32_ps(Fields<Pixel>::of(pixel)), reciprocals))
            .to(out + i * components);
    }
}

template <class Pixel, class X>
void colours_across(TapRow row, const vexlor_filter_params& p, const void* columns, void* values)
{
    constexpr u32 block = 64;
    alignas(32) double colours[block * 4 * components];
    const i64 last = static_cast<i64>((row.end - row.start) / sizeof(typename Pixel::Word));
    auto* out = static_cast<double*>(values);
    const auto* column = static_cast<const typename X::Column*>(columns);
    for (u32 done = 0; done < p.count; done += block, column += block) {
        const u32 n = p.count - done < block ? p.count - done : block;
        // Pixels are unpacked once for all columns, or where columns lie far apart for each.
        const i64 from = i64{column[0].centre} - 1;
        const i64 span = column[n - 1].centre - column[0].centre + i64{X::taps};
        const bool apart = span > block * 4;
        if (apart)
            for (u32 i = 0; i < n; ++i)
                unpack<Pixel>(row, last, i64{column[i].centre} - 1, X::taps,
                              colours + i * X::taps * components);
        else
            unpack<Pixel>(row, last, from, static_cast<u32>(span), colours);
        for (u32 i = 0; i < n; ++i, out += components) {
            const double* const taps =
                colours + (apart ? i64{i} * X::taps : column[i].centre - 1 - from) * components;
            if (column[i].is_on_pixel()) {
                Colour::at(taps + components).to(out);
                continue;
            }
            Colour weights[X::taps];
            for (u32 j = 0; j < X::taps; ++j)
                weights[j] = Colour::all(column[i].weight(j));
            const __m128 sum = mixed<X>(weights, [&](u32 j) { return taps + j * components; }).rounded();
            Colour::widened(__is_same(X, CatRom) ? clamped(sum) : sum).to(out);
        }
    }
}

// Packs count pixels whose components mix(i) gives.
template <class Pixel, bool clamps> inline void pack_row(u32 count, void* out, auto mix)
{
    using F = Fields<Pixel>;
    constexpr u32 bytes = sizeof(typename Pixel::Word);
    const auto fields = [&](u32 i) {
        const Floats c = floats_at(i, mix);
        return F::cut_off(clamps ? clamped(c) : c);
    };
    const auto pack = [&](u32 i, void* to) {
        F::pack(fields(i), fields(i + 1), fields(i + 2), fields(i + 3), to);
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
    const double* rows[Y::taps];
    for (u32 j = 0; j < Y::taps; ++j)
        rows[j] = static_cast<const double*>(values[j]);
    const typename Y::Column kernel = Y::column(p.ypos, 0);
    if (kernel.is_on_pixel())
        return pack_row<Pixel, false>(p.count, out,
                                      [&](u32 i) { return Colour::at(rows[1] + i * components).rounded(); });
    Colour weights[Y::taps];
    for (u32 j = 0; j < Y::taps; ++j)
        weights[j] = Colour::all(kernel.weight(j));
    pack_row<Pixel, __is_same(Y, CatRom)>(p.count, out, [&](u32 i) {
        return mixed<Y>(weights, [&](u32 j) { return rows[j] + i * components; }).rounded();
    });
}

template <class Pixel, class Kernel> constexpr AcrossFn across = colours_across<Pixel, Kernel>;
template <class Pixel, class Kernel> constexpr DownFn down = colours_down<Pixel, Kernel>;

#else

// Without vectors of doubles the filters do it alone.
template <class Pixel, class Kernel> constexpr AcrossFn across = nullptr;
template <class Pixel, class Kernel> constexpr DownFn down = nullptr;

#endif

} // namespace
} // namespace vexlor

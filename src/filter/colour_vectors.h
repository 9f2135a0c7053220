// Colours as vectors: four components in double precision. Every component is a single, as the filters store it: products
// of two singles are exact, so that fusing them with a sum rounds as the filters do.
#pragma once

#include "row/lanes.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

#if defined(__AVX2__)
struct Colour {
    __m256d v;
    static Colour at(const double* value) { return {_mm256_loadu_pd(value)}; }
    static Colour at(const float* value) { return widened(_mm_loadu_ps(value)); }
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
    static Colour at(const float* value) { return widened(_mm_loadu_ps(value)); }
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

// As many colours as a register holds.
#if defined(__AVX512F__)
struct Colours {
    __m512d v;
    static Colours at(const double* values) { return {_mm512_loadu_pd(values)}; }
    static Colours all(double component) { return {_mm512_set1_pd(component)}; }
    static Colours widened(__m256 components) { return {_mm512_cvtps_pd(components)}; }
    __m256 rounded() const { return _mm512_cvtpd_ps(v); }
    void to(double* values) const { _mm512_storeu_pd(values, v); }
    friend Colours operator*(Colours a, Colours b) { return {_mm512_mul_pd(a.v, b.v)}; }
};
inline Colours plus_product(Colours sum, Colours a, Colours b) { return {_mm512_fmadd_pd(a.v, b.v, sum.v)}; }
constexpr u32 colours_at_once = 2;
#else
using Colours = Colour;
constexpr u32 colours_at_once = 1;
#endif

// Singles into memory, as doubles.
inline void widen(__m128 one, double* value) { Colour::widened(one).to(value); }
#if defined(__AVX512F__)
inline void widen(__m256 two, double* values) { Colours::widened(two).to(values); }
#elif defined(__AVX2__)
inline void widen(__m256 two, double* values)
{
    widen(_mm256_castps256_ps128(two), values);
    widen(_mm256_extractf128_ps(two, 1), values + 4);
}
#endif

// Rows of values hold singles. Where to widen them takes two steps, they are widened once, and not for every pass down.
#if defined(__AVX512F__)
using Value = double;
inline void put(__m256 two, double* values) { widen(two, values); }
// Columns that take from two registers in turn.
inline void put_in_turn(Colours pixels, __m256 sums, double* values)
{
    const Colours between = Colours::widened(sums);
    _mm256_storeu_pd(values, _mm512_castpd512_pd256(pixels.v));
    _mm256_storeu_pd(values + 4, _mm512_castpd512_pd256(between.v));
    _mm256_storeu_pd(values + 8, _mm512_extractf64x4_pd(pixels.v, 1));
    _mm256_storeu_pd(values + 12, _mm512_extractf64x4_pd(between.v, 1));
}
#else
using Value = float;
inline void put(__m128 one, float* value) { _mm_storeu_ps(value, one); }
#if defined(__AVX2__)
inline void put(__m256 two, float* values) { _mm256_storeu_ps(values, two); }
#endif
inline void put_in_turn(Colours pixel, __m128 sum, float* values)
{
    put(pixel.rounded(), values);
    put(sum, values + 4);
}
#endif

struct FourColours {
    Colours taps[4];
};
// The taps of columns that lie side by side, of which each pixel that is read makes one more.
#if defined(__AVX512F__)
// Of two columns, from registers of two pixels.
struct SlidingTaps {
    Colours first, second, third;
    static Colours between(Colours a, Colours b) { return {_mm512_shuffle_f64x2(a.v, b.v, 0b01'00'11'10)}; }
    explicit SlidingTaps(auto next) : first(next()), third(next()) { second = between(first, third); }
    FourColours with(Colours next) const { return {{first, second, third, between(third, next)}}; }
    void slide(Colours next)
    {
        first = third;
        second = between(third, next);
        third = next;
    }
};
#else
struct SlidingTaps {
    Colours first, second, third;
    explicit SlidingTaps(auto next) : first(next()), second(next()), third(next()) {}
    FourColours with(Colours next) const { return {{first, second, third, next}}; }
    void slide(Colours next)
    {
        first = second;
        second = third;
        third = next;
    }
};
#endif

// The components of a pixel, or with wide vectors of two or four neighbours: components(i) are those of the pixels from i
// on that a register of colours holds.
#if defined(__AVX512F__)
using Floats = __m512;
using Ints = __m512i;
inline Floats floats_at(u32 i, auto components)
{
    return _mm512_insertf32x8(_mm512_castps256_ps512(components(i)), components(i + 2), 1);
}
#elif defined(__AVX2__)
using Floats = __m256;
using Ints = __m256i;
inline Floats floats_at(u32 i, auto components) { return _mm256_set_m128(components(i + 1), components(i)); }
#else
using Floats = __m128;
using Ints = __m128i;
inline Floats floats_at(u32 i, auto components) { return components(i); }
#endif
#if defined(__AVX512F__)
inline __m512 clamped(__m512 c)
{
    return _mm512_min_ps(_mm512_max_ps(c, _mm512_setzero_ps()), _mm512_set1_ps(1));
}
#endif
#if defined(__AVX2__)
inline __m256 clamped(__m256 c)
{
    return _mm256_min_ps(_mm256_max_ps(c, _mm256_setzero_ps()), _mm256_set1_ps(1));
}
#endif
inline __m128 clamped(__m128 c) { return _mm_min_ps(_mm_max_ps(c, _mm_setzero_ps()), _mm_set1_ps(1)); }

constexpr u32 block_pixels = sizeof(Floats) / 4; // that are packed at once
constexpr size_t components = 4;                 // of a value; the fourth of a 565 pixel is 0

#endif

} // namespace
} // namespace vexlor

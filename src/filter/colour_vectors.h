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
    static Colours at(const float* values) { return widened(_mm256_loadu_ps(values)); }
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

// Vectors of the pixels that filters know, with the means and linear mixes of filter/pixels.h. A weight stands in every
// 16-bit lane of its pixel.
#pragma once

#include "filter/pixels.h"
#include "row/permute.h"

namespace vexlor {
namespace {

template <class Pixel, u32 Bytes> struct PixelVector; // there are none without vectors

template <u32 Bytes> struct PixelVector<Pixel8888, Bytes> {
    using U16 = typename Vector<Bytes>::U16;
    using U32 = typename Vector<Bytes>::U32;
    using Pixels = U32;
    static constexpr u32 count = Bytes / 4;

    static Pixels mean(Pixels a, Pixels b)
    {
        const U16 x = reinterpret_cast<U16>(a), y = reinterpret_cast<U16>(b);
        const U16 even = (((x & 0xFF) + (y & 0xFF)) * 127) >> 8;
        const U16 odd = ((x >> 8) + (y >> 8)) * 127; // its fraction is masked away
        return reinterpret_cast<U32>(even) | (reinterpret_cast<U32>(odd) & ~lanes);
    }
    static Pixels lerp(Pixels a, Pixels b, Pixels weights)
    {
        return blend_vector<Straight, Bytes>(b, a, weights);
    }
    static Pixels every(u32 weight) { return Pixels{} + weight * 0x10001; }
};

#if defined(__SSE2__)

// The low or high halves of two vectors, in order. Packs saturate, and work within 128-bit lanes.
inline Vector<16>::U16 low_halves(Vector<16>::U32 a, Vector<16>::U32 b)
{
    const auto signed_half = [](Vector<16>::U32 v) {
        return _mm_srai_epi32(_mm_slli_epi32(reinterpret_cast<__m128i>(v), 16), 16);
    };
    return reinterpret_cast<Vector<16>::U16>(_mm_packs_epi32(signed_half(a), signed_half(b)));
}
#if defined(__AVX2__)
inline Vector<32>::U16 low_halves(Vector<32>::U32 a, Vector<32>::U32 b)
{
    const __m256i halves =
        _mm256_packus_epi32(reinterpret_cast<__m256i>(a & 0xFFFF), reinterpret_cast<__m256i>(b & 0xFFFF));
    return reinterpret_cast<Vector<32>::U16>(_mm256_permute4x64_epi64(halves, 0xD8));
}
#endif
#if defined(__AVX512BW__)
inline Vector<64>::U16 low_halves(Vector<64>::U32 a, Vector<64>::U32 b)
{
    const __m512i halves =
        _mm512_packus_epi32(reinterpret_cast<__m512i>(a & 0xFFFF), reinterpret_cast<__m512i>(b & 0xFFFF));
    return reinterpret_cast<Vector<64>::U16>(
        _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), halves));
}
#endif
template <class U32> inline auto high_halves(U32 a, U32 b) { return low_halves(a >> 16, b >> 16); }

#endif

// Fields in lanes of their own. What a blue result carries beyond its field goes into red, as in the 32-bit word.
template <u32 Bytes> struct PixelVector<Pixel565, Bytes> {
    using U16 = typename Vector<Bytes>::U16;
    using I16 = typename Vector<Bytes>::I16;
    using Pixels = U16;
    static constexpr u32 count = Bytes / 2;

    static I16 red_of(Pixels p) { return reinterpret_cast<I16>(p >> 11); }
    static I16 green_of(Pixels p) { return reinterpret_cast<I16>(p >> 5 & 63); }
    static I16 blue_of(Pixels p) { return reinterpret_cast<I16>(p & 31); }

    static Pixels mean(Pixels a, Pixels b)
    {
        const I16 r = (red_of(a) + red_of(b)) * 15, g = (green_of(a) + green_of(b)) * 31;
        const I16 b15 = (blue_of(a) + blue_of(b)) * 15;
        return reinterpret_cast<Pixels>((r >> 5) << 11 | (g >> 1 & 0x07E0) | b15 >> 5);
    }
    static Pixels lerp(Pixels a, Pixels b, Pixels weights)
    {
        const I16 w = reinterpret_cast<I16>(weights);
        const I16 ar = red_of(a), ag = green_of(a), ab = blue_of(a);
        const I16 blue = (blue_of(b) - ab) * w + (ab << 5);
        const I16 red = (red_of(b) - ar) * w + (ar << 5) + (blue >> 11);
        const I16 half_green = ((green_of(b) - ag) * w >> 1) + (ag << 5);
        return reinterpret_cast<Pixels>((red >> 5) << 11 | (half_green & 0x07E0) | (blue >> 5 & 31));
    }
    static Pixels every(u32 weight) { return Pixels{} + static_cast<u16>(weight); }
};

} // namespace
} // namespace vexlor

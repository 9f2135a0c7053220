// YUV 4:2:2 pairs and RGB pixels a vector at a time, with the results of row/yuv.h for all inputs.
#pragma once

#include "row/byte_ops.h"
#include "row/cover.h"
#include "row/yuv.h"

namespace vexlor {
namespace {

template <u32 Bytes> struct PairVector; // there are none without vectors

#if defined(__SSE2__)

template <u32 Bytes> struct PairVector {
    using U16 = typename Vector<Bytes>::U16;
    using U32 = typename Vector<Bytes>::U32;
    using I16 = typename Vector<Bytes>::I16;

    using Pixels = Twice<U32>;

    // zip works within 128-bit lanes. Quarters swapped beforehand come out in order; and after unzip, swapped again.
    static U32 in_zip_order(U32 v)
    {
#if defined(__AVX512BW__)
        if constexpr (Bytes == 64)
            return reinterpret_cast<U32>(_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7),
                                                                  reinterpret_cast<__m512i>(v)));
#endif
#if defined(__AVX2__)
        if constexpr (Bytes == 32)
            return reinterpret_cast<U32>(_mm256_permute4x64_epi64(reinterpret_cast<__m256i>(v), 0xD8));
#endif
        return v;
    }
    static U32 from_zip_order(U32 v)
    {
#if defined(__AVX512BW__)
        if constexpr (Bytes == 64)
            return reinterpret_cast<U32>(_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7),
                                                                  reinterpret_cast<__m512i>(v)));
#endif
        return in_zip_order(v);
    }
    // Every second pixel of two vectors, still within 128-bit lanes: the left ones of pairs, and the right ones.
    static Pixels unzip(U32 a, U32 b)
    {
#if defined(__AVX512BW__)
        if constexpr (Bytes == 64) {
            const auto x = reinterpret_cast<__m512>(a), y = reinterpret_cast<__m512>(b);
            return {reinterpret_cast<U32>(_mm512_shuffle_ps(x, y, 0x88)),
                    reinterpret_cast<U32>(_mm512_shuffle_ps(x, y, 0xDD))};
        }
#endif
#if defined(__AVX2__)
        if constexpr (Bytes == 32) {
            const auto x = reinterpret_cast<__m256>(a), y = reinterpret_cast<__m256>(b);
            return {reinterpret_cast<U32>(_mm256_shuffle_ps(x, y, 0x88)),
                    reinterpret_cast<U32>(_mm256_shuffle_ps(x, y, 0xDD))};
        }
#endif
        if constexpr (Bytes == 16) {
            const auto x = reinterpret_cast<__m128>(a), y = reinterpret_cast<__m128>(b);
            return {reinterpret_cast<U32>(_mm_shuffle_ps(x, y, 0x88)),
                    reinterpret_cast<U32>(_mm_shuffle_ps(x, y, 0xDD))};
        }
    }

    static I16 every(int16_t value)
    {
        const I16 zero = {};
        return zero + value;
    }
    static I16 halves(U32 v) { return reinterpret_cast<I16>(v); }
    template <class V> static U32 words(V v) { return reinterpret_cast<U32>(v); }

#if defined(__SSSE3__)
    // Bytes biased by 128 are signed and serve as factors of byte weights. Everything is halved to fit: 298 is 149, 409 is
    // 204 and the half that >> 1 keeps, 516 is twice 129 twice. Sums saturate only where results clamp.
    using Lanes = typename Native<Bytes>::Type;
    static Lanes lanes_of(U32 v) { return reinterpret_cast<Lanes>(v); }
    static Lanes lanes_of(I16 v) { return reinterpret_cast<Lanes>(v); }
    static Lanes weighted(u32 low, u32 high, Lanes data)
    {
        return multiply_add_bytes(lanes_of(U32{} + (low | high << 8) * 0x10001), data);
    }
    // Adds what the bias of luma leaves, less its offset of 16, and half of the rounding 128.
    static Lanes finished(Lanes sum)
    {
        return lanes_of(reinterpret_cast<I16>(add_saturated(sum, lanes_of(every(16752)))) >> 7);
    }
    template <class Rgb> static Lanes weights(int r, int g, int b)
    {
        const auto byte = [](int weight) { return static_cast<u32>(weight & 0xFF); };
        return lanes_of(U32{} + (byte(r) << Rgb::r | byte(g) << Rgb::g | byte(b) << Rgb::b));
    }
    // Of biased channels: the bias, the rounding and the offset of 16 are one number.
    template <class Rgb> static U32 luma(U32 pixels)
    {
        return sum_of_unit(weights<Rgb>(66, 129, 25), lanes_of(pixels ^ 0x80808080)) +
               ((66 + 129 + 25) * 128 + 128 + 16 * 256);
    }
    static U32 sum_of_unit(Lanes a, Lanes b) { return words(add_neighbours(multiply_add_bytes(a, b))); }

    template <class Yuv, class Rgb> static Pixels decode(U32 pairs)
    {
        const auto biased = lanes_of(in_zip_order(pairs) ^ 0x80808080);
        constexpr u32 y0 = Yuv::y0 / 8, y1 = Yuv::y1 / 8, u = Yuv::u / 8, v = Yuv::v / 8;
        const auto yv = shuffle_bytes(biased, unit_order(y0, v, y1, v));
        const auto yu = shuffle_bytes(biased, unit_order(y0, u, y1, u));
        const auto half_v = lanes_of(reinterpret_cast<I16>(yv) >> 9);
        const auto r = finished(add_saturated(weighted(149, 204, yv), half_v));
        const auto b = finished(add_saturated(weighted(149, 129, yu), weighted(0, 129, yu)));
        const auto g = finished(subtract_saturated(
            subtract_saturated(weighted(149, 0, yu), weighted(0, 104, yv)), weighted(0, 50, yu)));
        const auto x = lanes_of(every(255));
        const auto first = Rgb::x == 0 ? pack_unsigned(x, g) : pack_unsigned(b, r);
        const auto second = Rgb::x == 0 ? pack_unsigned(r, b) : pack_unsigned(g, x);
        const auto low = zip_bytes_low(first, second), high = zip_bytes_high(first, second);
        return {words(zip_words_low(low, high)), words(zip_words_high(low, high))};
    }

    template <class Rgb, class Yuv> static U32 encode(Pixels pixels)
    {
        const Pixels y = unzip(luma<Rgb>(pixels.low), luma<Rgb>(pixels.high));
        const auto left = lanes_of(unzip(pixels.low, pixels.high).low);
        const U32 u = sum_of_unit(left, weights<Rgb>(-38, -74, 112)) + 128 * 256;
        const U32 v = sum_of_unit(left, weights<Rgb>(112, -94, -18)) + 128 * 256;
        return from_zip_order((y.low >> 8 & 0xFF) << Yuv::y0 | (y.high >> 8 & 0xFF) << Yuv::y1 |
                              (u >> 8 & 0xFF) << Yuv::u | (v >> 8 & 0xFF) << Yuv::v);
    }
#else
    static U16 clamped(I16 v)
    {
        v = v < 0 ? I16{} : v;
        return reinterpret_cast<U16>(v > 255 ? every(255) : v);
    }

    // The coefficients are split so that everything fits 16 bits: 298 = 256 + 42, 409 = 256 + 153, 208 = 256 - 48,
    // 516 = 512 + 4.
    template <class Yuv, class Rgb> static Pixels decode(U32 pairs)
    {
        const U32 us = pairs >> Yuv::u & 0xFF, vs = pairs >> Yuv::v & 0xFF;
        const I16 c = halves(pairs >> Yuv::y0 & 0x00FF00FF) - 16;
        const I16 d = halves(us | us << 16) - 128, e = halves(vs | vs << 16) - 128;
        const I16 rest = c * 42 + 128;
        const U16 r = clamped(c + e + ((rest + e * 153) >> 8));
        const U16 g = clamped(c - e + ((rest + e * 48 - d * 100) >> 8));
        const U16 b = clamped(c + d + d + ((rest + d * 4) >> 8));
        return Rgb::x == 0 ? zip(r << 8 | 0xFF, g | b << 8) : zip(b | g << 8, r | 0xFF00);
    }

    // Sums of luma reach 56228, and are unsigned; those of chroma are signed.
    template <class Rgb, class Yuv> static U32 encode(Pixels pixels)
    {
        const Pixels sides = unzip(pixels.low, pixels.high);
        const auto both = [&](u32 shift) {
            return reinterpret_cast<U16>((sides.low >> shift & 0xFF) | (sides.high >> shift & 0xFF) << 16);
        };
        const U16 r = both(Rgb::r), g = both(Rgb::g), b = both(Rgb::b);
        const U16 y = ((r * 66 + g * 129 + b * 25 + 128) >> 8) + 16;
        const I16 u = (halves(words(b * 112 - r * 38 - g * 74)) >> 8) + 128;
        const I16 v = (halves(words(r * 112 - g * 94 - b * 18)) >> 8) + 128;
        return words(y) << Yuv::y0 | (words(u) & 0xFF) << Yuv::u | (words(v) & 0xFF) << Yuv::v;
    }
    static Pixels zip(U16 a, U16 b)
    {
        const auto x = reinterpret_cast<__m128i>(a), y = reinterpret_cast<__m128i>(b);
        return {words(_mm_unpacklo_epi16(x, y)), words(_mm_unpackhi_epi16(x, y))};
    }
#endif
};

#endif

} // namespace
} // namespace vexlor

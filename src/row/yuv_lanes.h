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
    using Lanes = typename Native<Bytes>::Type;
    using Pixels = Twice<U32>;

    static U32 units(auto v) { return reinterpret_cast<U32>(v); }
    static U16 words(auto v) { return reinterpret_cast<U16>(v); }
    static I16 signed_words(auto v) { return reinterpret_cast<I16>(v); }

    static Pixels zip(U16 a, U16 b)
    {
        return {units(zip_words_low(native(a), native(b))), units(zip_words_high(native(a), native(b)))};
    }

#if defined(__SSSE3__)
    // Unsigned weights of the bytes of words, and the signed bytes.
    static Lanes weighted(u32 low, u32 high, Lanes data)
    {
        return multiply_add_bytes(native(U32{} + (low | high << 8) * 0x10001), data);
    }
    static Lanes doubled(Lanes v) { return add_saturated(v, v); }

    // Channels in the upper bytes of words, one word per pixel. They are biased by 128, as all bytes are here: signed, they
    // serve as factors of byte weights, and sums saturate only where results clamp. Everything is halved to fit: 298 is
    // 149, 409 is 204 and the half that >> 1 keeps, 516 is twice 129 twice.
    struct Channels {
        Lanes r, g, b;
    };
    template <class Yuv> static Channels channels(U32 pairs)
    {
        // What biases, offset and rounding leave, 149 * 112 + 64 - 128 * 128, is 4 * 92 and takes the place of chroma.
        constexpr u32 lumas = 0xFFu << Yuv::y0 | 0xFFu << Yuv::y1;
        const auto y = native((pairs & lumas) ^ ((0x80808080 & lumas) | (0x5C5C5C5C & ~lumas)));
        const auto luma = Yuv::y0 == 0 ? weighted(149, 4, y) : weighted(4, 149, y);
        constexpr u32 u = Yuv::u / 8, v = Yuv::v / 8;
        const auto uv = shuffle_bytes(native(pairs ^ 0x80808080), unit_order(u, v, u, v));
        const auto half_v = native(signed_words(uv) >> 9), half_u = weighted(129, 0, uv);
        return {doubled(add_saturated(add_saturated(luma, weighted(0, 204, uv)), half_v)),
                doubled(subtract_saturated(luma, weighted(50, 104, uv))),
                doubled(add_saturated(add_saturated(luma, half_u), half_u))};
    }
    template <class Yuv, class Rgb> static Pixels decode(U32 pairs)
    {
        const Channels c = channels<Yuv>(units(in_zip_order(native(pairs))));
        const auto low = [](Lanes v) { return words(v) >> 8; };
        const auto high = [](Lanes v) { return words(v) & 0xFF00; };
        return Rgb::x == 0 ? zip(high(c.r) ^ 0x80FF, (high(c.b) | low(c.g)) ^ 0x8080)
                           : zip((high(c.g) | low(c.b)) ^ 0x8080, low(c.r) ^ 0xFF80);
    }

    template <class Rgb> static constexpr u32 weights(int r, int g, int b)
    {
        const auto byte = [](int weight) { return static_cast<u32>(weight & 0xFF); };
        return byte(r) << Rgb::r | byte(g) << Rgb::g | byte(b) << Rgb::b;
    }
    // Of each left pixel the sums of both chromas stand side by side, where those of both lumas do.
    template <class Rgb, class Yuv> static U32 encode(Pixels pixels)
    {
        const auto both = [&](auto sums) {
            return words(pack_units(add_neighbours(sums(native(pixels.low))),
                                    add_neighbours(sums(native(pixels.high)))));
        };
        // Of biased channels: the bias, the rounding and the offset of 16 are one number.
        const U16 y = both([](Lanes v) {
                          return multiply_add_bytes(native(U32{} + weights<Rgb>(66, 129, 25)),
                                                    native(units(v) ^ 0x80808080));
                      }) +
                      ((66 + 129 + 25) * 128 + 128 + 16 * 256);
        const U16 uv = both([](Lanes v) {
            constexpr u32 of_u = weights<Rgb>(-38, -74, 112), of_v = weights<Rgb>(112, -94, -18);
            U32 factors;
            for (u32 i = 0; i < Bytes / 4; ++i)
                factors[i] = (i % 2 == 0) == (Yuv::u < Yuv::v) ? of_u : of_v;
            return multiply_add_bytes(left_twice(v), native(factors));
        });
        const U16 low = Yuv::y0 == 0 ? y : uv, high = Yuv::y0 == 0 ? uv : y;
        return units(from_pack_order(native((low >> 8 | (high & 0xFF00)) ^ (Yuv::y0 == 0 ? 0x8000 : 0x80))));
    }
#else
    static I16 every(int16_t value)
    {
        const I16 zero = {};
        return zero + value;
    }
    static U16 clamped(I16 v)
    {
        v = v < 0 ? I16{} : v;
        return words(v > 255 ? every(255) : v);
    }

    // The coefficients are split so that everything fits 16 bits: 298 = 256 + 42, 409 = 256 + 153, 208 = 256 - 48,
    // 516 = 512 + 4.
    template <class Yuv, class Rgb> static Pixels decode(U32 pairs)
    {
        const U32 us = pairs >> Yuv::u & 0xFF, vs = pairs >> Yuv::v & 0xFF;
        const I16 c = signed_words(pairs >> Yuv::y0 & lanes) - 16;
        const I16 d = signed_words(us | us << 16) - 128, e = signed_words(vs | vs << 16) - 128;
        const I16 rest = c * 42 + 128;
        const U16 r = clamped(c + e + ((rest + e * 153) >> 8));
        const U16 g = clamped(c - e + ((rest + e * 48 - d * 100) >> 8));
        const U16 b = clamped(c + d + d + ((rest + d * 4) >> 8));
        return Rgb::x == 0 ? zip(r << 8 | 0xFF, g | b << 8) : zip(b | g << 8, r | 0xFF00);
    }

    // Sums of luma reach 56228, and are unsigned; those of chroma are signed.
    template <class Rgb, class Yuv> static U32 encode(Pixels pixels)
    {
        const auto left = [](U32 a, U32 b) {
            return units(_mm_shuffle_ps(reinterpret_cast<__m128>(a), reinterpret_cast<__m128>(b), 0x88));
        };
        const auto right = [](U32 a, U32 b) {
            return units(_mm_shuffle_ps(reinterpret_cast<__m128>(a), reinterpret_cast<__m128>(b), 0xDD));
        };
        const Pixels sides = {left(pixels.low, pixels.high), right(pixels.low, pixels.high)};
        const auto both = [&](u32 shift) {
            return words((sides.low >> shift & 0xFF) | (sides.high >> shift & 0xFF) << 16);
        };
        const U16 r = both(Rgb::r), g = both(Rgb::g), b = both(Rgb::b);
        const U16 y = ((r * 66 + g * 129 + b * 25 + 128) >> 8) + 16;
        const I16 u = (signed_words(b * 112 - r * 38 - g * 74) >> 8) + 128;
        const I16 v = (signed_words(r * 112 - g * 94 - b * 18) >> 8) + 128;
        return units(y) << Yuv::y0 | (units(u) & 0xFF) << Yuv::u | (units(v) & 0xFF) << Yuv::v;
    }
#endif
};

#endif

} // namespace
} // namespace vexlor

// Source-over blends of 32-bit pixels, built from parts: a source of pixels, a weight, a mix of colours and a
// rule for the alpha byte. Fills, copies, scaled rows and interpolation rows share these parts and the one
// loop.
#pragma once

#include "row/cover.h"
#include "row/mixes.h"

namespace vexlor {
namespace {

constexpr u32 factor(u32 a) { return a + (a != 0); } // 0, 2..256: a shift by 8 stands in for / 255

// A lane word is a 32-bit word with two channels, or a vector of 16-bit lanes (row/lanes_sse2.h).
template <class Word> constexpr Word low_bytes(Word word)
{
    if constexpr (requires { requires sizeof word[0] == 2; })
        return word & 0xFF;
    else
        return word & lanes;
}

// Mixes of lane words. Differences and products wrap; the mask throws away what one channel of a 32-bit word
// borrows from the other. Premultiplied words keep one such borrow: the fraction of the upper product is
// subtracted too.
struct Straight {
    template <class Word> static constexpr Word mix(Word s, Word d, Word f)
    {
        return low_bytes(((s - d) * f >> 8) + d);
    }
};
struct Premultiplied {
    template <class Word> static constexpr Word mix(Word s, Word d, Word f)
    {
        return low_bytes(s + d - (d * f >> 8));
    }
};

template <class Mix, class Word> constexpr Word blend(Word s, Word d, Word f)
{
    return Mix::mix(low_bytes(s), low_bytes(d), f) | Mix::mix(low_bytes(s >> 8), low_bytes(d >> 8), f) << 8;
}

// Sources: the pixel at i, a vector of pixels from i on, and a vector whose first bytes alone are pixels.
struct Row {
    static constexpr u32 far_from = vexlor::far_from;
    const void* row;
    const void* at(u32 i) const { return moved(row, uintptr_t{i} * 4); }
    u32 operator[](u32 i) const { return load<u32>(at(i)); }
    template <class Pixels> Pixels pixels(u32 i) const { return load<Pixels>(at(i)); }
    template <u32 Bytes, class Pixels> Pixels part(u32 i) const { return load_part<Bytes, Pixels>(at(i)); }
    template <class Pixels> Pixels first(u32 i, u32 n) const { return load_first<4, Pixels>(at(i), n); }
};
struct Solid {
    static constexpr u32 far_from = vexlor::far_from;
    u32 color;
    u32 operator[](u32) const { return color; }
    template <class Pixels> Pixels pixels(u32) const { return Pixels{} + color; }
    template <u32 Bytes, class Pixels> Pixels part(u32) const { return Pixels{} + color; }
    template <class Pixels> Pixels first(u32, u32) const { return Pixels{} + color; }
};

// Weights: of a pixel, and of both 16-bit halves of each pixel of a vector.
struct PixelAlpha {
    u32 shift; // of vectors: that of a whole byte
    u32 operator()(u32 s) const { return factor(s >> shift & 0xFF); }
    template <class Pixels> Pixels halves(Pixels s) const
    {
#if defined(__SSSE3__)
        const u32 byte = shift / 8, zero = 0x80;
        using U16 = typename Vector<sizeof(Pixels)>::U16;
        const auto a = reinterpret_cast<U16>(shuffle_bytes(native(s), unit_order(byte, zero, byte, zero)));
        return reinterpret_cast<Pixels>(a + reinterpret_cast<U16>(lesser(native(a), native(U16{} + 1))));
#else
        const Pixels a = s >> shift & 0xFF;
        const Pixels f = a - reinterpret_cast<Pixels>(a != 0);
        return f | f << 16;
#endif
    }
};
struct Constant {
    u32 f;
    u32 operator()(u32) const { return f; }
    template <class Pixels> Pixels halves(Pixels) const { return Pixels{} + f * 0x10001; }
};
// 1 to 255: what is left of 256 fits a byte too.
struct ConstantByte : Constant {};

// Alpha rules, from the blended pixel and the source pixel or from vectors of them.
struct Blended {
    u32 shift; // of no use here: rules are made alike
    auto operator()(auto p, auto) const { return p; }
};
struct Opaque {
    u32 shift;
    auto operator()(auto p, auto) const { return p | 0xFFu << shift; }
};
struct Replaced {
    u32 shift;
    auto operator()(auto p, auto s) const { return p ^ ((p ^ s) & 0xFFu << shift); }
};
// The value lands at bit 0 wherever the alpha byte is, and reaches bit 8 when it is 256.
struct ClearedThenOred {
    u32 shift, value;
    auto operator()(auto p, auto) const { return (p & ~(0xFFu << shift)) | value; }
};

// Blends of vectors for factors up to 256.
template <class Mix, u32 Bytes>
inline typename Vector<Bytes>::U32 blend_vector(typename Vector<Bytes>::U32 s, typename Vector<Bytes>::U32 d,
                                                auto weight)
{
    const auto factors = [=] { return channels(weight.halves(s)); };
    if constexpr (__is_same(Mix, Premultiplied) && __is_same(decltype(weight), PixelAlpha))
        return mix_covering(s, d, factors());
    else if constexpr (__is_same(Mix, Premultiplied))
        return mix_premultiplied(s, d, factors());
#if defined(__SSSE3__)
    else if constexpr (__is_same(decltype(weight), ConstantByte))
        return mix_bytes(s, d, byte_weights<decltype(s)>(weight.f));
#endif
    else
        return mix_straight(s, d, factors());
}

template <class Mix> inline void over_pixels(auto source, u32* dst, u32 count, auto weight, auto alpha)
{
    for (u32 i = 0; i < count; ++i) {
        const u32 s = source[i];
        store(dst + i, alpha(blend<Mix>(s, load<u32>(dst + i), weight(s)), s));
    }
}

template <class Mix> inline void over_vectors(auto source, u32* dst, u32 count, auto weight, auto alpha)
{
#if defined(__SSE2__)
    const auto make = [=](auto vector, u32 i) {
        const auto s = vector.units_of(source, i);
        return alpha(blend_vector<Mix, vector.bytes>(s, vector.load(dst + i), weight), s);
    };
    cover<4>(count, make, Target{dst, count >= source.far_from}, dst);
#else
    over_pixels<Mix>(source, dst, count, weight, alpha);
#endif
}

// Vectors take their weights from whole bytes.
template <class Mix> inline void over(auto source, u32* dst, u32 count, PixelAlpha weight, auto alpha)
{
    if (weight.shift % 8 == 0)
        over_vectors<Mix>(source, dst, count, weight, alpha);
    else
        over_pixels<Mix>(source, dst, count, weight, alpha);
}

// Calls blended(weight) with the kind of weight that g is.
inline void with_weight(u32 g, auto blended)
{
    if (g - 1 < 255) // 1 to 255
        blended(ConstantByte{{g}});
    else
        blended(Constant{g});
}

// One factor for the row. Beyond 256 its products need the whole word.
template <class Mix> inline void over(auto source, u32* dst, u32 count, Constant weight, auto alpha)
{
    if (weight.f <= 256)
        with_weight(weight.f, [=](auto kind) { over_vectors<Mix>(source, dst, count, kind, alpha); });
    else
        over_pixels<Mix>(source, dst, count, weight, alpha);
}

constexpr u32 shift_count(u32 shift) { return shift & 31; }

// The tables of blends have three rows, alpha_dst_op, and two columns, alpha_mode.
constexpr bool indexes_blend_tables(const vexlor_context& ctx)
{
    return ctx.alpha_dst_op <= VEXLOR_ALPHA_DST_ONE && ctx.alpha_mode <= VEXLOR_ALPHA_PREMULTIPLIED;
}

} // namespace
} // namespace vexlor

// Source-over blends of 32-bit pixels, built from parts: a source of pixels, a weight, a mix of colours and a
// rule for the alpha byte. Fills, copies, scaled rows and interpolation rows share these parts and the one
// loop.
#pragma once

#include "row/lanes.h"

namespace vexlor {
namespace {

constexpr u32 lanes = 0x00FF00FF; // every second byte of a pixel, with 8 bits of headroom

constexpr u32 factor(u32 a) { return a + (a != 0); } // 0, 2..256: a shift by 8 stands in for / 255

// A lane word is a 32-bit word with two channels, or a vector (row/lanes.h): of such words, or of 16-bit lanes.
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

// Sources: the pixel at i, and a vector of pixels from i on.
struct Row {
    const void* row;
    u32 operator[](u32 i) const { return pixels<u32>(i); }
    template <class Pixels> Pixels pixels(u32 i) const { return load<Pixels>(moved(row, uintptr_t{i} * 4)); }
};
struct Solid {
    u32 color;
    u32 operator[](u32) const { return color; }
    template <class Pixels> Pixels pixels(u32) const { return Pixels{} + color; }
};

// Weights: of a pixel, and of both 16-bit halves of each pixel of a vector.
struct PixelAlpha {
    u32 shift;
    u32 operator()(u32 s) const { return factor(s >> shift & 0xFF); }
    template <class Pixels> Pixels halves(Pixels s) const
    {
        const Pixels a = s >> shift & 0xFF;
        const Pixels f = a - reinterpret_cast<Pixels>(a != 0);
        return f | f << 16;
    }
};
struct Constant {
    u32 f;
    u32 operator()(u32) const { return f; }
    template <class Pixels> Pixels halves(Pixels) const { return Pixels{} + f * 0x10001; }
};

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

// Blends of vectors for factors up to 256, whose products fit 16 bits. Channels of straight colour must not borrow
// from each other, and cannot in lanes of their own; premultiplied ones must.
template <class Mix, u32 Bytes>
inline typename Vector<Bytes>::U32 blend_vector(typename Vector<Bytes>::U32 s, typename Vector<Bytes>::U32 d,
                                                typename Vector<Bytes>::U32 factors)
{
    using U32 = typename Vector<Bytes>::U32;
    if constexpr (__is_same(Mix, Premultiplied)) {
        using Pairs = typename Vector<Bytes>::Pairs;
        return blend<Mix>(Pairs{s}, Pairs{d}, Pairs{factors}).v;
    } else {
        // The odd channels' products stay where they are: shifted down and up again they would lose what the
        // mask takes anyway.
        using U16 = typename Vector<Bytes>::U16;
        const auto word = [](U32 v) { return reinterpret_cast<U16>(v); };
        const U16 f = word(factors), even_d = word(d) & 0xFF;
        const U16 even = ((((word(s) & 0xFF) - even_d) * f) >> 8) + even_d;
        const U16 odd = ((word(s) >> 8) - (word(d) >> 8)) * f + (word(d) & 0xFF00);
        return (reinterpret_cast<U32>(even) & lanes) | (reinterpret_cast<U32>(odd) & ~lanes);
    }
}

// Blends whole vectors from pixel i on, and returns how far it came.
template <class Mix, u32 Bytes>
inline u32 over_vectors(auto source, u32* dst, u32 i, u32 count, auto weight, auto alpha)
{
    using Pixels = typename Vector<Bytes>::U32;
    for (; count - i >= Vector<Bytes>::pixels; i += Vector<Bytes>::pixels) {
        const auto s = source.template pixels<Pixels>(i);
        const auto d = load<Pixels>(dst + i);
        store(dst + i, alpha(blend_vector<Mix, Bytes>(s, d, weight.halves(s)), s));
    }
    return i;
}

template <class Mix> inline void over_pixels(auto source, u32* dst, u32 i, u32 count, auto weight, auto alpha)
{
    for (; i < count; ++i) {
        const u32 s = source[i];
        store(dst + i, alpha(blend<Mix>(s, load<u32>(dst + i), weight(s)), s));
    }
}

template <class Mix> inline void over_lanes(auto source, u32* dst, u32 count, auto weight, auto alpha)
{
    u32 i = 0;
    if constexpr (vector_bytes > 16)
        i = over_vectors<Mix, vector_bytes>(source, dst, i, count, weight, alpha);
    if constexpr (vector_bytes != 0)
        i = over_vectors<Mix, 16>(source, dst, i, count, weight, alpha);
    over_pixels<Mix>(source, dst, i, count, weight, alpha);
}

template <class Mix> inline void over(auto source, u32* dst, u32 count, PixelAlpha weight, auto alpha)
{
    over_lanes<Mix>(source, dst, count, weight, alpha);
}

// One factor for the row. Beyond 256 its products need the whole word.
template <class Mix> inline void over(auto source, u32* dst, u32 count, Constant weight, auto alpha)
{
    if (weight.f <= 256)
        over_lanes<Mix>(source, dst, count, weight, alpha);
    else
        over_pixels<Mix>(source, dst, 0, count, weight, alpha);
}

constexpr u32 shift_count(u32 shift) { return shift & 31; }

// The tables of blends have three rows, alpha_dst_op, and two columns, alpha_mode.
constexpr bool indexes_blend_tables(const vexlor_context& ctx)
{
    return ctx.alpha_dst_op <= VEXLOR_ALPHA_DST_ONE && ctx.alpha_mode <= VEXLOR_ALPHA_PREMULTIPLIED;
}

} // namespace
} // namespace vexlor

// Source-over blends of 32-bit pixels, built from parts: a source of pixels, a weight, a mix of colours and a
// rule for the alpha byte. Fills, copies, scaled rows and interpolation rows share these parts and the one
// loop.
#pragma once

#include "base.h"

namespace vexlor {
namespace {

constexpr u32 lanes = 0x00FF00FF; // every second byte of a pixel, with 8 bits of headroom

constexpr u32 factor(u32 a) { return a + (a != 0); } // 0, 2..256: a shift by 8 stands in for / 255

// A lane word: a 32-bit word with two channels, or a vector of 16-bit lanes with one channel each.
template <class Word> constexpr Word low_bytes(Word word)
{
    if constexpr (__is_same(Word, u32))
        return word & lanes;
    else
        return word & 0xFF;
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

// Sources.
struct Row {
    const void* row;
    u32 operator[](u32 i) const { return load<u32>(moved(row, uintptr_t{i} * 4)); }
};
struct Solid {
    u32 color;
    u32 operator[](u32) const { return color; }
};

// Weights.
struct PixelAlpha {
    u32 shift;
    u32 operator()(u32 s) const { return factor(s >> shift & 0xFF); }
};
struct Constant {
    u32 f;
    u32 operator()(u32) const { return f; }
};

// Alpha rules, from the blended pixel and the source pixel.
struct Blended {
    u32 shift; // of no use here: rules are made alike
    u32 operator()(u32 p, u32) const { return p; }
};
struct Opaque {
    u32 shift;
    u32 operator()(u32 p, u32) const { return p | 0xFFu << shift; }
};
struct Replaced {
    u32 shift;
    u32 operator()(u32 p, u32 s) const { return p ^ ((p ^ s) & 0xFFu << shift); }
};
// The value lands at bit 0 wherever the alpha byte is, and reaches bit 8 when it is 256.
struct ClearedThenOred {
    u32 shift, value;
    u32 operator()(u32 p, u32) const { return (p & ~(0xFFu << shift)) | value; }
};

template <class Mix> inline void over(auto source, u32* dst, u32 count, auto weight, auto alpha)
{
    for (u32 i = 0; i < count; ++i) {
        const u32 s = source[i];
        store(dst + i, alpha(blend<Mix>(s, load<u32>(dst + i), weight(s)), s));
    }
}

constexpr u32 shift_count(u32 shift) { return shift & 31; }

// The tables of blends have three rows, alpha_dst_op, and two columns, alpha_mode.
constexpr bool indexes_blend_tables(const vexlor_context& ctx)
{
    return ctx.alpha_dst_op <= VEXLOR_ALPHA_DST_ONE && ctx.alpha_mode <= VEXLOR_ALPHA_PREMULTIPLIED;
}

} // namespace
} // namespace vexlor

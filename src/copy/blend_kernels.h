// The kernels of src/copy/blend_rows.cpp, for one instruction set.
#pragma once

#include "row/over.h"
#include "row/rgb565.h"

namespace vexlor {
namespace {

template <class Mix, class Alpha> void src(const u32* s, u32* d, u32 n, u32 a)
{
    over<Mix>(Row{s}, d, n, PixelAlpha{shift_count(a)}, Alpha{shift_count(a)});
}

template <class Mix> void gbl_plain(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{g}, Blended{shift_count(a)});
}
// g arrives raised and is raised here once more: 255 blends at 257, and callers' pixels depend on it.
template <class Mix> void gbl_aone(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{factor(g)}, Opaque{shift_count(a)});
}
template <class Mix> void gbl_arepl(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{factor(g)}, ClearedThenOred{shift_count(a), g});
}

// Pixels that do not pass are stored as they were: without a branch the row runs at the speed of a copy.
void copy_where(const u32* s, u32* d, u32 n, u32 shift, auto passes)
{
    for (u32 i = 0; i < n; ++i) {
        const u32 pixel = load<u32>(s + i);
        store(d + i, passes(pixel >> shift & 0xFF) ? pixel : load<u32>(d + i));
    }
}

// The fields of 565 pixels in lanes of 16 bits, as lerp_565 mixes them in words. What blue exceeds its place by goes into
// red; green has nothing below it. g: up to 256.
template <u32 Bytes> u32 over_565_vectors(const u16* src, u16* dst, u32 i, u32 count, u32 g)
{
    using U16 = typename Vector<Bytes>::U16;
    using I16 = typename Vector<Bytes>::I16;
    const I16 weight = I16{} + static_cast<int16_t>(g);
    const auto field = [](U16 v, int shift, u16 mask) { return reinterpret_cast<I16>(v >> shift & mask); };
    for (; count - i >= Bytes / 2; i += Bytes / 2) {
        const U16 s = load<U16>(src + i), d = load<U16>(dst + i);
        const I16 dr = field(d, 11, 31), dg = field(d, 5, 63), db = field(d, 0, 31);
        const I16 b = (field(s, 0, 31) - db) * weight + (db << 5);
        const I16 r = (field(s, 11, 31) - dr) * weight + (dr << 5) + (b >> 11);
        const I16 half_g = ((field(s, 5, 63) - dg) * weight >> 1) + (dg << 5);
        store(dst + i, reinterpret_cast<U16>((r >> 5) << 11 | (half_g & 0x07E0) | (b >> 5 & 31)));
    }
    return i;
}

inline void copy_blend_over_gbl_565(const u16* src, u16* dst, u32 count, u32 g)
{
    u32 i = 0;
    if (g <= 256) {
        if constexpr (vector_bytes > 16)
            i = over_565_vectors<vector_bytes>(src, dst, i, count, g);
        if constexpr (vector_bytes != 0)
            i = over_565_vectors<16>(src, dst, i, count, g);
    }
    for (; i < count; ++i)
        store(dst + i, static_cast<u16>(lerp_565(load<u16>(dst + i), load<u16>(src + i), g)));
}

// Each pixel is read before it is written, from pixel 0 up: overlapping rows of one surface come here.
inline void copy_opaque_aone_8888(const u32* src, u32* dst, u32 count, u32 shift)
{
    const u32 alpha = 0xFFu << shift_count(shift);
    for (u32 i = 0; i < count; ++i)
        store(dst + i, load<u32>(src + i) | alpha);
}

inline void copy_test_8888(const u32* src, u32* dst, u32 count, u32 test, u32 reference, u32 shift)
{
    const u32 at = shift_count(shift);
    switch (test) {
    case VEXLOR_ALPHA_TEST_LESS: copy_where(src, dst, count, at, [=](u32 a) { return a < reference; }); break;
    case VEXLOR_ALPHA_TEST_LESS_EQUAL:
        copy_where(src, dst, count, at, [=](u32 a) { return a <= reference; });
        break;
    case VEXLOR_ALPHA_TEST_EQUAL:
        copy_where(src, dst, count, at, [=](u32 a) { return a == reference; });
        break;
    case VEXLOR_ALPHA_TEST_GREATER_EQUAL:
        copy_where(src, dst, count, at, [=](u32 a) { return a >= reference; });
        break;
    case VEXLOR_ALPHA_TEST_GREATER:
        copy_where(src, dst, count, at, [=](u32 a) { return a > reference; });
        break;
    case VEXLOR_ALPHA_TEST_NOT_EQUAL:
        copy_where(src, dst, count, at, [=](u32 a) { return a != reference; });
        break;
    default: break;
    }
}

} // namespace
} // namespace vexlor

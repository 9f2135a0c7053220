// Spans of unfiltered scaling, for one instruction set.
#pragma once

#include "row/over.h"
#include "row/stepped.h"
#include "row/yuv.h"

namespace vexlor {
namespace {

template <u32 Bytes> u32 write_vectors(const auto& source, u32* dst, u32 count, auto rule)
{
    using Pixels = typename Vector<Bytes>::U32;
    u32 i = 0;
    for (; count - i >= Vector<Bytes>::pixels; i += Vector<Bytes>::pixels)
        store(dst + i, rule(source.template pixels<Pixels>(i)));
    return i;
}

// Writes every unit of a source through a rule that takes a unit or a vector of them.
inline void write_units(const auto& source, void* dst, u32 count, auto rule)
{
    auto* const to = static_cast<u32*>(dst);
    u32 i = 0;
    if constexpr (vector_bytes != 0)
        i = write_vectors<vector_bytes>(source, to, count, rule);
    for (; i < count; ++i)
        store(to + i, rule(source[i]));
}

inline void scale_opaque_nofilt_32(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    write_units(Stepped(src, x, step, count), dst, count, [](auto p) { return p; });
}

inline void scale_opaque_nofilt_aone_8888(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 alpha = 0xFFu << vexlor_fmt_get_alpha_shift(format);
    write_units(Stepped(src, x, step, count), dst, count, [=](auto p) { return p | alpha; });
}

template <class Yuv, class Rgb>
void scale_opaque_nofilt_yuv(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    const Stepped source(src, x, step, count / 2);
    for (i32 i = 0; i < static_cast<i32>(count / 2); ++i)
        store_pixels(dst, i, decode<Yuv, Rgb>(source[static_cast<u32>(i)]));
}

// Both alpha shifts are that of the destination's format.
template <class Mix, class Alpha>
void scale_blend_over_src_nofilt(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(format);
    over<Mix>(Stepped(src, x, step, count), static_cast<u32*>(dst), count, PixelAlpha{shift}, Alpha{shift});
}

} // namespace
} // namespace vexlor

// Spans of unfiltered scaling: one destination row from the source units that a 16.16 position steps through.
// Blending spans are the blends of copied rows with such a source in place of a row.
#include "row/over.h"
#include "row/yuv.h"

using namespace vexlor;

namespace {

// A row of 32-bit units, read at every step.
struct Stepped {
    const void* row;
    i64 x;
    i32 step;

    u32 operator[](u32 i) const { return load<u32>(moved(row, bytes_of((x + i64{i} * step) >> 16, 4))); }
};

template <class Yuv, class Rgb> void decode_stepped(const Stepped& source, void* dst, u32 count)
{
    for (i32 i = 0; i < static_cast<i32>(count / 2); ++i)
        store_pixels(dst, i, decode<Yuv, Rgb>(source[static_cast<u32>(i)]));
}

// Both alpha shifts are that of the destination's format.
template <class Mix, class Alpha> void over_stepped(const Stepped& source, void* dst, u32 format, u32 count)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(format);
    over<Mix>(source, static_cast<u32*>(dst), count, PixelAlpha{shift}, Alpha{shift});
}

} // namespace

void vexlor_1d_scale_opaque_nofilt_32(const void* src, void* dst, uint32_t, uint32_t count, int32_t x,
                                      int32_t step)
{
    const Stepped source{src, x, step};
    for (u32 i = 0; i < count; ++i)
        store(static_cast<u32*>(dst) + i, source[i]);
}

void vexlor_1d_scale_opaque_nofilt_aone_8888(const void* src, void* dst, uint32_t dst_format, uint32_t count,
                                             int32_t x, int32_t step)
{
    const u32 alpha = 0xFFu << vexlor_fmt_get_alpha_shift(dst_format);
    const Stepped source{src, x, step};
    for (u32 i = 0; i < count; ++i)
        store(static_cast<u32*>(dst) + i, source[i] | alpha);
}

// clang-format off
void vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8 (const void* src, void* dst, uint32_t, uint32_t count, int32_t x, int32_t step) { decode_stepped<Y8V8Y8U8, X8R8G8B8>({src, x, step}, dst, count); }
void vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8 (const void* src, void* dst, uint32_t, uint32_t count, int32_t x, int32_t step) { decode_stepped<Y8V8Y8U8, B8G8R8X8>({src, x, step}, dst, count); }
void vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8 (const void* src, void* dst, uint32_t, uint32_t count, int32_t x, int32_t step) { decode_stepped<U8Y8V8Y8, X8R8G8B8>({src, x, step}, dst, count); }
void vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8 (const void* src, void* dst, uint32_t, uint32_t count, int32_t x, int32_t step) { decode_stepped<U8Y8V8Y8, B8G8R8X8>({src, x, step}, dst, count); }

void vexlor_1d_scale_blend_over_src_nofilt_8888          (const void* src, void* dst, uint32_t format, uint32_t count, int32_t x, int32_t step) { over_stepped<Straight, Blended>      ({src, x, step}, dst, format, count); }
void vexlor_1d_scale_blend_over_src_nofilt_8888_pre      (const void* src, void* dst, uint32_t format, uint32_t count, int32_t x, int32_t step) { over_stepped<Premultiplied, Blended> ({src, x, step}, dst, format, count); }
void vexlor_1d_scale_blend_over_src_nofilt_arepl_8888    (const void* src, void* dst, uint32_t format, uint32_t count, int32_t x, int32_t step) { over_stepped<Straight, Replaced>     ({src, x, step}, dst, format, count); }
void vexlor_1d_scale_blend_over_src_nofilt_arepl_8888_pre(const void* src, void* dst, uint32_t format, uint32_t count, int32_t x, int32_t step) { over_stepped<Premultiplied, Replaced>({src, x, step}, dst, format, count); }
void vexlor_1d_scale_blend_over_src_nofilt_aone_8888     (const void* src, void* dst, uint32_t format, uint32_t count, int32_t x, int32_t step) { over_stepped<Straight, Opaque>       ({src, x, step}, dst, format, count); }
void vexlor_1d_scale_blend_over_src_nofilt_aone_8888_pre (const void* src, void* dst, uint32_t format, uint32_t count, int32_t x, int32_t step) { over_stepped<Premultiplied, Opaque>  ({src, x, step}, dst, format, count); }
// clang-format on

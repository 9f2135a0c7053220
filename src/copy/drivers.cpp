// Drivers: walk a rectangle and call a row routine once per row; or once for all rows, where they touch and the routine
// is one of the library's own that treat all pixels alike.
#include "row/over.h"
#include "surface/rectangle.h"

using namespace vexlor;

namespace {

constexpr vexlor_copy_src_fn own_src_rows[] = {
    vexlor_1d_copy_blend_over_src_8888,          vexlor_1d_copy_blend_over_src_aone_8888,
    vexlor_1d_copy_blend_over_src_arepl_8888,    vexlor_1d_copy_blend_over_src_pre_8888,
    vexlor_1d_copy_blend_over_src_pre_aone_8888, vexlor_1d_copy_blend_over_src_pre_arepl_8888,
    vexlor_1d_copy_blend_over_src_8888_sse2,
};
constexpr vexlor_copy_gbl_fn own_gbl_rows[] = {
    vexlor_1d_copy_blend_over_gbl_8888,          vexlor_1d_copy_blend_over_gbl_aone_8888,
    vexlor_1d_copy_blend_over_gbl_arepl_8888,    vexlor_1d_copy_blend_over_gbl_pre_8888,
    vexlor_1d_copy_blend_over_gbl_pre_aone_8888, vexlor_1d_copy_blend_over_gbl_pre_arepl_8888,
    vexlor_1d_copy_blend_over_gbl_8888_sse2,
};
constexpr vexlor_copy_gbl_yuv_fn own_yuv_over_rgb_rows[] = {
    vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8,
    vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8,
    vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8,
    vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8,
};
template <class Row, size_t N> bool is_own(const Row (&own)[N], Row row)
{
    for (const Row candidate : own)
        if (row == candidate)
            return true;
    return false;
}

// Both surfaces' rows of a rectangle, from the top.
struct Rows {
    const u8* src;
    u8* dst;
    u32 src_stride, dst_stride;

    // Makes one row of w x h pixels of rows that touch in both surfaces, for a routine that takes pixels of so many bytes
    // for source and destination. Rows of whole pairs only, for YUV.
    void join(i32& w, i32& h, u32 src_bytes, u32 dst_bytes) const
    {
        const u64 pixels = static_cast<u64>(i64{w} * h);
        if (w <= 0 || h <= 1 || w % 2 != 0 || pixels > INT32_MAX ||
            u64{static_cast<u32>(w)} * src_bytes != src_stride ||
            u64{static_cast<u32>(w)} * dst_bytes != dst_stride ||
            !are_apart(src, pixels * src_bytes, dst, pixels * dst_bytes))
            return;
        w = static_cast<i32>(pixels);
        h = 1;
    }

    void next()
    {
        src = moved(src, src_stride);
        dst = moved(dst, dst_stride);
    }
    template <class T> const T* from() const { return reinterpret_cast<const T*>(src); }
    template <class T> T* to() const { return reinterpret_cast<T*>(dst); }
};

Rows rows_of(const vexlor_surface_desc& src, const vexlor_surface_desc& dst, i32 sx, i32 sy, i32 dx, i32 dy,
             u32 src_bytes, u32 dst_bytes)
{
    return {pixel_address(src, sx, sy, src_bytes), pixel_address(dst, dx, dy, dst_bytes), src.stride,
            dst.stride};
}

// Surfaces of equivalent formats: the source's bytes per pixel serve both.
Rows rows_of(const vexlor_surface_desc& src, const vexlor_surface_desc& dst, i32 sx, i32 sy, i32 dx, i32 dy)
{
    const u32 bytes = bytes_per_pixel(src.format);
    return rows_of(src, dst, sx, sy, dx, dy, bytes, bytes);
}

} // namespace

void vexlor_2d_copy_blend_over_src_8888(const vexlor_surface_desc* src, const vexlor_surface_desc* dst,
                                        vexlor_copy_src_fn row, int32_t sx, int32_t sy, int32_t dx,
                                        int32_t dy, int32_t w, int32_t h)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(src->format);
    Rows rows = rows_of(*src, *dst, sx, sy, dx, dy);
    if (is_own(own_src_rows, row))
        rows.join(w, h, 4, 4);
    for (i32 i = 0; i < h; ++i, rows.next())
        row(rows.from<u32>(), rows.to<u32>(), static_cast<u32>(w), shift);
}

void vexlor_2d_copy_blend_over_gbl_8888(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                        const vexlor_surface_desc* dst, vexlor_copy_gbl_fn row, int32_t sx,
                                        int32_t sy, int32_t dx, int32_t dy, int32_t w, int32_t h)
{
    const u32 g = factor(ctx->alpha_value);
    const u32 shift = vexlor_fmt_get_alpha_shift(src->format);
    Rows rows = rows_of(*src, *dst, sx, sy, dx, dy);
    if (is_own(own_gbl_rows, row))
        rows.join(w, h, 4, 4);
    for (i32 i = 0; i < h; ++i, rows.next())
        row(rows.from<u32>(), rows.to<u32>(), static_cast<u32>(w), g, shift);
}

void vexlor_2d_copy_blend_over_gbl_565(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                       const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t dx,
                                       int32_t dy, int32_t w, int32_t h)
{
    const u32 g = factor(ctx->alpha_value);
    Rows rows = rows_of(*src, *dst, sx, sy, dx, dy);
    if (ctx->copy_blend_over_gbl_565 == vexlor_1d_copy_blend_over_gbl_565)
        rows.join(w, h, 2, 2);
    for (i32 i = 0; i < h && ctx->copy_blend_over_gbl_565; ++i, rows.next())
        ctx->copy_blend_over_gbl_565(rows.from<u16>(), rows.to<u16>(), static_cast<u32>(w), g);
}

void vexlor_2d_copy_blend_over_gbl_S32D32(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                          const vexlor_surface_desc* dst, vexlor_copy_gbl_yuv_fn row,
                                          int32_t sx, int32_t sy, int32_t dx, int32_t dy, int32_t w,
                                          int32_t h)
{
    const u32 g = factor(ctx->alpha_value);
    Rows rows =
        rows_of(*src, *dst, sx, sy, dx, dy, bytes_per_pixel(src->format), bytes_per_pixel(dst->format));
    if (is_own(own_yuv_over_rgb_rows, row))
        rows.join(w, h, 2, 4);
    for (i32 i = 0; i < h; ++i, rows.next())
        row(rows.src, rows.dst, w, g);
}

void vexlor_2d_copy_test_8888(const vexlor_context* ctx, const vexlor_surface_desc* src,
                              const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t dx, int32_t dy,
                              int32_t w, int32_t h)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(src->format);
    Rows rows = rows_of(*src, *dst, sx, sy, dx, dy);
    if (ctx->copy_test_8888 == vexlor_1d_copy_test_8888)
        rows.join(w, h, 4, 4);
    for (i32 i = 0; i < h && ctx->copy_test_8888; ++i, rows.next())
        ctx->copy_test_8888(rows.from<u32>(), rows.to<u32>(), static_cast<u32>(w), ctx->alpha_test,
                            ctx->alpha_ref, shift);
}

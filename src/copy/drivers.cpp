// Drivers: walk a rectangle and call a row routine once per row.
#include "row/over.h"

using namespace vexlor;

namespace {

// Both surfaces' rows of a rectangle, from the top.
struct Rows {
    const u8* src;
    u8* dst;
    u32 src_stride, dst_stride;

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
    for (i32 i = 0; i < h; ++i, rows.next())
        row(rows.from<u32>(), rows.to<u32>(), static_cast<u32>(w), g, shift);
}

void vexlor_2d_copy_blend_over_gbl_565(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                       const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t dx,
                                       int32_t dy, int32_t w, int32_t h)
{
    const u32 g = factor(ctx->alpha_value);
    Rows rows = rows_of(*src, *dst, sx, sy, dx, dy);
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
    for (i32 i = 0; i < h; ++i, rows.next())
        row(rows.src, rows.dst, w, g);
}

void vexlor_2d_copy_test_8888(const vexlor_context* ctx, const vexlor_surface_desc* src,
                              const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t dx, int32_t dy,
                              int32_t w, int32_t h)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(src->format);
    Rows rows = rows_of(*src, *dst, sx, sy, dx, dy);
    for (i32 i = 0; i < h && ctx->copy_test_8888; ++i, rows.next())
        ctx->copy_test_8888(rows.from<u32>(), rows.to<u32>(), static_cast<u32>(w), ctx->alpha_test,
                            ctx->alpha_ref, shift);
}

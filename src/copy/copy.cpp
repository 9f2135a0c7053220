// The copy entry: its checks and its tables.
#include "copy/plain.h"
#include "row/over.h"

using namespace vexlor;

namespace {

using SrcSlot = vexlor_copy_src_fn vexlor_context::*;
using GblSlot = vexlor_copy_gbl_fn vexlor_context::*;
using GblYuvSlot = vexlor_copy_gbl_yuv_fn vexlor_context::*;

// clang-format off
constexpr SrcSlot src_rows[3][2] = {
//   alpha_mode 0                                      alpha_mode 1                                           alpha_dst_op
    {&vexlor_context::copy_blend_over_src_8888,       &vexlor_context::copy_blend_over_src_pre_8888},        // 0
    {&vexlor_context::copy_blend_over_src_arepl_8888, &vexlor_context::copy_blend_over_src_pre_arepl_8888},  // 1
    {&vexlor_context::copy_blend_over_src_aone_8888,  &vexlor_context::copy_blend_over_src_pre_aone_8888},   // 2
};
constexpr GblSlot gbl_rows[3][2] = {
//   alpha_mode 0                                      alpha_mode 1                                           alpha_dst_op
    {&vexlor_context::copy_blend_over_gbl_8888,       &vexlor_context::copy_blend_over_gbl_pre_8888},        // 0
    {&vexlor_context::copy_blend_over_gbl_arepl_8888, &vexlor_context::copy_blend_over_gbl_pre_arepl_8888},  // 1
    {&vexlor_context::copy_blend_over_gbl_aone_8888,  &vexlor_context::copy_blend_over_gbl_pre_aone_8888},   // 2
};
constexpr GblYuvSlot gbl_yuv_rows[2][2] = {
//   X8R8G8B8, A8R8G8B8                                       B8G8R8X8, B8G8R8A8                                        source
    {&vexlor_context::copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8, &vexlor_context::copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8}, // Y8V8Y8U8
    {&vexlor_context::copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8, &vexlor_context::copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8}, // U8Y8V8Y8
};
// clang-format on

// What the alpha test and the per-pixel blend both ask of their surfaces.
u32 check_source_alpha(const Copy& c)
{
    if (!c.equivalent())
        return VEXLOR_NOT_CONVERTIBLE;
    if (bits_per_pixel(c.src.format) != 32)
        return VEXLOR_UNSUPPORTED_FORMAT;
    if (!has_alpha(c.src.format))
        return VEXLOR_NO_SOURCE_ALPHA;
    if (c.overlapping())
        return VEXLOR_OVERLAP;
    return VEXLOR_OK;
}

u32 copy_tested(const Copy& c)
{
    if (const u32 refused = check_source_alpha(c))
        return refused;
    if (c.ctx.alpha_dst_op != VEXLOR_ALPHA_DST_REPLACE)
        return VEXLOR_UNSUPPORTED_ALPHA;
    vexlor_2d_copy_test_8888(&c.ctx, &c.src, &c.dst, c.from.x, c.from.y, c.to.x, c.to.y, c.from.w, c.rows);
    return VEXLOR_OK;
}

u32 blend_by_source_alpha(const Copy& c)
{
    if (const u32 refused = check_source_alpha(c))
        return refused;
    if (!indexes_blend_tables(c.ctx))
        return VEXLOR_UNSUPPORTED_ALPHA;
    if (const auto row = c.ctx.*src_rows[c.ctx.alpha_dst_op][c.ctx.alpha_mode])
        vexlor_2d_copy_blend_over_src_8888(&c.src, &c.dst, row, c.from.x, c.from.y, c.to.x, c.to.y, c.from.w,
                                           c.rows);
    return VEXLOR_OK;
}

u32 blend_by_global_alpha(const Copy& c)
{
    if (!c.convertible())
        return VEXLOR_NOT_CONVERTIBLE;
    if (c.overlapping())
        return VEXLOR_OVERLAP;
    if (!c.equivalent()) {
        if (const auto row = c.ctx.*of_pair(gbl_yuv_rows, c.src.format, c.dst.format))
            vexlor_2d_copy_blend_over_gbl_S32D32(&c.ctx, &c.src, &c.dst, row, c.from.x, c.from.y, c.to.x,
                                                 c.to.y, c.from.w, c.rows);
        return VEXLOR_OK;
    }
    if (c.src.format == VEXLOR_FMT_565) {
        vexlor_2d_copy_blend_over_gbl_565(&c.ctx, &c.src, &c.dst, c.from.x, c.from.y, c.to.x, c.to.y,
                                          c.from.w, c.rows);
        return VEXLOR_OK;
    }
    if (!is_rgb32(c.src.format))
        return VEXLOR_UNSUPPORTED_FORMAT;
    if (!indexes_blend_tables(c.ctx))
        return VEXLOR_UNSUPPORTED_ALPHA;
    if (const auto row = c.ctx.*gbl_rows[c.ctx.alpha_dst_op][c.ctx.alpha_mode])
        vexlor_2d_copy_blend_over_gbl_8888(&c.ctx, &c.src, &c.dst, row, c.from.x, c.from.y, c.to.x, c.to.y,
                                           c.from.w, c.rows);
    return VEXLOR_OK;
}

} // namespace

uint32_t vexlor_copy(const vexlor_context* ctx, const vexlor_surface_desc* src,
                     const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t dx, int32_t dy,
                     int32_t w, int32_t h)
{
    if (!ctx || !src || !dst)
        return VEXLOR_NULL_POINTER;
    const Rect from{sx, sy, w, h};
    const Rect to{dx, dy, w, h};
    if (!is_inside(from, *src) || !is_inside(to, *dst))
        return VEXLOR_BAD_RECTANGLE;
    const bool drawable = has_pixels_inside(from, *src) && has_pixels_inside(to, *dst) &&
                          !differ_in_size_alone(src->format, dst->format);
    const i32 rows = drawable ? h : 0;
    const Copy copy{*ctx, *src, *dst, from, to, rows};
    switch (ctx->alpha_op) {
    case VEXLOR_ALPHA_OP_NONE: return copy_plain(copy);
    case VEXLOR_ALPHA_OP_TEST: return copy_tested(copy);
    case VEXLOR_ALPHA_OP_BLEND: break;
    default: return VEXLOR_UNSUPPORTED_ALPHA;
    }
    switch (ctx->alpha_src) {
    case VEXLOR_ALPHA_SRC_GLOBAL: return blend_by_global_alpha(copy);
    case VEXLOR_ALPHA_SRC_PIXEL: return blend_by_source_alpha(copy);
    default: return VEXLOR_UNSUPPORTED_ALPHA;
    }
}

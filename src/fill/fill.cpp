// The fill entry: its checks, its table and the driver of the blended fill.
#include "isa/kernels.h"
#include "row/over.h"
#include "surface/formats.h"

using namespace vexlor;

namespace {

using Slot = vexlor_fill_blend_fn vexlor_context::*;
constexpr Slot blend_rows[3] = {
    &vexlor_context::fill_blend_over_8888,       // alpha_dst_op 0
    &vexlor_context::fill_blend_over_arepl_8888, // 1
    &vexlor_context::fill_blend_over_aone_8888,  // 2
};

// Whether the slot holds a routine of the library that writes such rows whole, and nothing else.
bool fills_whole_rows(const vexlor_context& ctx, const u8* row, u32 stride, u32 row_bytes)
{
    const uintptr_t places = reinterpret_cast<uintptr_t>(row) | stride | row_bytes;
    return (ctx.memset == vexlor_memset && places % 4 == 0) ||
           (ctx.memset == vexlor_memset_stream_sse && places % 16 == 0);
}

// Rows that touch are one.
void fill_whole_rows(u8* row, u32 stride, u32 row_bytes, i32 height, u32 color)
{
    const auto set_words = kernels().set_words;
    const u64 words = u64{row_bytes / 4} * static_cast<u32>(height);
    if (stride == row_bytes && words <= PTRDIFF_MAX / 4)
        return set_words(row, color, static_cast<size_t>(words));
    for (i32 i = 0; i < height; ++i, row = moved(row, stride))
        set_words(row, color, row_bytes / 4);
}

u32 fill_opaque(const vexlor_context& ctx, const vexlor_surface_desc& dst, i32 x, i32 y, i32 width,
                i32 height)
{
    const u32 bytes = bytes_per_pixel(dst.format);
    u32 color = ctx.color;
    if (bytes == 2)
        color = color << 16 | (color & 0xFFFF);
    u32 row_bytes = static_cast<u32>(width) * bytes;
    if (has_rgb32_bit(dst.format) && ctx.alpha_dst_op >= VEXLOR_ALPHA_DST_ONE) {
        if (ctx.alpha_dst_op > VEXLOR_ALPHA_DST_ONE)
            return VEXLOR_UNSUPPORTED_ALPHA;
        if (!is_rgb32(dst.format))
            return VEXLOR_UNSUPPORTED_FORMAT;
        color |= 0xFFu << vexlor_fmt_get_alpha_shift(dst.format);
        row_bytes = static_cast<u32>(width); // pixels taken for bytes: a quarter of each row is written
    }
    if (!ctx.memset)
        return VEXLOR_OK;
    u8* row = pixel_address(dst, x, y, bytes);
    if (fills_whole_rows(ctx, row, dst.stride, row_bytes)) {
        fill_whole_rows(row, dst.stride, row_bytes, height, color);
        return VEXLOR_OK;
    }
    for (i32 i = 0; i < height; ++i, row = moved(row, dst.stride))
        ctx.memset(row, color, row_bytes);
    return VEXLOR_OK;
}

u32 fill_blended(const vexlor_context& ctx, const vexlor_surface_desc& dst, i32 x, i32 y, i32 width,
                 i32 height)
{
    if (ctx.alpha_op != VEXLOR_ALPHA_OP_BLEND || ctx.alpha_src != VEXLOR_ALPHA_SRC_GLOBAL)
        return VEXLOR_UNSUPPORTED_FILL;
    if (!is_rgb32(dst.format))
        return VEXLOR_UNSUPPORTED_FORMAT;
    if (ctx.alpha_dst_op > VEXLOR_ALPHA_DST_ONE)
        return VEXLOR_UNSUPPORTED_ALPHA;
    if (const auto span = ctx.*blend_rows[ctx.alpha_dst_op])
        vexlor_2d_fill_blend_over_8888(&ctx, &dst, span, x, y, width, height);
    return VEXLOR_OK;
}

} // namespace

void vexlor_2d_fill_blend_over_8888(const vexlor_context* ctx, const vexlor_surface_desc* dst,
                                    vexlor_fill_blend_fn span, int32_t x, int32_t y, int32_t width,
                                    int32_t height)
{
    const u32 alpha_shift = vexlor_fmt_get_alpha_shift(dst->format);
    const u32 weight = factor(ctx->alpha_value);
    u32* row = pixel_address<u32>(*dst, x, y, bytes_per_pixel(dst->format));
    // Rows that touch are one, for the library's own routines.
    const bool own = span == vexlor_1d_fill_blend_over_8888 || span == vexlor_1d_fill_blend_over_aone_8888 ||
                     span == vexlor_1d_fill_blend_over_arepl_8888;
    if (own && width > 0 && height > 0 && u64{static_cast<u32>(width)} * 4 == dst->stride &&
        i64{width} * height <= INT32_MAX) {
        width *= height;
        height = 1;
    }
    for (i32 i = 0; i < height; ++i, row = moved(row, dst->stride))
        span(ctx->color, row, static_cast<u32>(width), weight, alpha_shift);
}

uint32_t vexlor_fill(const vexlor_context* ctx, const vexlor_surface_desc* dst, int32_t x, int32_t y,
                     int32_t width, int32_t height)
{
    if (!ctx || !dst)
        return VEXLOR_NULL_POINTER;
    if (x < 0 || y < 0 || width <= 0 || height <= 0)
        return VEXLOR_BAD_RECTANGLE;
    return ctx->alpha_op == VEXLOR_ALPHA_OP_NONE ? fill_opaque(*ctx, *dst, x, y, width, height)
                                                 : fill_blended(*ctx, *dst, x, y, width, height);
}

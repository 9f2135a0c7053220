// The copy entry: its checks, its tables, and the plain copy.
#include "copy/convert.h"
#include "isa/kernels.h"
#include "row/over.h"
#include "surface/formats.h"
#include "surface/rectangle.h"

#include <string.h>

using namespace vexlor;

namespace {

using SrcSlot = vexlor_copy_src_fn vexlor_context::*;
using GblSlot = vexlor_copy_gbl_fn vexlor_context::*;
using GblYuvSlot = vexlor_copy_gbl_yuv_fn vexlor_context::*;
using ConvertSlot = vexlor_convert_fn vexlor_context::*;

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
constexpr ConvertSlot converters[2][2] = {
//   X8R8G8B8, A8R8G8B8                                       B8G8R8X8, B8G8R8A8                                        source
    {&vexlor_context::Y8V8Y8U8_2_X8R8G8B8,                   &vexlor_context::Y8V8Y8U8_2_B8G8R8X8},                    // Y8V8Y8U8
    {&vexlor_context::U8Y8V8Y8_2_X8R8G8B8,                   &vexlor_context::U8Y8V8Y8_2_B8G8R8X8},                    // U8Y8V8Y8
};
constexpr GblYuvSlot gbl_yuv_rows[2][2] = {
//   X8R8G8B8, A8R8G8B8                                       B8G8R8X8, B8G8R8A8                                        source
    {&vexlor_context::copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8, &vexlor_context::copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8}, // Y8V8Y8U8
    {&vexlor_context::copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8, &vexlor_context::copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8}, // U8Y8V8Y8
};
// clang-format on

struct Copy {
    const vexlor_context& ctx;
    const vexlor_surface_desc& src;
    const vexlor_surface_desc& dst;
    Rect from, to;
    i32 rows; // to draw: none when the rectangle's sums wrapped or the pixels differ in size

    bool equivalent() const { return vexlor_fmt_is_equiv(src.format, dst.format); }
    bool convertible() const { return vexlor_surface_is_convertible(&src, from.w, from.h, &dst, to.w, to.h); }
    bool overlapping() const { return overlap(from, src, to, dst); }
};

// Rows of bytes from one place to another. The word copy moves a row of 4 k + r bytes as 4 k + 2 r, and
// callers rely on the pixel that it carries along; but not where that lies behind the last byte of a surface.
struct RowCopy {
    vexlor_memcpy_fn copy;
    u32 bytes;
    const u8* src_end;
    const u8* dst_end;

    void operator()(u8* dst, const u8* src) const
    {
        const u32 rest = bytes % 4;
        const uintptr_t touched = uintptr_t{bytes} + rest;
        if (moved(src, touched) <= src_end && moved(dst, touched) <= dst_end)
            return copy(dst, src, bytes);
        const u32 whole = bytes - rest;
        copy(dst, src, whole);
        memmove(dst + whole, src + whole, rest);
    }
};

// Copies rows that the library's own routines would copy whole and in no order that matters, in the fastest way: rows
// that touch are one, and pictures larger than most caches go past them. False when they are no such rows.
bool copy_whole_rows(const Copy& c, const u8* src, u8* dst, u32 row_bytes)
{
    const bool own =
        c.ctx.memcpy_stream == vexlor_memcpy_x86 || c.ctx.memcpy_stream == vexlor_memcpy_stream_sse;
    if (!own || row_bytes % 4 != 0 || c.rows == 0)
        return false;
    const u64 rows_below = static_cast<u32>(c.rows) - 1;
    const u64 src_bytes = rows_below * c.src.stride + row_bytes,
              dst_bytes = rows_below * c.dst.stride + row_bytes;
    if (src_bytes > PTRDIFF_MAX || dst_bytes > PTRDIFF_MAX || !are_apart(src, src_bytes, dst, dst_bytes))
        return false;
    const bool touch = c.src.stride == row_bytes && c.dst.stride == row_bytes;
    const auto bytes = static_cast<size_t>(touch ? dst_bytes : row_bytes);
    const u32 rows = touch ? 1 : static_cast<u32>(c.rows);
    if (u64{bytes} * rows >= larger_than_caches)
        kernels().copy_rows_streaming(dst, c.dst.stride, src, c.src.stride, bytes, rows);
    else
        for (u32 i = 0; i < rows; ++i, src = moved(src, c.src.stride), dst = moved(dst, c.dst.stride))
            memcpy(dst, src, bytes);
    return true;
}

void walk_down(const Copy& c, const u8* src, u8* dst, auto row)
{
    for (i32 i = 0; i < c.rows; ++i, src = moved(src, c.src.stride), dst = moved(dst, c.dst.stride))
        row(dst, src);
}

void walk_up(const Copy& c, const u8* src, u8* dst, auto row)
{
    for (i32 i = c.rows - 1; i >= 0; --i)
        row(moved(dst, bytes_of(i, c.dst.stride)), moved(src, bytes_of(i, c.src.stride)));
}

u32 copy_plain(const Copy& c)
{
    if (!c.convertible())
        return VEXLOR_NOT_CONVERTIBLE;
    const u32 src_bytes = bytes_per_pixel(c.src.format);
    const u32 dst_bytes = bytes_per_pixel(c.dst.format);
    const auto width = static_cast<u32>(c.from.w);
    const u32 row_bytes = width * src_bytes;
    if (row_bytes > c.src.stride || width * dst_bytes > c.dst.stride)
        return VEXLOR_STRIDE_TOO_SHORT;
    const u8* src = pixel_address(c.src, c.from.x, c.from.y, src_bytes);
    u8* dst = pixel_address(c.dst, c.to.x, c.to.y, dst_bytes);

    if (!c.equivalent()) {
        if (const auto convert = c.ctx.*of_pair(converters, c.src.format, c.dst.format))
            convert_rows(src, c.src.stride, dst, c.dst.stride, c.from.w, c.rows, convert);
        return VEXLOR_OK;
    }
    if (has_rgb32_bit(c.dst.format) && c.ctx.alpha_dst_op >= VEXLOR_ALPHA_DST_ONE) {
        if (c.ctx.alpha_dst_op > VEXLOR_ALPHA_DST_ONE)
            return VEXLOR_UNSUPPORTED_ALPHA;
        if (!is_rgb32(c.dst.format))
            return VEXLOR_UNSUPPORTED_FORMAT;
        // Top down whatever overlaps: rows may be overwritten before they are read.
        if (const auto row = c.ctx.copy_opaque_aone_8888)
            walk_down(c, src, dst, [&, shift = vexlor_fmt_get_alpha_shift(c.dst.format)](u8* d, const u8* s) {
                row(reinterpret_cast<const u32*>(s), reinterpret_cast<u32*>(d), width, shift);
            });
        return VEXLOR_OK;
    }
    if (copy_whole_rows(c, src, dst, row_bytes))
        return VEXLOR_OK;
    const bool overlapping = c.overlapping();
    if (overlapping && c.from.y == c.to.y) {
        if (const auto move = c.ctx.memmove_stream)
            walk_down(c, src, dst, [&](u8* d, const u8* s) { move(d, s, row_bytes); });
    } else if (const auto copy = c.ctx.memcpy_stream) {
        const RowCopy row{copy, row_bytes, end_of(c.src), end_of(c.dst)};
        if (overlapping && c.from.y < c.to.y)
            walk_up(c, src, dst, row);
        else
            walk_down(c, src, dst, row);
    }
    return VEXLOR_OK;
}

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

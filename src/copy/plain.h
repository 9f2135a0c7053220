// Copies without blending: of pixels as they are, converted between YUV and RGB, or with an opaque alpha.
#pragma once

#include "copy/convert.h"
#include "isa/caches.h"
#include "isa/kernels.h"
#include "surface/formats.h"

#include <string.h>

namespace vexlor {
namespace {

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

using ConvertSlot = vexlor_convert_fn vexlor_context::*;

// clang-format off
constexpr ConvertSlot converters[2][2] = {
//   X8R8G8B8, A8R8G8B8                                       B8G8R8X8, B8G8R8A8                                        source
    {&vexlor_context::Y8V8Y8U8_2_X8R8G8B8,                   &vexlor_context::Y8V8Y8U8_2_B8G8R8X8},                    // Y8V8Y8U8
    {&vexlor_context::U8Y8V8Y8_2_X8R8G8B8,                   &vexlor_context::U8Y8V8Y8_2_B8G8R8X8},                    // U8Y8V8Y8
};
// clang-format on

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

// The rows of a rectangle where they may be drawn whole and in any order, and none where the surfaces overlap. Rows that
// touch are one.
struct Runs {
    size_t bytes = 0;
    i32 rows = 0;

    Runs(const Copy& c, const u8* src, const u8* dst, u32 row_bytes)
    {
        if (c.rows == 0)
            return;
        const u64 rows_below = static_cast<u32>(c.rows) - 1;
        const u64 src_bytes = rows_below * c.src.stride + row_bytes,
                  dst_bytes = rows_below * c.dst.stride + row_bytes;
        if (src_bytes > PTRDIFF_MAX || dst_bytes > PTRDIFF_MAX || !are_apart(src, src_bytes, dst, dst_bytes))
            return;
        const bool touch = c.src.stride == row_bytes && c.dst.stride == row_bytes;
        bytes = static_cast<size_t>(touch ? dst_bytes : row_bytes);
        rows = touch ? 1 : c.rows;
    }
    u64 written() const { return u64{bytes} * static_cast<u32>(rows); }
};

inline void walk_down(const Copy& c, i32 rows, const u8* src, u8* dst, auto row)
{
    for (i32 i = 0; i < rows; ++i, src = moved(src, c.src.stride), dst = moved(dst, c.dst.stride))
        row(dst, src);
}

// Copies rows that the library's own routines would copy whole and in no order that matters, in the fastest way: pictures
// larger than most caches go past them. False when they are no such rows.
inline bool copy_whole_rows(const Copy& c, const u8* src, u8* dst, u32 row_bytes)
{
    const bool own =
        c.ctx.memcpy_stream == vexlor_memcpy_x86 || c.ctx.memcpy_stream == vexlor_memcpy_stream_sse;
    if (!own || row_bytes % 4 != 0)
        return false;
    const Runs runs(c, src, dst, row_bytes);
    if (fills_caches(runs.written())) {
        const Kernels& set = kernels();
        walk_down(c, runs.rows, src, dst, [&](u8* d, const u8* s) { set.stream_row(d, s, runs.bytes); });
        set.end_streaming();
    } else
        walk_down(c, runs.rows, src, dst, [&](u8* d, const u8* s) { memcpy(d, s, runs.bytes); });
    return runs.rows != 0;
}

inline void walk_up(const Copy& c, const u8* src, u8* dst, auto row)
{
    for (i32 i = c.rows - 1; i >= 0; --i)
        row(moved(dst, bytes_of(i, c.dst.stride)), moved(src, bytes_of(i, c.src.stride)));
}

inline void copy_opaque(const Copy& c, const u8* src, u8* dst, u32 width)
{
    const auto row = c.ctx.copy_opaque_aone_8888;
    const u32 shift = vexlor_fmt_get_alpha_shift(c.dst.format);
    if (row == vexlor_1d_copy_opaque_aone_8888) {
        const Runs runs(c, src, dst, width * 4);
        if (fills_caches(runs.written())) {
            const Kernels& set = kernels();
            walk_down(c, runs.rows, src, dst,
                      [&](u8* d, const u8* s) { set.stream_opaque_row(d, s, runs.bytes, shift); });
            return set.end_streaming();
        }
        if (runs.rows == 1)
            return row(reinterpret_cast<const u32*>(src), reinterpret_cast<u32*>(dst),
                       static_cast<u32>(runs.bytes / 4), shift);
    }
    // Top down whatever overlaps: rows may be overwritten before they are read.
    walk_down(c, c.rows, src, dst, [=](u8* d, const u8* s) {
        row(reinterpret_cast<const u32*>(s), reinterpret_cast<u32*>(d), width, shift);
    });
}

inline u32 copy_plain(const Copy& c)
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
        if (c.ctx.copy_opaque_aone_8888)
            copy_opaque(c, src, dst, width);
        return VEXLOR_OK;
    }
    if (copy_whole_rows(c, src, dst, row_bytes))
        return VEXLOR_OK;
    const bool overlapping = c.overlapping();
    if (overlapping && c.from.y == c.to.y) {
        if (const auto move = c.ctx.memmove_stream)
            walk_down(c, c.rows, src, dst, [&](u8* d, const u8* s) { move(d, s, row_bytes); });
    } else if (const auto copy = c.ctx.memcpy_stream) {
        const RowCopy row{copy, row_bytes, end_of(c.src), end_of(c.dst)};
        if (overlapping && c.from.y < c.to.y)
            walk_up(c, src, dst, row);
        else
            walk_down(c, c.rows, src, dst, row);
    }
    return VEXLOR_OK;
}

} // namespace
} // namespace vexlor

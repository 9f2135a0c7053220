// Opaque scaling by the nearest sample. Every destination row is one span call, or a copy of the row above
// when both come from the same source row, or drawn with it.
#include "scale/plain_rows.h"

#include <string.h>

using namespace vexlor;

namespace {

// How a pair of formats is walked: in units of pixels, or of pixel pairs for YUV sources.
struct Walk {
    vexlor_scale_span_fn span;
    u32 count;             // destination units per span call
    i32 step;              // source units per destination unit, 16.16
    uintptr_t from_offset; // bytes from a source row's start to the rectangle
    uintptr_t to_offset;   // bytes from a destination row's start to the rectangle
    u32 drawn_bytes;       // of a destination row
    u32 repeated_bytes;    // of one that is copied from the row above: more where other pixels come along
};

// The copy may run on behind the rectangle, into the following rows too, but not behind the surface's last
// byte.
void repeat_row(const Scale& s, u8* dst, u32 bytes)
{
    const auto owned = static_cast<u64>(end_of(s.dst) - dst);
    const auto copied = static_cast<u32>(bytes < owned ? bytes : owned);
    const u32 rest = copied % 4;
    const u32 words = copied - rest;
    const u8* const above = moved(dst, bytes_of(-1, s.dst.stride));
    // The row above was written a moment ago: stores past the cache would only wait. Both copies go forwards; where they run
    // on into the rows behind, they leave the same bytes as long as the stride is no shorter than a block.
    constexpr u32 longest_block = 64;
    const u32 stride = s.dst.stride;
    const bool streams =
        s.ctx.memcpy_stream == vexlor_memcpy_stream_sse && (stride >= longest_block || words <= stride);
    (streams ? vexlor_memcpy_x86 : s.ctx.memcpy_stream)(dst, above, words);
    memmove(dst + words, above + words, rest);
}

// A rectangle of one pixel at the right edge of a YUV surface of odd width samples half a pair.
bool samples_half_a_pair(const Scale& s)
{
    return is_yuv(s.src.format) && s.from.w == 1 && s.from.x % 2 == 0 && s.from.x == s.src.width - 1;
}

// At the surface's end the other half reads as the half before it.
class SampledRow {
public:
    SampledRow(const Scale& s, const u8* at) : row(at)
    {
        if (!samples_half_a_pair(s) || moved(at, 4) <= end_of(s.src))
            return;
        const auto half = load<u16>(at);
        pair = u32{half} << 16 | half;
        row = &pair;
    }
    SampledRow(const SampledRow&) = delete;
    SampledRow& operator=(const SampledRow&) = delete;
    const void* data() const { return row; }

private:
    const void* row;
    u32 pair = 0;
};

// Whether repeated rows need not be copied from the one above, for their pixels are the same: the routines are the library's
// own, rows do not run on into each other, and none is written over one that is still to be read.
bool repeats_freely(const Scale& s, const Walk& walk)
{
    const auto extent = [](const vexlor_surface_desc& surface) {
        return static_cast<u64>(end_of(surface) - surface.pixels);
    };
    return walk.repeated_bytes == walk.drawn_bytes && s.dst.stride >= walk.drawn_bytes &&
           (s.ctx.memcpy_stream == vexlor_memcpy_stream_sse || s.ctx.memcpy_stream == vexlor_memcpy_x86) &&
           are_apart(s.src.pixels, extent(s.src), s.dst.pixels, extent(s.dst));
}

// All rows that come from one source row at once, where rows repeat freely: copies would read what still waits to be written.
void draw_rows_at_once(const Scale& s, const Walk& walk, i32 ystep, u8* dst)
{
    const auto span_rows = kernels().scale_opaque_nofilt_32_rows;
    for (i32 i = 0, rows = 1; i < s.to.h; i += rows, dst = moved(dst, bytes_of(rows, s.dst.stride))) {
        const i64 y = nearest_row(s, ystep, i);
        rows = 1;
        while (i + rows < s.to.h && nearest_row(s, ystep, i + rows) == y)
            ++rows;
        span_rows(moved(s.src.pixels, bytes_of(y, s.src.stride) + walk.from_offset), dst, s.dst.stride,
                  static_cast<u32>(rows), walk.count, walk.step >> 1, walk.step);
    }
}

u32 draw(const Scale& s, const Walk& walk)
{
    if (!s.ctx.memcpy_stream)
        return VEXLOR_OK;
    const i32 ystep = step_of(s.from.h, s.to.h);
    // Elsewhere the other half is what follows in memory, which may be the row below, and the call may write it: units then
    // see those before them.
    const bool one_by_one = samples_half_a_pair(s);
    const bool freely = repeats_freely(s, walk);
    const PlainRows rows(walk.drawn_bytes, freely && drawing_fills_caches(s));
    const u8* previous = nullptr;
    u8* dst = moved(s.dst.pixels, bytes_of(s.to.y, s.dst.stride) + walk.to_offset);
    // Single rows among several at once would take longer than by themselves.
    const bool enlarged_twice = ystep <= 0x8000;
    if (freely && enlarged_twice && !rows.are_streamed() && !one_by_one &&
        walk.span == kernels().scale_opaque_nofilt_32) {
        draw_rows_at_once(s, walk, ystep, dst);
        return VEXLOR_OK;
    }
    for (i32 i = 0; i < s.to.h; ++i, dst = moved(dst, s.dst.stride)) {
        const i64 y = nearest_row(s, ystep, i);
        const u8* const src = moved(s.src.pixels, bytes_of(y, s.src.stride));
        if (src == previous) {
            rows.repeat(dst, [&] { repeat_row(s, dst, walk.repeated_bytes); });
            continue;
        }
        previous = src;
        const SampledRow row(s, moved(src, walk.from_offset));
        rows(dst, [&](u8* to) {
            if (one_by_one)
                for (u32 k = 0; k < walk.count; ++k)
                    walk.span(row.data(), moved(to, bytes_of(k, 4)), s.dst.format, 1, 0, 0);
            else
                walk.span(row.data(), to, s.dst.format, walk.count, walk.step >> 1, walk.step);
        });
    }
    return VEXLOR_OK;
}

u32 scale_pixels(const Scale& s, u32 bytes, vexlor_scale_span_fn span)
{
    if (!s.has_pixels())
        return VEXLOR_OK;
    // Always four bytes per pixel: a repeated row of 565 is copied twice as far as the rectangle is wide, and
    // brings the pixels beside it along.
    const auto width = static_cast<u32>(s.to.w);
    return draw(s, {span, width, step_of(s.from.w, s.to.w), bytes_of(s.from.x, bytes),
                    bytes_of(s.to.x, bytes), width * bytes, width * 4});
}

u32 scale_pairs(const Scale& s)
{
    if (s.to.w == 1)
        return VEXLOR_BAD_RECTANGLE; // no pair to write
    if (!s.has_pixels())
        return VEXLOR_OK;
    const auto pairs = static_cast<u32>(s.to.w / 2);
    return draw(s, {kernels().scale_opaque_nofilt_32, pairs, step_of(s.from.w / 2, s.to.w / 2),
                    bytes_of(s.from.x / 2, 4), bytes_of(s.to.x / 2, 4), pairs * 4, pairs * 4});
}

// Pairs into pixels. Both sides count pairs, so the step of the pixels serves; the pair that holds the
// rectangle's first pixel comes first.
u32 scale_yuv_to_rgb(const Scale& s)
{
    // clang-format off
    static constexpr vexlor_scale_span_fn spans[2][2] = {
    //   X8R8G8B8, A8R8G8B8                                  B8G8R8X8, B8G8R8A8                                    source
        {vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8, vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8}, // Y8V8Y8U8
        {vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8, vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8}, // U8Y8V8Y8
    };
    // clang-format on
    if (!s.has_pixels())
        return VEXLOR_OK;
    const auto width = static_cast<u32>(s.to.w);
    return draw(s, {of_pair(spans, s.src.format, s.dst.format), width, step_of(s.from.w, s.to.w),
                    bytes_of(s.from.x / 2, 4), bytes_of(s.to.x, 4), width / 2 * 8, width * 4});
}

u32 scale(const Scale& s)
{
    if (!s.convertible())
        return VEXLOR_NOT_CONVERTIBLE;
    if (!s.equivalent())
        return scale_yuv_to_rgb(s);
    if (s.src.format == VEXLOR_FMT_565)
        return scale_pixels(s, 2, kernels().scale_opaque_nofilt_565);
    if (is_yuv(s.src.format))
        return scale_pairs(s);
    if (!is_rgb32(s.src.format))
        return VEXLOR_UNSUPPORTED_FORMAT;
    switch (s.ctx.alpha_dst_op) {
    case VEXLOR_ALPHA_DST_BLEND:
    case VEXLOR_ALPHA_DST_REPLACE: return scale_pixels(s, 4, kernels().scale_opaque_nofilt_32);
    case VEXLOR_ALPHA_DST_ONE: return scale_pixels(s, 4, kernels().scale_opaque_nofilt_aone_8888);
    default: return VEXLOR_UNSUPPORTED_ALPHA;
    }
}

} // namespace

uint32_t vexlor_scale_opaque_nofilter(vexlor_context* ctx, const vexlor_surface_desc* src,
                                      const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t sw,
                                      int32_t sh, int32_t dx, int32_t dy, int32_t dw, int32_t dh)
{
    return scale({*ctx, *src, *dst, {sx, sy, sw, sh}, {dx, dy, dw, dh}});
}

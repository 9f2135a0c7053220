// Scaling blended over the destination by the scaled pixel's own alpha, unfiltered and filtered. No row is
// reused: what a row becomes depends on the destination row that it lands on.
#include "row/over.h"
#include "scale/filtered.h"

using namespace vexlor;

namespace {

// clang-format off
constexpr vexlor_scale_span_fn spans[3][2] = {
//   alpha_mode 0                                         alpha_mode 1                                               alpha_dst_op
    {vexlor_1d_scale_blend_over_src_nofilt_8888,         vexlor_1d_scale_blend_over_src_nofilt_8888_pre},         // 0
    {vexlor_1d_scale_blend_over_src_nofilt_arepl_8888,   vexlor_1d_scale_blend_over_src_nofilt_arepl_8888_pre},   // 1
    {vexlor_1d_scale_blend_over_src_nofilt_aone_8888,    vexlor_1d_scale_blend_over_src_nofilt_aone_8888_pre},    // 2
};
// clang-format on

// The two scalers test the depth and the alpha bit in different orders: 565 gets another code from each.
u32 check_unfiltered(const Scale& s)
{
    if (!s.equivalent())
        return VEXLOR_NOT_CONVERTIBLE;
    if (bits_per_pixel(s.src.format) != 32)
        return VEXLOR_UNSUPPORTED_FORMAT;
    if (!has_alpha(s.src.format))
        return VEXLOR_NO_SOURCE_ALPHA;
    if (!is_rgb32(s.src.format))
        return VEXLOR_UNSUPPORTED_FORMAT;
    return indexes_blend_tables(s.ctx) ? VEXLOR_OK : VEXLOR_UNSUPPORTED_ALPHA;
}

u32 check_filtered(const Scale& s)
{
    if (!s.equivalent())
        return VEXLOR_NOT_CONVERTIBLE;
    if (!has_alpha(s.src.format))
        return VEXLOR_NO_SOURCE_ALPHA;
    if (!is_rgb32(s.src.format))
        return VEXLOR_UNSUPPORTED_FORMAT;
    return indexes_blend_tables(s.ctx) ? VEXLOR_OK : VEXLOR_UNSUPPORTED_ALPHA;
}

void draw_unfiltered(const Scale& s)
{
    const auto span = spans[s.ctx.alpha_dst_op][s.ctx.alpha_mode];
    const i32 xstep = step_of(s.from.w, s.to.w);
    const i32 ystep = step_of(s.from.h, s.to.h);
    u8* dst = pixel_address(s.dst, s.to.x, s.to.y, 4);
    for (i32 i = 0; i < s.to.h; ++i, dst = moved(dst, s.dst.stride)) {
        const i64 y = nearest_row(s, ystep, i);
        span(pixel_address(s.src, s.from.x, y, 4), dst, s.dst.format, static_cast<u32>(s.to.w), xstep >> 1,
             xstep);
    }
}

void draw_filtered(const Scale& s)
{
    const auto filter = vexlor_scale_choose_filter_8888(&s.ctx, s.from.w, s.from.h, s.to.w, s.to.h);
    const auto lerp = vexlor_choose_1d_lerp_8888(&s.ctx);
    const u32 src_shift = vexlor_fmt_get_alpha_shift(s.src.format);
    const u32 dst_shift = vexlor_fmt_get_alpha_shift(s.dst.format);
    const Buffer row(row_bytes_32(s));
    if (!row)
        return;
    filter_rows(s, filter, [&](const FilteredRow& filtered, u8* dst) {
        filtered.into(row.at());
        lerp(reinterpret_cast<u32*>(dst), row.at<u32>(), static_cast<u32>(s.to.w), src_shift, dst_shift);
    });
}

} // namespace

uint32_t vexlor_scale_blend_over_src_nofilter(vexlor_context* ctx, const vexlor_surface_desc* src,
                                              const vexlor_surface_desc* dst, int32_t sx, int32_t sy,
                                              int32_t sw, int32_t sh, int32_t dx, int32_t dy, int32_t dw,
                                              int32_t dh)
{
    const Scale s{*ctx, *src, *dst, {sx, sy, sw, sh}, {dx, dy, dw, dh}};
    const u32 result = check_unfiltered(s);
    if (result == VEXLOR_OK && s.has_pixels())
        draw_unfiltered(s);
    return result;
}

uint32_t vexlor_scale_blend_over_src_filter(vexlor_context* ctx, const vexlor_surface_desc* src,
                                            const vexlor_surface_desc* dst, int32_t sx, int32_t sy,
                                            int32_t sw, int32_t sh, int32_t dx, int32_t dy, int32_t dw,
                                            int32_t dh)
{
    const Scale s{*ctx, *src, *dst, {sx, sy, sw, sh}, {dx, dy, dw, dh}};
    const u32 result = check_filtered(s);
    if (result == VEXLOR_OK && s.has_pixels())
        draw_filtered(s);
    return result;
}

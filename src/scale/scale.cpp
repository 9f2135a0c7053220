// The scale entry: its checks, and the choice of one of four drivers.
#include "scale/scale.h"

using namespace vexlor;

namespace {

using Driver = decltype(vexlor_scale)*;
constexpr Driver drivers[2][2] = {
    // filter 0                             any other filter
    {vexlor_scale_opaque_nofilter, vexlor_scale_opaque_filter},
    {vexlor_scale_blend_over_src_nofilter, vexlor_scale_blend_over_src_filter}, // alpha_op 2, alpha_src 1
};

} // namespace

uint32_t vexlor_scale(vexlor_context* ctx, const vexlor_surface_desc* src, const vexlor_surface_desc* dst,
                      int32_t sx, int32_t sy, int32_t sw, int32_t sh, int32_t dx, int32_t dy, int32_t dw,
                      int32_t dh)
{
    if (!ctx || !src || !dst)
        return VEXLOR_NULL_POINTER;
    const Rect from{sx, sy, sw, sh};
    const Rect to{dx, dy, dw, dh};
    if (!is_inside(from, *src) || !is_inside(to, *dst))
        return VEXLOR_BAD_RECTANGLE;
    if (overlap(from, *src, to, *dst))
        return VEXLOR_OVERLAP;
    if (ctx->alpha_op > VEXLOR_ALPHA_OP_BLEND)
        return VEXLOR_UNSUPPORTED_ALPHA;
    const bool blended = ctx->alpha_op == VEXLOR_ALPHA_OP_BLEND && ctx->alpha_src != VEXLOR_ALPHA_SRC_GLOBAL;
    if (blended && ctx->alpha_src != VEXLOR_ALPHA_SRC_PIXEL)
        return VEXLOR_UNSUPPORTED_ALPHA;
    const bool filtered = ctx->filter != VEXLOR_FILTER_NONE;
    return drivers[blended][filtered](ctx, src, dst, sx, sy, sw, sh, dx, dy, dw, dh);
}

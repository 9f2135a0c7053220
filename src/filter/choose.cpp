// Which filter serves a scale ratio.
#include "base.h"

using namespace vexlor;

namespace {

// A ratio of exactly 1 is not enlarged. The shift wraps for lengths from 32768 on, and the choice with it.
bool is_enlarged(i32 from, i32 to) { return static_cast<i32>(static_cast<u32>(to) << 16) / from > 0x10000; }

// clang-format off
constexpr vexlor_filter_fn filters_8888[2][2][2] = {
//    y kept or reduced                      y enlarged                               filter, x
    {{vexlor_filter_xmean_ymean_8888,       vexlor_filter_xmean_ylinear_8888},     // mean, kept or reduced
     {vexlor_filter_xlinear_ymean_8888,     vexlor_filter_xlinear_ylinear_8888}},  // mean, enlarged
    {{vexlor_filter_xgauss_ygauss_8888,     vexlor_filter_xgauss_ycatrom_8888},    // Catmull-Rom, kept or reduced
     {vexlor_filter_xcatrom_ygauss_8888,    vexlor_filter_xcatrom_ycatrom_8888}},  // Catmull-Rom, enlarged
};
constexpr vexlor_filter_fn filters_565[2][2][2] = {
    {{vexlor_filter_xmean_ymean_565,        vexlor_filter_xmean_ylinear_565},
     {vexlor_filter_xlinear_ymean_565,      vexlor_filter_xlinear_ylinear_565}},
    {{vexlor_filter_xgauss_ygauss_565,      vexlor_filter_xgauss_ycatrom_565},
     {vexlor_filter_xcatrom_ygauss_565,     vexlor_filter_xcatrom_ycatrom_565}},
};
// clang-format on

vexlor_filter_fn choose(const vexlor_filter_fn (&filters)[2][2][2], const vexlor_context& ctx, i32 sw, i32 sh,
                        i32 dw, i32 dh)
{
    return filters[ctx.filter == VEXLOR_FILTER_CATROM][is_enlarged(sw, dw)][is_enlarged(sh, dh)];
}

} // namespace

vexlor_filter_fn vexlor_scale_choose_filter_8888(const vexlor_context* ctx, int32_t sw, int32_t sh,
                                                 int32_t dw, int32_t dh)
{
    return choose(filters_8888, *ctx, sw, sh, dw, dh);
}

vexlor_filter_fn vexlor_scale_choose_filter_565(const vexlor_context* ctx, int32_t sw, int32_t sh, int32_t dw,
                                                int32_t dh)
{
    return choose(filters_565, *ctx, sw, sh, dw, dh);
}

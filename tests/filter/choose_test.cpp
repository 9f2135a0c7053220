// Which filter belongs to a filter value and the lengths of both axes.
#include "support/recorder.h"
#include <gtest/gtest.h>

// clang-format off
constexpr vexlor_filter_fn filters[2][2][2][2] = {
//     y kept                             y enlarged
    {{{vexlor_filter_xmean_ymean_8888,    vexlor_filter_xmean_ylinear_8888},
      {vexlor_filter_xlinear_ymean_8888,  vexlor_filter_xlinear_ylinear_8888}},  // x enlarged
     {{vexlor_filter_xgauss_ygauss_8888,  vexlor_filter_xgauss_ycatrom_8888},
      {vexlor_filter_xcatrom_ygauss_8888, vexlor_filter_xcatrom_ycatrom_8888}}},
    {{{vexlor_filter_xmean_ymean_565,     vexlor_filter_xmean_ylinear_565},
      {vexlor_filter_xlinear_ymean_565,   vexlor_filter_xlinear_ylinear_565}},
     {{vexlor_filter_xgauss_ygauss_565,   vexlor_filter_xgauss_ycatrom_565},
      {vexlor_filter_xcatrom_ygauss_565,  vexlor_filter_xcatrom_ycatrom_565}}},
};
// clang-format on

constexpr struct {
    int32_t from, to;
    bool enlarged;
} axes[] = {
    {1, 1, false},        {100, 101, true},      {101, 100, false}, {1, 32767, true},
    {32766, 32767, true}, {32767, 32766, false}, {1, 32768, false}, {1, 65536, false},
    {1, 65537, false},    {1, 65538, true},      {1, 98304, false}, {0x7FFFFFFF, 2, false},
};

TEST(ChooseFilter, GoesByValueAndRatios)
{
    const Context ctx = make_context();
    for (uint32_t filter : {0u, 1u, 2u, 3u, 0x80000002u})
        for (const auto& x : axes)
            for (const auto& y : axes) {
                vexlor_context_set_filter(ctx.get(), filter);
                EXPECT_EQ(vexlor_scale_choose_filter_8888(ctx.get(), x.from, y.from, x.to, y.to),
                          filters[0][filter == 2][x.enlarged][y.enlarged])
                    << filter << ": " << x.from << 'x' << y.from << " -> " << x.to << 'x' << y.to;
                EXPECT_EQ(vexlor_scale_choose_filter_565(ctx.get(), x.from, y.from, x.to, y.to),
                          filters[1][filter == 2][x.enlarged][y.enlarged])
                    << filter << ": " << x.from << 'x' << y.from << " -> " << x.to << 'x' << y.to;
            }
}

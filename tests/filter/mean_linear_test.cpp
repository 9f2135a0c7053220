// Box and linear filters called directly.
#include "support/filter_check.h"

namespace {

using enum model::Kernel;
using Words = std::vector<uint32_t>;
using Halves = std::vector<uint16_t>;

constexpr FilterCase filters[] = {
    {vexlor_filter_xmean_ymean_8888, mean, mean, 4},
    {vexlor_filter_xmean_ylinear_8888, mean, linear, 4},
    {vexlor_filter_xlinear_ymean_8888, linear, mean, 4},
    {vexlor_filter_xlinear_ylinear_8888, linear, linear, 4},
    {vexlor_filter_xmean_ymean_565, mean, mean, 2},
    {vexlor_filter_xmean_ylinear_565, mean, linear, 2},
    {vexlor_filter_xlinear_ymean_565, linear, mean, 2},
    {vexlor_filter_xlinear_ylinear_565, linear, linear, 2},
};

} // namespace

TEST(MeanLinear, EqualTheModel) { check_filters(filters, 6000 / VEXLOR_TEST_STEP); }

// Two pixels without a row below them.
TEST(MeanLinear, MeansDarken)
{
    const Words words[] = {
        {0x01010101, 0x01010101, 0}, {0xFF000000, 0x00FF00FF, 0x7E7E007E}, {~0u, ~0u, 0xFDFDFDFD}};
    for (const Words& w : words)
        EXPECT_EQ(filtered(vexlor_filter_xmean_ylinear_8888, w, 2, 1, 1, 1, 0x20000), Words{w[2]});
    const Halves halves[] = {{0x0821, 0x0821, 0x0000}, {0xF800, 0xF800, 0xE800}, {0x001F, 0x001F, 0x001D},
                             {0x07E0, 0x07E0, 0x07A0}, {0x1234, 0xABCD, 0x52CF}, {0xFFFF, 0xFFFF, 0xEFBD}};
    for (const Halves& h : halves)
        EXPECT_EQ(filtered(vexlor_filter_xmean_ylinear_565, h, 2, 1, 1, 1, 0x20000), Halves{h[2]});
}

// Only the 32-bit box in both directions asks for the lower right pixel on its own.
TEST(MeanLinear, LowerRightPixelMayBeMissing)
{
    const Words words{0, ~0u, 0, 0};
    EXPECT_EQ(filtered(vexlor_filter_xmean_ymean_8888, words, 2, 2, 1, 1, 0x10000), Words{0x7D7D7D7D});
    EXPECT_EQ(filtered(vexlor_filter_xmean_ylinear_8888, words, 2, 2, 1, 1, 0x10000, 0x8000),
              Words{0x3E3E3E3E});
    EXPECT_EQ(filtered(vexlor_filter_xmean_ymean_565, Halves{0, 0xFFFF, 0, 0}, 2, 2, 1, 1, 0x10000),
              Halves{0x31C6});
}

// Beyond the row's end the right tap stays and the left one does not: the slope turns round.
TEST(MeanLinear, LeftLinearTapGoesOn)
{
    const Words row{0x00000000, 0x64646464, 0xC8C8C8C8};
    EXPECT_EQ(filtered(vexlor_filter_xlinear_ylinear_8888, row, 3, 2, 1, 6, 0x8000),
              (Words{0x00000000, 0x32323232, 0x64646464, 0x64646464, 0xC8C8C8C8, 0x95959595}));
}

TEST(MeanLinear, WeightsOf565Overshoot)
{
    const struct {
        uint16_t to;
        int32_t fraction;
        uint16_t result;
    } cases[] = {
        {0x0800, 0x7F00, 0x2000}, {0x0800, 0x8000, 0x2000}, {0xFFFF, 0xFF00, 0xC798}, {0xFFFF, 0x00FF, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(filtered(vexlor_filter_xlinear_ylinear_565, Halves{0, 0, c.to}, 3, 2, 2, 2,
                           0x10000 + c.fraction)[1],
                  c.result);
}

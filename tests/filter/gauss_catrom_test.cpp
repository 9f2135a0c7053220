// Gaussian and Catmull-Rom filters called directly.
#include "support/filter_check.h"

namespace {

using enum model::Kernel;

constexpr FilterCase filters[] = {
    {vexlor_filter_xgauss_ygauss_8888, gauss, gauss, 4},
    {vexlor_filter_xgauss_ycatrom_8888, gauss, catrom, 4},
    {vexlor_filter_xcatrom_ygauss_8888, catrom, gauss, 4},
    {vexlor_filter_xcatrom_ycatrom_8888, catrom, catrom, 4},
    {vexlor_filter_xgauss_ygauss_565, gauss, gauss, 2},
    {vexlor_filter_xgauss_ycatrom_565, gauss, catrom, 2},
    {vexlor_filter_xcatrom_ygauss_565, catrom, gauss, 2},
    {vexlor_filter_xcatrom_ycatrom_565, catrom, catrom, 2},
};

// The pixel that lies `phase` behind the second of four. A stride of 0 makes one row stand for all.
uint32_t behind_second(vexlor_filter_fn filter, const std::vector<uint32_t>& row, uint32_t phase)
{
    return filtered(filter, row, 0, 3, 3, 2, static_cast<int32_t>(0x10000 + phase), phase)[1];
}

} // namespace

TEST(GaussCatrom, EqualTheModel) { check_filters(filters, 1500 / VEXLOR_TEST_STEP); }

TEST(GaussCatrom, KnownCurves)
{
    constexpr struct {
        uint32_t phase, slope, edge;
    } points[] = {{0x4000, 177, 221}, {0x8000, 123, 143}, {0xC000, 64, 57}, {0xFFFF, 30, 0}};
    for (const auto& p : points) {
        EXPECT_EQ(behind_second(vexlor_filter_xcatrom_ygauss_8888, {10, 200, 30, 90}, p.phase), p.slope);
        EXPECT_EQ(behind_second(vexlor_filter_xcatrom_ygauss_8888, {0, 255, 0, 0}, p.phase), p.edge);
    }
}

TEST(GaussCatrom, EqualTheModelInEveryPhase)
{
    Random random(52);
    std::vector<uint32_t> row(4);
    const model::Bytes bytes = [&](int64_t place) {
        return reinterpret_cast<const uint8_t*>(row.data())[place];
    };
    for (uint32_t phase = 0; phase < 0x10000; phase += VEXLOR_TEST_STEP) {
        random.fill(reinterpret_cast<uint8_t*>(row.data()), 16);
        for (const FilterCase& c : {filters[1], filters[2], filters[3]}) {
            vexlor_filter_params params{};
            params.xstep = static_cast<int32_t>(0x10000 + phase);
            params.ypos = phase;
            ASSERT_EQ(behind_second(c.filter, row, phase),
                      model::resample({c.x, c.y, 4, 0, 12, 0, 12, params}, bytes, 1))
                << "phase " << phase;
        }
    }
}

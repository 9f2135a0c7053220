// The drivers where callers use them directly: addresses, rows, and the two that look at their slot before each row.
#include "support/recorder.h"
#include <gtest/gtest.h>

namespace {

struct Drivers : testing::Test {
    // What arrives of a rectangle from (3, 1) to (5, 2), 7 wide.
    void expect_rows(int32_t rows, uint32_t src_bpp, uint32_t dst_bpp, const Call& extras)
    {
        std::vector<Call> expected;
        for (uint32_t row = 0; row < static_cast<uint32_t>(rows); ++row) {
            expected.push_back({number(memory) + 100 * (1 + row) + 3 * src_bpp,
                                number(memory) + 700 + 200 * (2 + row) + 5 * dst_bpp, 7});
            expected.back().insert(expected.back().end(), extras.begin(), extras.end());
        }
        EXPECT_EQ(calls, expected);
        calls.clear();
    }

    Context owner = make_context();
    vexlor_context* const ctx = owner.get();
    uint8_t memory[2000] = {};
    vexlor_surface_desc yuv{20, 6, 100, memory, VEXLOR_FMT_Y8V8Y8U8},
        argb{20, 6, 100, memory, VEXLOR_FMT_A8R8G8B8};
    vexlor_surface_desc narrow{20, 6, 200, memory + 700, VEXLOR_FMT_565},
        bgr{20, 6, 200, memory + 700, 0xA0000020};
};

} // namespace

TEST_F(Drivers, CallOnceARowAndAddressBothRowsByTheSourcesPixels)
{
    ctx->alpha_value = 255;
    ctx->alpha_test = 3;
    ctx->alpha_ref = 4;
    ctx->copy_test_8888 = recorder(ctx->copy_test_8888);
    ctx->copy_blend_over_gbl_565 = recorder(ctx->copy_blend_over_gbl_565);
    const auto src_row = recorder(ctx->copy_blend_over_src_8888);
    const auto gbl_row = recorder(ctx->copy_blend_over_gbl_8888);
    const auto yuv_row = recorder(ctx->copy_blend_over_gbl_Y8V8Y8U8);
    calls.clear();
    for (int32_t h : {0, 1, 3}) {
        vexlor_2d_copy_blend_over_src_8888(&argb, &narrow, src_row, 3, 1, 5, 2, 7, h);
        expect_rows(h, 4, 4, {0});
        vexlor_2d_copy_blend_over_gbl_8888(ctx, &argb, &narrow, gbl_row, 3, 1, 5, 2, 7, h);
        expect_rows(h, 4, 4, {256, 0});
        vexlor_2d_copy_test_8888(ctx, &argb, &narrow, 3, 1, 5, 2, 7, h);
        expect_rows(h, 4, 4, {3, 4, 0});
        vexlor_2d_copy_blend_over_gbl_565(ctx, &argb, &narrow, 3, 1, 5, 2, 7, h);
        expect_rows(h, 4, 4, {256});
        vexlor_2d_copy_blend_over_gbl_S32D32(ctx, &yuv, &bgr, yuv_row, 3, 1, 5, 2, 7, h); // each by its own
        expect_rows(h, 2, 4, {256});
    }
}

TEST_F(Drivers, StopWhenTheirSlotIsEmptiedOnTheWay)
{
    static vexlor_context* drawn;
    static int rows;
    drawn = ctx;
    rows = 0;
    ctx->copy_test_8888 = [](auto...) {
        drawn->copy_test_8888 = ++rows == 2 ? nullptr : drawn->copy_test_8888;
    };
    vexlor_2d_copy_test_8888(ctx, &argb, &argb, 0, 0, 0, 0, 7, 5);
    EXPECT_EQ(rows, 2);
    ctx->copy_blend_over_gbl_565 = [](auto...) {
        drawn->copy_blend_over_gbl_565 = ++rows == 4 ? nullptr : drawn->copy_blend_over_gbl_565;
    };
    vexlor_2d_copy_blend_over_gbl_565(ctx, &narrow, &narrow, 0, 0, 0, 0, 7, 5);
    EXPECT_EQ(rows, 4);
}

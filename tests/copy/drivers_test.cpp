// The drivers where callers use them directly: addresses, rows, and the two that look at their slot before each row.
#include "support/scene.h"

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

// Rows that touch in both surfaces are one row to the library's own routines. At any strides, those of other pixels and of
// rows that overlap too, the bytes are those of row after row.
TEST_F(Drivers, DrawRowAfterRowAtAnyStrides)
{
    constexpr int32_t h = 3;
    constexpr uint32_t g = 129;
    set_state(ctx, 2, 0, 1);
    ctx->alpha_ref = 100;
    ctx->alpha_test = 1;
    Random random(19);
    Arena source, target;
    for (uint32_t bytes = 0; bytes < 2 * 25; ++bytes)
        for (int driver = 0; driver < 5; ++driver) {
            const int32_t w = bytes < 25 ? 6 : 5; // a row of YUV that is odd leaves its last pixel
            const auto n = static_cast<uint32_t>(w);
            const uint32_t from = driver == 0 ? VEXLOR_FMT_565 : driver == 1 ? yuv.format : argb.format;
            const uint32_t to = driver == 0 ? from : argb.format;
            const vexlor_surface_desc src{w, h, n * (1 + bytes / 5 % 5), source.place(200, Side::begin, 0),
                                          from};
            const vexlor_surface_desc dst{w, h, n * (1 + bytes % 5), target.place(200, Side::begin, 0), to};
            source.randomize(random);
            target.randomize(random);
            for (uint32_t y = 0; y < h; ++y) {
                const uint8_t* const s = source.twin(src.pixels + y * src.stride);
                uint8_t* const d = target.twin(dst.pixels + y * dst.stride);
                const auto* const s32 = reinterpret_cast<const uint32_t*>(s);
                auto* const d32 = reinterpret_cast<uint32_t*>(d);
                if (driver == 0)
                    vexlor_1d_copy_blend_over_gbl_565(reinterpret_cast<const uint16_t*>(s),
                                                      reinterpret_cast<uint16_t*>(d), n, g);
                else if (driver == 1)
                    vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8(s, d, w, g);
                else if (driver == 2)
                    vexlor_1d_copy_blend_over_src_8888(s32, d32, n, 0);
                else if (driver == 3)
                    vexlor_1d_copy_blend_over_gbl_8888(s32, d32, n, g, 0);
                else
                    vexlor_1d_copy_test_8888(s32, d32, n, 1, 100, 0);
            }
            if (driver == 0)
                vexlor_2d_copy_blend_over_gbl_565(ctx, &src, &dst, 0, 0, 0, 0, w, h);
            else if (driver == 1)
                vexlor_2d_copy_blend_over_gbl_S32D32(
                    ctx, &src, &dst, vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8, 0, 0, 0, 0, w, h);
            else if (driver == 2)
                vexlor_2d_copy_blend_over_src_8888(&src, &dst, vexlor_1d_copy_blend_over_src_8888, 0, 0, 0, 0,
                                                   w, h);
            else if (driver == 3)
                vexlor_2d_copy_blend_over_gbl_8888(ctx, &src, &dst, vexlor_1d_copy_blend_over_gbl_8888, 0, 0,
                                                   0, 0, w, h);
            else
                vexlor_2d_copy_test_8888(ctx, &src, &dst, 0, 0, 0, 0, w, h);
            ASSERT_TRUE(target.same_as_twin(dst.pixels)) << "driver " << driver << ", strides " << bytes;
        }
}

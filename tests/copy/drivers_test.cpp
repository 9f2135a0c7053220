// The drivers where callers use them directly: addresses, rows, and the two that look at their slot before each row.
#include "support/arena.h"
#include "support/recorder.h"

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

// Rows that touch are drawn as one where the routine is the library's own. Random rectangles, also within one memory,
// against the same routines in disguise, which are called once a row.
TEST_F(Drivers, DrawAsRowByRow)
{
    Random random(25);
    Arena arena;
    const Context disguised = make_context();
    vexlor_context& d = *disguised;
    d.fill_blend_over_8888 = [](auto... a) { vexlor_1d_fill_blend_over_8888(a...); };
    d.copy_blend_over_src_pre_8888 = [](auto... a) { vexlor_1d_copy_blend_over_src_pre_8888(a...); };
    d.copy_blend_over_gbl_8888 = [](auto... a) { vexlor_1d_copy_blend_over_gbl_8888(a...); };
    d.copy_blend_over_gbl_565 = [](auto... a) { vexlor_1d_copy_blend_over_gbl_565(a...); };
    d.copy_test_8888 = [](auto... a) { vexlor_1d_copy_test_8888(a...); };
    d.copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8 = [](auto... a) {
        vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8(a...);
    };
    constexpr uint32_t rgba = VEXLOR_FMT_B8G8R8A8, r565 = VEXLOR_FMT_565, yvyu = VEXLOR_FMT_Y8V8Y8U8;
    constexpr uint32_t formats[][2] = {{rgba, rgba}, {rgba, rgba}, {rgba, rgba},
                                       {r565, r565}, {rgba, rgba}, {yvyu, rgba}};
    for (uint64_t i = 0; i < rounds_of(80000); ++i) {
        const uint32_t kind = random.below(6);
        const int32_t w = random.between(0, 12) * 2 + random.one_in(4), h = random.between(0, 5);
        const auto surface = [&](uint32_t format) {
            const uint32_t row = static_cast<uint32_t>(w) * ((format & 0x3F) / 8);
            const size_t at = random.below(2) * 1000 + (random.one_in(2) ? 0 : random.below(700));
            // Strides of other pixels, and of rows that overlap, too.
            const uint32_t any =
                random.one_in(4) ? random.below(130) : static_cast<uint32_t>(w) * (1 + random.below(5));
            return vexlor_surface_desc{w, h, random.one_in(2) ? row : any, arena.place(0, Side::begin, at),
                                       format};
        };
        vexlor_surface_desc src = surface(formats[kind][0]), dst = surface(formats[kind][1]);
        arena.randomize(random);
        for (vexlor_context* const c : {ctx, &d}) {
            c->alpha_value = static_cast<uint8_t>(i);
            c->alpha_test = static_cast<uint32_t>(i / 256 % 6);
            switch (kind) {
            case 0: vexlor_2d_fill_blend_over_8888(c, &dst, c->fill_blend_over_8888, 0, 0, w, h); break;
            case 1:
                vexlor_2d_copy_blend_over_src_8888(&src, &dst, c->copy_blend_over_src_pre_8888, 0, 0, 0, 0, w,
                                                   h);
                break;
            case 2:
                vexlor_2d_copy_blend_over_gbl_8888(c, &src, &dst, c->copy_blend_over_gbl_8888, 0, 0, 0, 0, w,
                                                   h);
                break;
            case 3: vexlor_2d_copy_blend_over_gbl_565(c, &src, &dst, 0, 0, 0, 0, w, h); break;
            case 4: vexlor_2d_copy_test_8888(c, &src, &dst, 0, 0, 0, 0, w, h); break;
            default:
                vexlor_2d_copy_blend_over_gbl_S32D32(
                    c, &src, &dst, c->copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8, 0, 0, 0, 0, w, h);
            }
            src.pixels = arena.twin(src.pixels);
            dst.pixels = arena.twin(dst.pixels);
        }
        ASSERT_TRUE(arena.same()) << "driver " << kind << ", " << w << 'x' << h << ", strides " << src.stride
                                  << ' ' << dst.stride << ", at " << dst.pixels - src.pixels;
    }
}

// Rows of the blended fill.
#include "support/model_blend.h"
#include "support/rows.h"

namespace {

using namespace model;
using enum Alpha;

constexpr RowCase fill_rows[] = {
    {call<vexlor_1d_fill_blend_over_8888>, fill<blended>, fill_32},
    {call<vexlor_1d_fill_blend_over_aone_8888>, fill<one>, fill_32},
    {call<vexlor_1d_fill_blend_over_arepl_8888>, fill<replaced>, fill_32},
};

} // namespace

TEST(FillBlendRows, EqualTheModel) { check_rows(fill_rows); }

// Under each weight, pixels of all bytes; the colours go through all bytes too, with unlike ones side by side.
TEST(FillBlendRows, EqualTheModelForEveryColourByteAndWeight)
{
    sweep_rows(fill_rows, 257 * 2, [](uint32_t step, uint32_t i, uint8_t*, uint8_t* d, RowArgs& args) {
        store(d, shuffled(i, 0x9E37) << 16 | i);
        args.g = step % 257;
        args.shift = 24;
        args.color = step * 0x01090B53;
    });
}

TEST(FillBlendRows, GiveTheKnownPixels)
{
    const auto plain = vexlor_1d_fill_blend_over_8888;
    const auto aone = vexlor_1d_fill_blend_over_aone_8888;
    const auto arepl = vexlor_1d_fill_blend_over_arepl_8888;
    const struct {
        vexlor_fill_blend_fn row;
        uint32_t color, pixel, weight, shift, expected;
    } cases[] = {{plain, 0xFFFFFFFF, 0x00000000, 256, 0, 0xFFFFFFFF},
                 {plain, 0x00000000, 0xFFFFFFFF, 128, 0, 0x7F7F7F7F},
                 {plain, 0x80FF4020, 0x10203040, 128, 0, 0x488F3830},
                 {plain, 0x80402010, 0x11223344, 0, 0, 0x11223344},
                 {aone, 0x80402010, 0x11223344, 0, 24, 0xFF223344},
                 {arepl, 0x11223344, 0x55667788, 256, 0, 0x10213300},
                 {aone, 0x80402010, 0x11223344, 129, 24, 0xFF312929},
                 {arepl, 0x80402010, 0x11223344, 129, 24, 0x003129A9},
                 {aone, 0x80402010, 0x11223344, 129, 0, 0x483129FF},
                 {aone, 0x80402010, 0x11223344, 256, 24, 0xFF402010},
                 {arepl, 0x80402010, 0x11223344, 256, 24, 0x00401F0F}};
    for (const auto& c : cases) {
        uint32_t pixel = c.pixel;
        c.row(c.color, &pixel, 1, c.weight, c.shift);
        EXPECT_EQ(pixel, c.expected) << &c - cases;
    }
}

// Pixels of the blended fill that are known beforehand.
#include "vexlor.h"
#include <gtest/gtest.h>

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

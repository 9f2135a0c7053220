// Pixels of the copying rows that are known beforehand, from which the models could not stray together with the library.
#include "vexlor.h"
#include <gtest/gtest.h>

TEST(CopyBlendRows, GiveTheKnownPixels)
{
    const auto plain = vexlor_1d_copy_blend_over_gbl_8888, aone = vexlor_1d_copy_blend_over_gbl_aone_8888,
               arepl = vexlor_1d_copy_blend_over_gbl_arepl_8888, pre = vexlor_1d_copy_blend_over_gbl_pre_8888,
               pre_aone = vexlor_1d_copy_blend_over_gbl_pre_aone_8888,
               pre_arepl = vexlor_1d_copy_blend_over_gbl_pre_arepl_8888;
    const struct {
        vexlor_copy_gbl_fn row;
        uint32_t s, d, g, shift, expected;
    } gbl_pixels[] = {{plain, 0x80402010, 0x11223344, 129, 24, 0x48312929},
                      {aone, 0x80402010, 0x11223344, 129, 24, 0xFF312929},
                      {arepl, 0x80402010, 0x11223344, 129, 24, 0x003129A9},
                      {plain, 0x80402010, 0x11223344, 129, 0, 0x48312929},
                      {aone, 0x80402010, 0x11223344, 129, 0, 0x493129FF},
                      {arepl, 0x80402010, 0x11223344, 129, 0, 0x49312981},
                      {plain, 0x80402010, 0x11223344, 256, 24, 0x80402010},
                      {aone, 0x80402010, 0x11223344, 256, 24, 0xFF401F0F},
                      {arepl, 0x80402010, 0x11223344, 256, 24, 0x00401F0F},
                      {aone, 0x80402010, 0x11223344, 256, 0, 0x80401FFF},
                      {arepl, 0x80402010, 0x11223344, 256, 0, 0x80401F00},
                      {plain, 0x80402010, 0x11223344, 0, 24, 0x11223344},
                      {aone, 0x80402010, 0x11223344, 0, 24, 0xFF223344},
                      {arepl, 0x80402010, 0x11223344, 0, 24, 0x00223344},
                      // Factor 257 borrows across the bytes of a word.
                      {aone, 0x00000000, 0x00000001, 256, 24, 0xFFFF00FF},
                      {aone, 0x00000000, 0x00000100, 256, 24, 0xFF00FF00},
                      {aone, 0x10203040, 0x80808080, 256, 24, 0xFF1F2F3F},
                      {aone, 0x00FF0000, 0x00FF0001, 256, 24, 0xFFFE00FF},
                      {pre, 0x00000000, 0x01010101, 2, 0, 0x00000101},
                      {pre, 0x20406080, 0x80808080, 129, 0, 0x5F7FA0C0},
                      {pre, 0x00000000, 0xFFFFFFFF, 128, 0, 0x7F7F8080},
                      {pre, 0x10101010, 0xFF00FF00, 3, 0, 0x0C100D10},
                      {pre, 0xC0C0C0C0, 0x80808080, 0, 0, 0x40404040},
                      {pre_aone, 0x10203040, 0x80808080, 256, 24, 0xFF1F3040},
                      {pre_arepl, 0x10203040, 0x80808080, 256, 0, 0x0F1F3100}};
    for (const auto& p : gbl_pixels) {
        uint32_t d = p.d;
        p.row(&p.s, &d, 1, p.g, p.shift);
        EXPECT_EQ(d, p.expected) << &p - gbl_pixels;
    }
    // No pixel is skipped: clear and opaque ones go through the same arithmetic.
    const struct {
        vexlor_copy_src_fn row;
        uint32_t s, d, expected;
    } src_pixels[] = {{vexlor_1d_copy_blend_over_src_8888, 0x00FFFFFF, 0x12345678, 0x12345678},
                      {vexlor_1d_copy_blend_over_src_8888, 0xFF123456, 0x789ABCDE, 0xFF123456},
                      {vexlor_1d_copy_blend_over_src_arepl_8888, 0x00FFFFFF, 0x12345678, 0x00345678},
                      {vexlor_1d_copy_blend_over_src_aone_8888, 0x00FFFFFF, 0x12345678, 0xFF345678},
                      {vexlor_1d_copy_blend_over_src_pre_8888, 0x00C0C0C0, 0x80808080, 0x80404040}};
    for (const auto& p : src_pixels) {
        uint32_t d = p.d;
        p.row(&p.s, &d, 1, 24);
        EXPECT_EQ(d, p.expected) << &p - src_pixels;
    }
    constexpr struct {
        uint16_t s, d;
        uint32_t g;
        uint16_t expected;
    } pixels_565[] = {{0x0000, 0x0001, 256, 0xF819}, {0x0000, 0x0020, 256, 0x07A0},
                      {0xFFFF, 0x0000, 256, 0xC798}, {0x0000, 0x0001, 33, 0xF81F},
                      {0xFFFF, 0x0000, 32, 0xFBFF},  {0xFFFF, 0x0000, 33, 0xFC1F},
                      {0x1234, 0xABCD, 129, 0x4069}};
    for (const auto& p : pixels_565) {
        uint16_t d = p.d;
        vexlor_1d_copy_blend_over_gbl_565(&p.s, &d, 1, p.g);
        EXPECT_EQ(d, p.expected) << &p - pixels_565;
    }
}

// The SSE2 blends: where premultiplied ones have the borrow and where they lack it, in pixels that are known beforehand.
#include "vexlor.h"
#include <gtest/gtest.h>

TEST(CopyBlendRowsSse2, PremultipliedBodiesGiveTheKnownPixels)
{
    constexpr struct {
        uint32_t s, d, f, body, edge;
    } blends[] = {{0x00000000, 0x01010101, 2, 0x01010101, 0x00000101},
                  {0x20406080, 0x80808080, 129, 0x6080A0C0, 0x5F7FA0C0},
                  {0x00000000, 0xFFFFFFFF, 128, 0x80808080, 0x7F7F8080},
                  {0x10101010, 0xFF00FF00, 3, 0x0D100D10, 0x0C100D10}};
    constexpr struct {
        uint32_t at, count, head, body; // pixels
    } splits[] = {{3, 9, 1, 8}, {2, 9, 2, 4}, {1, 7, 3, 4}, {0, 3, 0, 0}};
    for (const auto& b : blends)
        for (const auto& c : splits) {
            alignas(16) uint32_t s[16], d[16];
            std::fill(std::begin(s), std::end(s), b.s);
            std::fill(std::begin(d), std::end(d), b.d);
            vexlor_1d_copy_blend_over_gbl_pre_8888_sse2(s, d + c.at, c.count, b.f);
            for (uint32_t i = 0; i < 12; ++i) {
                const uint32_t pixel = i - c.at;
                const bool in_body = pixel >= c.head && pixel < c.head + c.body;
                EXPECT_EQ(d[i], pixel >= c.count ? b.d
                                : in_body        ? b.body
                                                 : b.edge)
                    << &b - blends << ' ' << &c - splits << ' ' << i;
            }
        }
}

// The predicates of single format codes, known and unknown.
#include "vexlor.h"
#include <gtest/gtest.h>

TEST(Formats, OnlyTheTwoBgrCodesHaveTheirAlphaOnTop)
{
    for (uint32_t code :
         {0x10u, 0x50u, 0x80000050u, 0x20000020u, 0x60000020u, 0xA0000010u, 0xE0000021u, 0u, ~0u})
        EXPECT_EQ(vexlor_fmt_get_alpha_shift(code), 0u) << code;
    EXPECT_EQ(vexlor_fmt_get_alpha_shift(0xA0000020), 24u);
    EXPECT_EQ(vexlor_fmt_get_alpha_shift(0xE0000020), 24u);
}

TEST(Formats, AreEquivalentWhenTheyDifferInHavingAlpha)
{
    constexpr struct {
        uint32_t a, b;
        bool equivalent;
    } cases[] = {{0x20000020, 0xA0000020, false},
                 {0x20000020, 0x60000020, true},
                 {0xA0000020, 0xE0000020, true},
                 {0x60000020, 0xE0000020, false},
                 {0x10, 0x10, true},
                 {0x10, 0x50, false},
                 {0x50, 0x80000050, false},
                 {0x50, 0x50, true},
                 {0x20000020, 0xA0000010, true},
                 {0x20000020, 0x40000020, false},
                 {0x12345, 0x12345, true},
                 {0, 0x20000020, false}};
    for (const auto& c : cases) {
        EXPECT_EQ(vexlor_fmt_is_equiv(c.a, c.b), c.equivalent) << c.a << ' ' << c.b;
        EXPECT_EQ(vexlor_fmt_is_equiv(c.b, c.a), c.equivalent) << c.b << ' ' << c.a;
    }
}

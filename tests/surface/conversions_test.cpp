// Which pairs of formats can be combined, at which widths, and where a format has its alpha: known codes and others.
#include "support/model_draw.h"
#include <gtest/gtest.h>

TEST(Conversions, JoinEquivalentFormatsAndEvenYuvRowsToRgb)
{
    constexpr uint32_t formats[] = {0x10,       0x50,       0x80000050, 0x20000020, 0x60000020,
                                    0xA0000020, 0xE0000020, 0x20000010, 0x12345,    0x40000020,
                                    0xA0000010, 0xE0000021, 0,          ~0u};
    int joined = 0;
    for (uint32_t from : formats) {
        EXPECT_EQ(vexlor_fmt_get_alpha_shift(from), from == 0xA0000020 || from == 0xE0000020 ? 24u : 0u)
            << from;
        for (uint32_t to : formats) {
            EXPECT_EQ(vexlor_fmt_is_equiv(from, to), model::equivalent(from, to)) << from << ' ' << to;
            for (int32_t width : {64, 63, 0, 2, -2, -1, -63}) {
                const vexlor_surface_desc src{1, 1, 0, nullptr, from}, dst{1, 1, 0, nullptr, to};
                // Neither the destination's width nor the heights matter.
                const bool is = vexlor_surface_is_convertible(&src, width, 3, &dst, 63, -1);
                EXPECT_EQ(is, model::convertible(from, to, width)) << from << ' ' << to << ' ' << width;
                joined += is;
            }
        }
    }
    // Equal codes at 7 widths; the six of 32-bit RGB without alpha on top among each other, A0000020 and E0000020; YUV
    // at 4 even ones.
    EXPECT_EQ(joined, 14 * 7 + (6 * 5 + 2) * 7 + 2 * 4 * 4);
}

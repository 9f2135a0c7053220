// Which pairs of formats can be combined, at which widths.
#include "support/model_draw.h"
#include <gtest/gtest.h>

TEST(Conversions, JoinEquivalentFormatsAndEvenYuvRowsToRgb)
{
    constexpr uint32_t formats[] = {0x10,       0x50,       0x80000050, 0x20000020, 0x60000020,
                                    0xA0000020, 0xE0000020, 0x20000010, 0x12345,    0x40000020};
    int joined = 0;
    for (uint32_t from : formats)
        for (uint32_t to : formats)
            for (int32_t width : {64, 63, 0, 2, -2, -1, -63}) {
                const vexlor_surface_desc src{1, 1, 0, nullptr, from}, dst{1, 1, 0, nullptr, to};
                // Neither the destination's width nor the heights matter.
                const bool is = vexlor_surface_is_convertible(&src, width, 3, &dst, 63, -1);
                EXPECT_EQ(is, model::convertible(from, to, width)) << from << ' ' << to << ' ' << width;
                joined += is;
            }
    // Equal codes at 7 widths; 20000010, 20000020 and 60000020 among each other, A0.. and E0..; YUV at 4 even ones.
    EXPECT_EQ(joined, 10 * 7 + (6 + 2) * 7 + 2 * 4 * 4);
}

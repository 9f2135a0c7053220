// Colours of the converters between YUV 4:2:2 and 32-bit RGB that are known beforehand.
#include "vexlor.h"
#include <algorithm>
#include <gtest/gtest.h>

TEST(YuvRows, GiveTheKnownColours)
{
    constexpr struct {
        uint8_t yuv[3], rgb[3];
    } colours[] = {{{0, 0, 0}, {0, 135, 0}},    {{255, 255, 255}, {255, 125, 255}},
                   {{0, 255, 0}, {0, 36, 237}}, {{128, 64, 192}, {233, 103, 1}},
                   {{16, 128, 128}, {0, 0, 0}}, {{235, 128, 128}, {255, 255, 255}},
                   {{0, 128, 128}, {0, 0, 0}}};
    for (const auto& c : colours) {
        const auto [y, u, v] = c.yuv;
        const uint8_t pair[4] = {y, v, y, u};
        uint8_t rgb[8];
        vexlor_1d_Y8V8Y8U8_2_X8R8G8B8(pair, rgb, 2);
        for (int at : {0, 4})
            EXPECT_TRUE(rgb[at] == 255 && std::equal(rgb + at + 1, rgb + at + 4, c.rgb)) << &c - colours;
    }
    constexpr struct {
        uint8_t rgb[3], yuv[3];
    } back[] = {{{255, 0, 0}, {82, 90, 239}},
                {{1, 0, 0}, {16, 127, 128}},
                {{0, 0, 1}, {16, 128, 127}},
                {{0, 0, 0}, {16, 128, 128}},
                {{255, 255, 255}, {235, 128, 128}}};
    for (const auto& c : back) {
        // The second pixel, white, gives its luma alone.
        const uint8_t pixels[8] = {77, c.rgb[0], c.rgb[1], c.rgb[2], 77, 255, 255, 255};
        uint8_t pair[4];
        vexlor_1d_X8R8G8B8_2_U8Y8V8Y8(pixels, pair, 2);
        EXPECT_TRUE(pair[0] == c.yuv[1] && pair[1] == c.yuv[0] && pair[2] == c.yuv[2] && pair[3] == 235)
            << &c - back;
    }
}

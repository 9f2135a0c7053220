// The SSE2 converters from YUV 4:2:2: floats in whole blocks, integers before and behind.
#include "support/rows.h"
#include <cfenv>

TEST(YuvRowsSse2, RoundAsTheProcessorIsSet)
{
    for (const int mode : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        ASSERT_EQ(std::fesetround(mode), 0);
        sweep(Kind::decode, 1 << 16, {},
              [](uint32_t i, uint8_t* s, uint8_t*) { model::store(s, i * 0x9E3779B9); });
    }
}

// Each colour once. No channel is off the integer rows by more than 1, and few are off at all.
TEST(YuvRowsSse2, AreCloseToTheIntegers)
{
    constexpr uint32_t pairs = 1 << 16;
    std::vector<uint8_t> source(pairs * 4), is(pairs * 8), integers(pairs * 8);
    int largest = 0;
    double off[4] = {};
    for (uint32_t luma = 0; luma < 256; luma += 2) {
        for (uint32_t i = 0; i < pairs; ++i)
            model::store(&source[4 * i], luma | (i & 0xFF) << 8 | (luma + 1) << 16 | i >> 8 << 24);
        vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2(source.data(), is.data(), 2 * pairs);
        vexlor_1d_Y8V8Y8U8_2_X8R8G8B8(source.data(), integers.data(), 2 * pairs);
        for (size_t i = 0; i < is.size(); ++i)
            if (i % 4 != 0 && is[i] != integers[i]) {
                largest = std::max(largest, std::abs(is[i] - integers[i]));
                ++off[i % 4];
            }
    }
    EXPECT_EQ(largest, 1);
    constexpr double per_mille[] = {0, 49, 27, 55};
    for (int channel : {1, 2, 3})
        EXPECT_EQ(std::round(off[channel] / (1 << 24) * 1000), per_mille[channel]) << channel;
}

TEST(YuvRowsSse2, GiveTheKnownColours)
{
    constexpr struct {
        uint8_t y, u, v;
        int channel;
        uint8_t expected;
    } colours[] = {{5, 128, 152, 1, 26},   {77, 128, 154, 1, 112},  {194, 128, 1, 1, 4},
                   {215, 128, 12, 1, 46},  {218, 128, 85, 1, 166},  {0, 246, 128, 3, 220},
                   {83, 212, 128, 3, 248}, {200, 146, 128, 3, 250}, {243, 32, 128, 3, 70},
                   {0, 18, 150, 2, 7},     {0, 17, 57, 2, 82},      {0, 7, 127, 2, 30}};
    for (const auto& c : colours) {
        const uint8_t pairs[8] = {c.y, c.v, c.y, c.u, c.y, c.v, c.y, c.u};
        alignas(16) uint8_t pixels[16];
        vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2(pairs, pixels, 4);
        for (int pixel = 0; pixel < 16; pixel += 4)
            EXPECT_EQ(pixels[pixel + c.channel], c.expected) << &c - colours << ' ' << pixel;
    }
    constexpr struct {
        size_t at;
        uint8_t x[6];
    } x_bytes[] = {
        {0, {0, 0, 0, 0, 255, 255}}, {8, {255, 255, 0, 0, 0, 0}}, {4, {255, 255, 255, 255, 255, 255}}};
    for (const auto& c : x_bytes) {
        constexpr uint8_t pairs[12] = {};
        alignas(16) uint8_t pixels[32];
        vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2(pairs, pixels + c.at, 6);
        for (size_t i = 0; i < 6; ++i)
            EXPECT_EQ(pixels[c.at + 4 * i], c.x[i]) << c.at << ' ' << i;
    }
}

TEST(YuvRowsSse2, PublishTheirConstants)
{
    constexpr float expected[7] = {16, 128, 1.164f, 2.018f, 1.596f, -0.391f, -0.813f};
    EXPECT_TRUE(at_boundary(VEXLOR_YUV_2_RGB_SSE2_CONSTS));
    for (size_t i = 0; i < 28; ++i)
        EXPECT_EQ(VEXLOR_YUV_2_RGB_SSE2_CONSTS[i / 4][i % 4], expected[i / 4]) << i;
}

// Converters between YUV 4:2:2 and 32-bit RGB.
#include "support/model_yuv.h"
#include "support/rows.h"

namespace {

using namespace model;

constexpr RowCase decoders[] = {
    {call<vexlor_1d_Y8V8Y8U8_2_X8R8G8B8>, decode<Y8V8Y8U8, X8R8G8B8>, yuv_to_rgb},
    {call<vexlor_1d_Y8V8Y8U8_2_B8G8R8X8>, decode<Y8V8Y8U8, B8G8R8X8>, yuv_to_rgb},
    {call<vexlor_1d_U8Y8V8Y8_2_X8R8G8B8>, decode<U8Y8V8Y8, X8R8G8B8>, yuv_to_rgb},
    {call<vexlor_1d_U8Y8V8Y8_2_B8G8R8X8>, decode<U8Y8V8Y8, B8G8R8X8>, yuv_to_rgb},
};
constexpr RowCase encoders[] = {
    {call<vexlor_1d_X8R8G8B8_2_Y8V8Y8U8>, encode<X8R8G8B8, Y8V8Y8U8>, rgb_to_yuv},
    {call<vexlor_1d_B8G8R8X8_2_Y8V8Y8U8>, encode<B8G8R8X8, Y8V8Y8U8>, rgb_to_yuv},
    {call<vexlor_1d_X8R8G8B8_2_U8Y8V8Y8>, encode<X8R8G8B8, U8Y8V8Y8>, rgb_to_yuv},
    {call<vexlor_1d_B8G8R8X8_2_U8Y8V8Y8>, encode<B8G8R8X8, U8Y8V8Y8>, rgb_to_yuv},
};
constexpr RowCase words_rows[] = {{call<vexlor_1d_passthrough>, passthrough, {1, 4, 4, true}}};

} // namespace

TEST(YuvRows, EqualTheModel)
{
    check_rows(decoders);
    check_rows(encoders);
    check_rows(words_rows);
}

TEST(YuvRows, EqualTheModelForEveryColour)
{
    // Four bytes of which any three run through all their values together.
    const auto bytes = [](uint32_t step, uint32_t i) {
        return (step + i + (i >> 8)) % 256 << 24 | i << 8 | step;
    };
    sweep_rows(decoders, 256,
               [&](uint32_t step, uint32_t i, uint8_t* s, uint8_t*, RowArgs&) { store(s, bytes(step, i)); });
    sweep_rows(encoders, 256, [&](uint32_t step, uint32_t i, uint8_t* s, uint8_t*, RowArgs&) {
        store(s, bytes(step, i));
        store(s + 4, bytes(step, shuffled(i, 0x9E37)));
    });
}

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

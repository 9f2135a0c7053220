#include "conversion.h"

#include "formats.h"

namespace tool {

namespace {

constexpr struct {
    uint32_t from, to; // without alpha
    vexlor_convert_fn row;
} into_yuv[] = {
    {VEXLOR_FMT_X8R8G8B8, VEXLOR_FMT_Y8V8Y8U8, vexlor_1d_X8R8G8B8_2_Y8V8Y8U8},
    {VEXLOR_FMT_B8G8R8X8, VEXLOR_FMT_Y8V8Y8U8, vexlor_1d_B8G8R8X8_2_Y8V8Y8U8},
    {VEXLOR_FMT_X8R8G8B8, VEXLOR_FMT_U8Y8V8Y8, vexlor_1d_X8R8G8B8_2_U8Y8V8Y8},
    {VEXLOR_FMT_B8G8R8X8, VEXLOR_FMT_U8Y8V8Y8, vexlor_1d_B8G8R8X8_2_U8Y8V8Y8},
};

} // namespace

const char* const conversion_advice = "The library converts YUV 4:2:2 of even width into 32-bit RGB and "
                                      "back, and between 32-bit formats of one byte "
                                      "order with and without alpha";

uint32_t convert(vexlor_context& ctx, const Surface& from, Surface& to)
{
    const auto [width, height] = from.size();
    for (const auto& pair : into_yuv)
        if (is_rgb32(from.format()) && with_alpha(from.format(), false) == pair.from &&
            to.format() == pair.to) {
            if (width % 2 != 0)
                return VEXLOR_NOT_CONVERTIBLE;
            for (int32_t y = 0; y < height; ++y)
                pair.row(from.row(y), to.row(y), width);
            return VEXLOR_OK;
        }
    const bool gains_alpha = is_rgb32(from.format()) && !has_alpha(from.format()) && has_alpha(to.format());
    vexlor_context_set_alpha_dst_op(&ctx, gains_alpha ? VEXLOR_ALPHA_DST_ONE : VEXLOR_ALPHA_DST_BLEND);
    return vexlor_copy(&ctx, from.desc(), to.desc(), 0, 0, 0, 0, width, height);
}

} // namespace tool

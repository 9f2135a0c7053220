#include "surface.h"

#include "failure.h"
#include "formats.h"

#include <cstring>
#include <string>
#include <vector>

namespace tool {

namespace {

uint32_t word(const uint8_t* rgba, uint32_t format)
{
    const uint32_t r = rgba[0], g = rgba[1], b = rgba[2], a = has_alpha(format) ? rgba[3] : 255;
    switch (format) {
    case VEXLOR_FMT_565: return (r >> 3) << 11 | (g >> 2) << 5 | b >> 3;
    case VEXLOR_FMT_X8R8G8B8:
    case VEXLOR_FMT_A8R8G8B8: return a | r << 8 | g << 16 | b << 24;
    default: return b | g << 8 | r << 16 | a << 24;
    }
}

void rgba(uint32_t word, uint32_t format, uint8_t* out)
{
    const auto store = [out](uint32_t r, uint32_t g, uint32_t b, uint32_t a) {
        out[0] = static_cast<uint8_t>(r);
        out[1] = static_cast<uint8_t>(g);
        out[2] = static_cast<uint8_t>(b);
        out[3] = static_cast<uint8_t>(a);
    };
    const uint32_t b0 = word & 0xFF, b1 = word >> 8 & 0xFF, b2 = word >> 16 & 0xFF, b3 = word >> 24;
    switch (format) {
    case VEXLOR_FMT_565: {
        const uint32_t r = word >> 11, g = word >> 5 & 63, b = word & 31;
        return store(r << 3 | r >> 2, g << 2 | g >> 4, b << 3 | b >> 2, 255);
    }
    case VEXLOR_FMT_X8R8G8B8: return store(b1, b2, b3, 255);
    case VEXLOR_FMT_A8R8G8B8: return store(b1, b2, b3, b0);
    case VEXLOR_FMT_B8G8R8A8: return store(b2, b1, b0, b3);
    default: return store(b2, b1, b0, 255);
    }
}

void require_even(int32_t width, uint32_t format)
{
    if (width % 2 != 0)
        throw BadValue("a " + std::string(format_name(format)) + " picture has an even width, this one has " +
                       std::to_string(width));
}

// YUV rows are made from, and read as, words of this format.
constexpr uint32_t rgb_of_yuv = VEXLOR_FMT_B8G8R8X8;

} // namespace

Surface::Surface(Size size, uint32_t format, uint32_t stride)
{
    const size_t row = static_cast<size_t>(size.width) * bytes_per_pixel(format);
    if (stride == 0)
        stride = static_cast<uint32_t>(row);
    bytes_ = static_cast<size_t>(size.height - 1) * stride + row;
    pixels_ = std::make_unique_for_overwrite<uint8_t[]>(bytes_);
    vexlor_surface_desc_init(&desc_, size.width, size.height, stride, pixels_.get(), format);
}

Surface Surface::copy() const
{
    Surface result(size(), format(), desc_.stride);
    result.assign(*this);
    return result;
}

void Surface::assign(const Surface& other) { std::memcpy(pixels_.get(), other.pixels_.get(), bytes_); }

Surface pack(const Picture& picture, uint32_t format)
{
    if (is_yuv(format))
        require_even(picture.size.width, format);
    const auto convert =
        format == VEXLOR_FMT_U8Y8V8Y8 ? vexlor_1d_B8G8R8X8_2_U8Y8V8Y8 : vexlor_1d_B8G8R8X8_2_Y8V8Y8U8;
    const uint32_t unit = bytes_per_pixel(format);
    std::vector<uint32_t> words(static_cast<size_t>(picture.size.width));
    Surface surface(picture.size, format);
    for (int32_t y = 0; y < picture.size.height; ++y) {
        const uint8_t* in = picture.row(y);
        for (uint32_t& w : words) {
            w = word(in, is_yuv(format) ? rgb_of_yuv : format);
            in += 4;
        }
        uint8_t* out = surface.row(y);
        if (is_yuv(format)) {
            convert(words.data(), out, picture.size.width);
            continue;
        }
        for (const uint32_t w : words) {
            std::memcpy(out, &w, unit); // of a 565 word the low half
            out += unit;
        }
    }
    return surface;
}

uint32_t pack(Color color, uint32_t format)
{
    const uint8_t pixel[4] = {color.r, color.g, color.b, color.a};
    return word(pixel, format);
}

Picture unpack(const Surface& surface)
{
    const uint32_t format = surface.format();
    if (is_yuv(format))
        require_even(surface.size().width, format);
    const auto convert =
        format == VEXLOR_FMT_U8Y8V8Y8 ? vexlor_1d_U8Y8V8Y8_2_B8G8R8X8 : vexlor_1d_Y8V8Y8U8_2_B8G8R8X8;
    const uint32_t unit = bytes_per_pixel(format);
    std::vector<uint32_t> words(static_cast<size_t>(surface.size().width));
    Picture picture(surface.size(), has_alpha(format));
    for (int32_t y = 0; y < surface.size().height; ++y) {
        const uint8_t* in = surface.row(y);
        if (is_yuv(format)) {
            convert(in, words.data(), surface.size().width);
        } else {
            for (uint32_t& w : words) {
                w = 0;
                std::memcpy(&w, in, unit);
                in += unit;
            }
        }
        uint8_t* out = picture.row(y);
        for (const uint32_t w : words) {
            rgba(w, is_yuv(format) ? rgb_of_yuv : format, out);
            out += 4;
        }
    }
    return picture;
}

} // namespace tool

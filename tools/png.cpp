// PNG pictures by libpng's simplified interface, which reports every error by return value and message.
#include "failure.h"
#include "picture.h"

#include <algorithm>
#include <array>
#include <png.h>

namespace tool {

namespace {

struct Image : png_image {
    Image() : png_image{} { version = PNG_IMAGE_VERSION; }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    ~Image() { png_image_free(this); }
};

[[noreturn]] void fail(const std::string& name, const Image& image)
{
    throw Failure(name, std::string("PNG is damaged or truncated: ") + image.message);
}

} // namespace

bool is_png(std::span<const uint8_t> file)
{
    constexpr std::array<uint8_t, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    return file.size() >= signature.size() && std::equal(signature.begin(), signature.end(), file.begin());
}

Picture decode_png(const std::string& name, std::span<const uint8_t> file)
{
    Image image;
    if (!png_image_begin_read_from_memory(&image, file.data(), file.size()))
        fail(name, image);
    if (const std::string reason = check_size(image.width, image.height); !reason.empty())
        throw Failure(name, reason);
    Picture picture({static_cast<int32_t>(image.width), static_cast<int32_t>(image.height)},
                    (image.format & PNG_FORMAT_FLAG_ALPHA) != 0);
    image.format = PNG_FORMAT_RGBA;
    if (!png_image_finish_read(&image, nullptr, picture.pixels.get(), 0, nullptr))
        fail(name, image);
    return picture;
}

std::vector<uint8_t> encode_png(const std::string& name, const Picture& picture, Packing packing)
{
    const size_t channels = picture.has_alpha ? 4 : 3;
    const size_t count = picture.bytes() / 4;
    std::vector<uint8_t> pixels(count * channels);
    for (size_t i = 0; i < count; ++i)
        std::copy_n(picture.pixels.get() + 4 * i, channels, pixels.data() + channels * i);

    Image image;
    image.width = static_cast<uint32_t>(picture.size.width);
    image.height = static_cast<uint32_t>(picture.size.height);
    image.format = picture.has_alpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    image.flags = packing == Packing::fast ? PNG_IMAGE_FLAG_FAST : 0;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<uint8_t> file(size);
    if (!png_image_write_to_memory(&image, file.data(), &size, 0, pixels.data(), 0, nullptr))
        throw Failure(name, std::string("PNG cannot be written: ") + image.message);
    file.resize(size);
    return file;
}

} // namespace tool

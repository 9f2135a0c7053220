#include "picture.h"

#include "failure.h"
#include "file.h"

namespace tool {

Picture plain_picture(Size size, Color color)
{
    Picture picture(size, color.a != 255);
    const uint8_t pixel[4] = {color.r, color.g, color.b, color.a};
    for (size_t i = 0; i < picture.bytes(); ++i)
        picture.pixels[i] = pixel[i % 4];
    return picture;
}

Picture read_picture(const std::string& name)
{
    constexpr size_t limit = size_t{1} << 30;
    const std::vector<uint8_t> file = read_file(name, limit);
    if (is_png(file))
        return decode_png(shown(name), file);
    if (is_jpeg(file))
        return decode_jpeg(shown(name), file);
    throw Failure(shown(name), file.empty()
                                   ? "is empty"
                                   : "is neither PNG nor JPEG; a raw frame needs its format and size");
}

} // namespace tool

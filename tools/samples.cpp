#include "samples.h"

#include "formats.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tool {

namespace {

std::vector<std::string> channels_of(uint32_t format)
{
    switch (format) {
    case VEXLOR_FMT_Y8V8Y8U8: return {"luma", "chroma"};
    case VEXLOR_FMT_U8Y8V8Y8: return {"chroma", "luma"};
    case VEXLOR_FMT_X8R8G8B8: return {"", "R", "G", "B"};
    case VEXLOR_FMT_A8R8G8B8: return {"A", "R", "G", "B"};
    case VEXLOR_FMT_B8G8R8X8: return {"B", "G", "R", ""};
    default: return {"B", "G", "R", "A"};
    }
}

// Calls each(x, y, channel, difference) for all that counts.
template <class Each> void each_difference(const Samples& a, const Samples& b, Each each)
{
    for (int32_t y = 0; y < a.size.height; ++y)
        for (int32_t x = 0; x < a.size.width; ++x)
            for (size_t c = 0; c < a.channels.size(); ++c)
                if (!a.channels[c].empty())
                    each(x, y, c, std::abs(a.pixel(x, y)[c] - b.pixel(x, y)[c]));
}

} // namespace

Samples samples_of(const Picture& picture)
{
    return {
        picture.size, {"R", "G", "B", "A"}, {picture.pixels.get(), picture.pixels.get() + picture.bytes()}};
}

Samples samples_of(const Surface& frame)
{
    if (frame.format() == VEXLOR_FMT_565)
        return samples_of(unpack(frame));
    Samples samples{frame.size(), channels_of(frame.format()), {}};
    for (int32_t y = 0; y < frame.size().height; ++y)
        samples.values.insert(samples.values.end(), frame.row(y), frame.row(y) + frame.row_bytes());
    return samples;
}

Distance distance(const Samples& a, const Samples& b)
{
    Distance found;
    double squares = 0;
    int64_t counted = 0;
    Point last{-1, -1};
    each_difference(a, b, [&](int32_t x, int32_t y, size_t c, int difference) {
        ++counted;
        if (difference == 0)
            return;
        squares += difference * difference;
        found.largest[c] = std::max(found.largest[c], difference);
        if (found.pixels == 0)
            found.first = {x, y};
        found.pixels += x != last.x || y != last.y;
        last = {x, y};
    });
    found.psnr = 10 * std::log10(255.0 * 255.0 * static_cast<double>(counted) / squares);
    return found;
}

Picture picture_of_differences(const Samples& a, const Samples& b, int32_t amplify)
{
    if (amplify == 0) {
        const auto largest = distance(a, b).largest;
        amplify = 255 / std::max(1, *std::ranges::max_element(largest));
    }
    Picture picture = plain_picture(a.size, {0, 0, 0, 255});
    // What is no colour shows in all of them.
    each_difference(a, b, [&](int32_t x, int32_t y, size_t c, int difference) {
        const auto bright = static_cast<uint8_t>(std::min(255, difference * amplify));
        uint8_t* const pixel = picture.row(y) + static_cast<size_t>(x) * 4;
        const size_t color = std::string("RGB").find(a.channels[c]);
        for (size_t i = 0; i < 3; ++i)
            if (i == color || color == std::string::npos)
                pixel[i] = std::max(pixel[i], bright);
    });
    return picture;
}

} // namespace tool

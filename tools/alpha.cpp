#include "alpha.h"

#include "failure.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tool {

namespace {

uint8_t byte(double value) { return static_cast<uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255)); }

// Calls value(x, y) for every pixel.
template <class Value> void each_alpha(Picture& picture, Value value)
{
    for (int32_t y = 0; y < picture.size.height; ++y) {
        uint8_t* pixel = picture.row(y);
        for (int32_t x = 0; x < picture.size.width; ++x, pixel += 4)
            pixel[3] = value(x, y);
    }
}

void ramp(Picture& picture, double from, double to)
{
    each_alpha(picture, [=](int32_t x, int32_t) {
        return from == to ? byte(x >= from) : byte((x - from) / (to - from));
    });
}

void disc(Picture& picture, Rect rect)
{
    const double rx = rect.width / 2.0, ry = rect.height / 2.0;
    const double cx = rect.x + rx - 0.5, cy = rect.y + ry - 0.5;
    each_alpha(picture, [=](int32_t x, int32_t y) {
        const double distance = std::hypot((x - cx) / rx, (y - cy) / ry);
        return byte((1 - distance) * std::min(rx, ry) + 0.5);
    });
}

// The map shows longitude -180 to 180 from left to right and latitude 90 to -90 from top to bottom. It is
// getting dark while the sun goes from 3 degrees above the horizon to 12 below; a tenth of the day stays
// then, as by moonlight.
void night(Picture& picture, double longitude, double latitude)
{
    constexpr double degree = std::numbers::pi / 180;
    const double sun_sin = std::sin(latitude * degree), sun_cos = std::cos(latitude * degree);
    each_alpha(picture, [=, size = picture.size](int32_t x, int32_t y) {
        const double lon = ((x + 0.5) / size.width * 360 - 180 - longitude) * degree;
        const double lat = (90 - (y + 0.5) / size.height * 180) * degree;
        const double elevation = std::asin(std::sin(lat) * sun_sin + std::cos(lat) * sun_cos * std::cos(lon));
        const double dark = std::clamp((3 - elevation / degree) / 15, 0.0, 1.0);
        return byte(0.9 * dark * dark * (3 - 2 * dark));
    });
}

void from_file(Picture& picture, const std::string& name)
{
    const Picture mask = read_picture(name);
    if (mask.size.width != picture.size.width || mask.size.height != picture.size.height)
        throw Failure(name, "as an alpha channel it must be as large as the source, " +
                                std::to_string(picture.size.width) + "x" +
                                std::to_string(picture.size.height));
    each_alpha(picture, [&mask](int32_t x, int32_t y) {
        const uint8_t* p = mask.row(y) + static_cast<size_t>(x) * 4;
        return mask.has_alpha ? p[3] : static_cast<uint8_t>((77 * p[0] + 150 * p[1] + 29 * p[2] + 128) >> 8);
    });
}

} // namespace

void set_alpha(Picture& picture, const std::string& shape, Rect rect)
{
    const std::vector<std::string> words = split(shape, ':');
    const auto number = [&words](size_t i, int32_t limit) { return parse_integer(words[i], -limit, limit); };
    if (words[0] == "ramp" && words.size() == 3)
        ramp(picture, number(1, longest_side), number(2, longest_side));
    else if (shape == "disc")
        disc(picture, rect);
    else if (words[0] == "night" && words.size() == 3)
        night(picture, number(1, 180), number(2, 90));
    else if (shape == "night")
        night(picture, 0, 0);
    else if (shape.find_first_not_of("0123456789") == std::string::npos)
        each_alpha(picture, [value = parse_integer(shape, 0, 255)](int32_t, int32_t) {
            return static_cast<uint8_t>(value);
        });
    else if (words[0] == "ramp" || words[0] == "night" || words[0] == "disc")
        throw BadValue("'" + shape + "' is none of N, ramp:X0:X1, disc, night:LON:LAT, FILE");
    else
        from_file(picture, shape);
    picture.has_alpha = true;
}

void premultiply(Picture& picture, int32_t weight)
{
    for (size_t i = 0; i < picture.bytes(); i += 4) {
        uint8_t* p = picture.pixels.get() + i;
        const int32_t a = weight < 0 ? p[3] : weight;
        for (int c = 0; c < 3; ++c)
            p[c] = static_cast<uint8_t>((p[c] * a + 127) / 255);
    }
}

} // namespace tool

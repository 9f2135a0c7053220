// Pictures taken apart into 8-bit samples, and how far two of them are apart.
#pragma once

#include "picture.h"
#include "surface.h"

#include <array>
#include <string>
#include <vector>

namespace tool {

struct Samples {
    Size size;
    std::vector<std::string> channels; // an empty name does not count: the X of X8R8G8B8
    std::vector<uint8_t> values;       // of each pixel, channel by channel

    const uint8_t* pixel(int32_t x, int32_t y) const
    {
        return values.data() +
               (static_cast<size_t>(y) * static_cast<size_t>(size.width) + static_cast<size_t>(x)) *
                   channels.size();
    }
};

Samples samples_of(const Picture& picture);
// Bytes in memory order; of 565 the fields, widened to 8 bits.
Samples samples_of(const Surface& frame);

struct Distance {
    int64_t pixels = 0;           // that differ
    Point first;                  // of them, from the top left
    std::array<int, 4> largest{}; // difference by channel
    double psnr = 0;              // decibels, over all that counts
};

Distance distance(const Samples& a, const Samples& b);
// Differences times `amplify`, or so that the largest becomes 255 for 0, as a picture.
Picture picture_of_differences(const Samples& a, const Samples& b, int32_t amplify);

} // namespace tool

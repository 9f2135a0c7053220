// Alpha channels for pictures that have none, so that a photograph can serve as a night side or a sprite.
#pragma once

#include "picture.h"

#include <string>

namespace tool {

// Replaces the picture's alpha channel by what `shape` describes; `rect` is the part that will be drawn.
//   N                    one value, 0 to 255
//   ramp:X0:X1           0 at column X0 growing to 255 at column X1, either of which may be the larger
//   disc                 255 inside the largest ellipse in rect, with a soft edge of one pixel
//   night[:LON:LAT]      for a world map: 230 where it is night when the sun stands above LON, LAT (degrees)
//   FILE                 a PNG or JPEG of the same size: its alpha channel, or its brightness
void set_alpha(Picture& picture, const std::string& shape, Rect rect);

// Multiplies the colour by alpha, or by `weight` / 255 when that is not negative.
void premultiply(Picture& picture, int32_t weight);

} // namespace tool

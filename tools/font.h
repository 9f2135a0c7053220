// A small fixed-width font for labels: letters of 5 x 7 pixels, with a tail of one, in cells of 6 x 8.
#pragma once

#include "parse.h"

#include <string>

namespace tool {

bool font_pixel(char c, int32_t x, int32_t y); // whether the letter covers this pixel of its cell
Size text_size(const std::string& text);

} // namespace tool

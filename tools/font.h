// A small fixed-width font, drawn in source text: characters 32 to 126, each 5 x 9 points with a gap of one.
#pragma once

#include "parse.h"

#include <string>

namespace tool {

constexpr int32_t glyph_width = 6, glyph_height = 9;
constexpr char first_glyph = ' ', last_glyph = '~';

bool font_pixel(char c, int32_t x, int32_t y); // whether the letter covers this point of its cell
Size text_size(const std::string& text);

} // namespace tool

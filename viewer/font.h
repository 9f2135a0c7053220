// The viewer's letters, drawn in source text: characters 32 to 126, each 5 x 9 points with a gap of one.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace view {

constexpr int32_t glyph_width = 6, glyph_height = 9, font_columns = 16, font_lines = 6;
constexpr char first_glyph = ' ', last_glyph = '~';

extern const std::array<std::string_view, size_t{font_lines} * glyph_height> font_rows; // '#' is ink

} // namespace view

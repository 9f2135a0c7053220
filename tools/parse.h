// Texts of options into values. Each throws BadValue, saying what was expected.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tool {

struct Point {
    int32_t x = 0, y = 0;
};
struct Size {
    int32_t width = 0, height = 0;
};
struct Rect {
    int32_t x = 0, y = 0, width = 0, height = 0;
};
struct Color {
    uint8_t r = 0, g = 0, b = 0, a = 255;
};

// Pictures beyond these are refused before memory is asked for.
constexpr int32_t longest_side = 32767;
constexpr int64_t most_pixels = int64_t{1} << 27;

int32_t parse_integer(const std::string& text, int32_t low, int32_t high);
uint32_t parse_hex(const std::string& text);  // 0x12345678
Point parse_point(const std::string& text);   // X,Y
Rect parse_rect(const std::string& text);     // X,Y,W,H
Size parse_size(const std::string& text);     // WxH, inside the limits above
Color parse_color(const std::string& text);   // RRGGBB or RRGGBBAA
std::string check_size(int64_t w, int64_t h); // empty when such a picture is accepted, else the reason
std::string size_text(int32_t width, int32_t height);
std::vector<std::string> split(const std::string& text, char separator);

} // namespace tool

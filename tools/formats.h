// The seven pixel formats: names, codes, byte order and what other software calls the same layout.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tool {

struct Format {
    std::string_view name;
    uint32_t code;
    std::string_view bytes;  // in memory, lowest address first
    std::string_view ffmpeg; // -pix_fmt
    std::string_view sdl;    // SDL_PIXELFORMAT_..., on a little-endian machine
    std::string_view pixman; // PIXMAN_..., on a little-endian machine
};

extern const std::array<Format, 7> formats;

uint32_t format_named(std::string_view name); // BadValue when there is none
std::string_view format_name(uint32_t code);

constexpr uint32_t bytes_per_pixel(uint32_t format) { return (format & 0x3F) >> 3; }
constexpr bool is_yuv(uint32_t format) { return (format & 0x40) != 0; }
constexpr bool is_rgb32(uint32_t format) { return (format & 0x20000000) != 0; }
constexpr bool has_alpha(uint32_t format) { return (format & 0x40000000) != 0; }
// A 32-bit RGB format of the same byte order, with or without an alpha channel.
constexpr uint32_t with_alpha(uint32_t format, bool alpha)
{
    return alpha ? format | 0x40000000 : format & ~uint32_t{0x40000000};
}

} // namespace tool

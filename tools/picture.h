// A picture as files hold it: bytes R, G, B, A per pixel, rows without gaps, colour not multiplied by alpha.
#pragma once

#include "parse.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tool {

struct Picture {
    // The pixels of a new picture are undefined.
    Picture(Size s, bool alpha)
        : size(s), has_alpha(alpha), pixels(std::make_unique_for_overwrite<uint8_t[]>(bytes()))
    {}
    size_t bytes() const { return row_bytes() * static_cast<size_t>(size.height); }
    size_t row_bytes() const { return static_cast<size_t>(size.width) * 4; }
    uint8_t* row(int32_t y) { return pixels.get() + static_cast<size_t>(y) * row_bytes(); }
    const uint8_t* row(int32_t y) const { return pixels.get() + static_cast<size_t>(y) * row_bytes(); }

    Size size;
    bool has_alpha; // otherwise every A is 255
    std::unique_ptr<uint8_t[]> pixels;
};

Picture plain_picture(Size size, Color color);

// What is wrong with the file becomes a Failure that names it.
bool is_png(std::span<const uint8_t> file);
Picture decode_png(const std::string& name, std::span<const uint8_t> file);
// `fast` for what is looked at once, `small` for what is kept.
enum class Packing { fast, small };
std::vector<uint8_t> encode_png(const std::string& name, const Picture& picture,
                                Packing packing = Packing::fast);
bool is_jpeg(std::span<const uint8_t> file);
Picture decode_jpeg(const std::string& name, std::span<const uint8_t> file);

// A PNG or JPEG file, told apart by their first bytes.
Picture read_picture(const std::string& name);

} // namespace tool

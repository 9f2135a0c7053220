// Surfaces that own their pixels, and the way from pictures to surfaces of any format and back.
#pragma once

#include "parse.h"
#include "picture.h"

#include <vexlor.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace tool {

// Owns exactly the bytes that a drawing call may touch: none behind the last pixel of the last row.
class Surface {
public:
    // The pixels of a new surface are undefined. stride 0: rows without gaps.
    Surface(Size size, uint32_t format, uint32_t stride = 0);
    Surface copy() const;
    void assign(const Surface& other); // of the same size, format and stride

    const vexlor_surface_desc* desc() const { return &desc_; }
    Size size() const { return {desc_.width, desc_.height}; }
    uint32_t format() const { return desc_.format; }
    size_t row_bytes() const { return static_cast<size_t>(desc_.width) * ((desc_.format & 0x3F) >> 3); }
    size_t bytes() const { return bytes_; }
    uint8_t* row(int32_t y) { return desc_.pixels + static_cast<size_t>(y) * desc_.stride; }
    const uint8_t* row(int32_t y) const { return desc_.pixels + static_cast<size_t>(y) * desc_.stride; }

private:
    vexlor_surface_desc desc_;
    size_t bytes_;
    std::unique_ptr<uint8_t[]> pixels_;
};

// The picture's pixels in the given format: RGB cut to 5, 6, 5 bits; YUV by the library's row converters, for
// which the width must be even (BadValue otherwise). X bytes are 255.
Surface pack(const Picture& picture, uint32_t format);
// A pixel value of a 32-bit or 565 format.
uint32_t pack(Color color, uint32_t format);
// Back again: 5 and 6 bits by repeating their highest, YUV by the library's row converters.
Picture unpack(const Surface& surface);

} // namespace tool

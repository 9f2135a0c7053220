// Pictures to draw from and to: packed rows in memory of their own, filled with content that is the same in every run.
#pragma once

#include "vexlor.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace bench {

// What the alpha channel of a source holds: any value anywhere, or what interfaces are made of: runs of opaque (70 %)
// and transparent (25 %) pixels with soft edges (5 %) between them.
enum class Content { random, interface };

class Picture {
public:
    // Pictures of different `offset` (bytes, a multiple of 64) start at different places of a page.
    Picture(int width, int height, uint32_t format, size_t offset = 0);

    int width() const { return surface_.width; }
    int height() const { return surface_.height; }
    uint32_t format() const { return surface_.format; }
    int stride() const { return static_cast<int>(surface_.stride); }
    size_t bytes() const { return surface_.stride * static_cast<size_t>(surface_.height); }
    uint8_t* row(int y) const { return surface_.pixels + static_cast<size_t>(y) * surface_.stride; }
    uint8_t* pixels() const { return surface_.pixels; }
    const vexlor_surface_desc& surface() const { return surface_; }

private:
    struct Free {
        void operator()(uint8_t* memory) const;
    };
    std::unique_ptr<uint8_t, Free> memory_;
    vexlor_surface_desc surface_;
};

// Soft gradients with noise on top, so that shifted or filtered copies look alike from afar. Colours of 32-bit pixels are
// multiplied by their alpha when asked for.
void paint(const Picture& picture, Content content, bool premultiplied);
// Gradients that run the other way: what a destination holds before anybody draws.
void paint_backdrop(const Picture& picture);

// The picture seen from afar: the mean of each channel over blocks of 16 x 16 pixels, four per block: blue, green, red,
// alpha, or V, Y, U and 0. Components are scaled to 0..255. `format` says how to read the bytes.
std::vector<double> blocks(const Picture& picture, uint32_t format);
size_t blocks_across(const Picture& picture);

} // namespace bench

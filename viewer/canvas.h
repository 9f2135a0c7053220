// The finished 32-bit picture of the window, and what is drawn over it by the library: areas, lines, letters.
#pragma once

#include "context.h"
#include "surface.h"

#include <array>
#include <string_view>

namespace view {

enum class Ink : uint8_t { white, grey, amber, cyan, red };
constexpr size_t ink_count = 5;

class Canvas {
public:
    static constexpr uint32_t format = VEXLOR_FMT_B8G8R8X8;

    Canvas();
    void resize(tool::Size size);
    tool::Size size() const { return pixels_.size(); }
    tool::Surface& pixels() { return pixels_; }
    const tool::Surface& pixels() const { return pixels_; }

    // Everything is cut at the canvas's edges. alpha: 255 covers what is below.
    void area(tool::Rect rect, tool::Color color, uint8_t alpha = 255);
    void frame(tool::Rect rect, Ink ink, uint8_t alpha = 255);
    void text(tool::Point at, std::string_view text, Ink ink);
    void picture(const tool::Surface& from, tool::Rect part, tool::Point at); // B8G8R8X8 or B8G8R8A8

    // A letter's cell.
    static constexpr int32_t letter_width = 9, letter_height = 15;

private:
    tool::Surface pixels_;
    tool::Context ctx_;
    std::array<tool::Surface, ink_count> letters_;
};

tool::Color color_of(Ink ink);

// `pixels` of any drawable format as the canvas holds them.
void to_screen(const tool::Surface& pixels, tool::Surface& screen);

} // namespace view

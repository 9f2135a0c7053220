// Which part of the source is drawn where in the window, and which source pixel lies under a window pixel.
#pragma once

#include "parse.h"

#include <optional>

namespace view {

constexpr int32_t most_zoom = 128;

struct Zoom {
    int32_t factor = 0;  // window pixels per source pixel; 0 fits the whole source into the window
    double x = 0, y = 0; // source position in the middle of the window
};

struct Layout {
    tool::Rect from, to; // from the source, to the window
};

// pairs: the source holds its pixels in pairs, so that left edge and width have to be even.
Layout layout(const Zoom& zoom, tool::Size source, tool::Size window, bool pairs);

// Nothing where there is no source.
std::optional<tool::Point> source_at(const Layout& layout, tool::Point window);

// Zoom in (steps above 0) or out, keeping what lies under the window's point `at` in its place.
Zoom zoomed(const Zoom& zoom, int steps, tool::Point at, tool::Size source, tool::Size window);
// Move the source by window pixels.
Zoom moved(const Zoom& zoom, tool::Point by, tool::Size source, tool::Size window);

} // namespace view

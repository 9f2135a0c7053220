#include "geometry.h"

#include <algorithm>
#include <cmath>

namespace view {

using tool::Point;
using tool::Rect;
using tool::Size;

namespace {

struct Span {
    int32_t from, length, to, drawn;
};

// One axis of a zoomed picture: whole source pixels, as many as the window holds.
Span span(int32_t factor, double middle, int32_t source, int32_t window, int32_t unit)
{
    const int32_t room = std::max(window / factor, unit);
    const int32_t length = std::min(source, room) / unit * unit;
    const int32_t start = static_cast<int32_t>(std::lround(middle - length / 2.0)) / unit * unit;
    const int32_t from = std::clamp(start, 0, source - length);
    // In a window narrower than one unit the rest is cut by making the pixels smaller.
    const int32_t drawn = std::min(length * factor, window / unit * unit);
    return {from, length, (window - drawn) / 2, drawn};
}

Rect fit(Size source, Size window, int32_t unit)
{
    const double scale =
        std::min(double(window.width) / std::max(source.width, 1), double(window.height) / source.height);
    const auto side = [scale](int32_t length, int32_t most, int32_t step) {
        return std::clamp(static_cast<int32_t>(std::lround(length * scale)) / step * step, step, most);
    };
    const int32_t w = side(source.width, window.width, unit), h = side(source.height, window.height, 1);
    return {(window.width - w) / 2, (window.height - h) / 2, w, h};
}

double keep_inside(double middle, int32_t factor, int32_t source, int32_t window)
{
    const double half = std::min(window / (2.0 * factor), source / 2.0);
    return std::clamp(middle, half, source - half);
}

Zoom inside(Zoom zoom, Size source, Size window)
{
    zoom.x = keep_inside(zoom.x, zoom.factor, source.width, window.width);
    zoom.y = keep_inside(zoom.y, zoom.factor, source.height, window.height);
    return zoom;
}

} // namespace

Layout layout(const Zoom& zoom, Size source, Size window, bool pairs)
{
    const int32_t unit = pairs ? 2 : 1;
    source.width -= source.width % unit;
    if (zoom.factor == 0)
        return {{0, 0, source.width, source.height}, fit(source, window, unit)};
    const Span x = span(zoom.factor, zoom.x, source.width, window.width, unit);
    const Span y = span(zoom.factor, zoom.y, source.height, window.height, 1);
    return {{x.from, y.from, x.length, y.length}, {x.to, y.to, x.drawn, y.drawn}};
}

std::optional<Point> source_at(const Layout& layout, Point window)
{
    const int32_t x = window.x - layout.to.x, y = window.y - layout.to.y;
    if (x < 0 || y < 0 || x >= layout.to.width || y >= layout.to.height)
        return {};
    const auto place = [](int32_t from, int32_t at, int64_t length, int32_t drawn) {
        return from + static_cast<int32_t>(at * length / drawn);
    };
    return Point{place(layout.from.x, x, layout.from.width, layout.to.width),
                 place(layout.from.y, y, layout.from.height, layout.to.height)};
}

Zoom zoomed(const Zoom& zoom, int steps, Point at, Size source, Size window)
{
    const double fitted =
        std::min(double(window.width) / source.width, double(window.height) / source.height);
    const double before = zoom.factor == 0 ? fitted : zoom.factor;
    int32_t factor = 0;
    if (steps > 0) {
        factor = 1;
        while (factor <= before && factor < most_zoom)
            factor *= 2;
    } else if (const int32_t half = zoom.factor / 2; half > fitted) {
        factor = half;
    }
    if (factor == 0)
        return {};
    const double x = zoom.factor == 0 ? source.width / 2.0 : zoom.x;
    const double y = zoom.factor == 0 ? source.height / 2.0 : zoom.y;
    const double dx = at.x - window.width / 2.0, dy = at.y - window.height / 2.0;
    return inside({factor, x + dx / before - dx / factor, y + dy / before - dy / factor}, source, window);
}

Zoom moved(const Zoom& zoom, Point by, Size source, Size window)
{
    if (zoom.factor == 0)
        return zoom;
    return inside({zoom.factor, zoom.x - double(by.x) / zoom.factor, zoom.y - double(by.y) / zoom.factor},
                  source, window);
}

} // namespace view

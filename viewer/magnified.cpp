// Single pixels: their grid, their bytes in memory order, and those under the pointer.
#include "formats.h"
#include "overlay.h"

#include <algorithm>
#include <cstdio>

namespace view {

using tool::Point;
using tool::Rect;
using tool::Size;

namespace {

constexpr int32_t grid_from = 8, bytes_from = 64, pointer_from = 4; // zoom factors

std::string hex(const uint8_t* bytes, size_t count)
{
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        char byte[4];
        std::snprintf(byte, sizeof byte, i == 0 ? "%02X" : " %02X", bytes[i]);
        text += byte;
    }
    return text;
}

const tool::Surface* carried(const Model& model)
{
    const Settings& side = model.sides[model.active];
    try {
        return &model.source.carried(side.source, side.multiplied);
    } catch (const std::exception&) {
        return nullptr; // which the side's refusal tells
    }
}

const uint8_t* pixel(const tool::Surface& surface, Point at)
{
    return surface.row(at.y) + static_cast<size_t>(at.x) * tool::bytes_per_pixel(surface.format());
}

bool holds(const tool::Surface& surface, Point at)
{
    return at.x >= 0 && at.y >= 0 && at.x < surface.size().width && at.y < surface.size().height;
}

void draw_bytes(Canvas& canvas, const tool::Surface& surface, Point at, Rect cell)
{
    const bool two_lines = tool::bytes_per_pixel(surface.format()) == 4;
    const uint8_t* bytes = pixel(surface, at);
    const int32_t w = 5 * Canvas::letter_width + 6, h = (two_lines ? 2 : 1) * Canvas::letter_height + 4;
    const Point corner{cell.x + (cell.width - w) / 2, cell.y + (cell.height - h) / 2};
    canvas.area({corner.x, corner.y, w, h}, {10, 12, 16}, 150);
    canvas.text({corner.x + 3, corner.y + 2}, hex(bytes, 2), Ink::white);
    if (two_lines)
        canvas.text({corner.x + 3, corner.y + 2 + Canvas::letter_height}, hex(bytes + 2, 2), Ink::white);
}

// "B3 42 10 FF  B G R X"; of a YUV pixel its whole pair.
std::string described(const tool::Surface& surface, Point at)
{
    const bool pair = tool::is_yuv(surface.format());
    if (pair)
        at.x -= at.x % 2;
    const auto format = std::ranges::find(tool::formats, surface.format(), &tool::Format::code);
    return hex(pixel(surface, at), pair ? 4 : tool::bytes_per_pixel(surface.format())) + "  " +
           std::string(format->bytes);
}

std::string place(const char* what, Point at)
{
    return std::string(what) + " " + std::to_string(at.x) + "," + std::to_string(at.y);
}

} // namespace

void draw_grid(Canvas& canvas, const Model& model)
{
    const tool::Surface* source = carried(model);
    if (model.zoom.factor < grid_from || source == nullptr)
        return;
    const auto [from, to] = model.layout();
    const int32_t side = model.zoom.factor;
    for (int32_t i = 1; i < from.width; ++i)
        canvas.area({to.x + i * side, to.y, 1, to.height}, {}, 60);
    for (int32_t i = 1; i < from.height; ++i)
        canvas.area({to.x, to.y + i * side, to.width, 1}, {}, 60);
    if (side < bytes_from || !model.panels)
        return;
    for (int32_t y = 0; y < from.height; ++y)
        for (int32_t x = 0; x < from.width; ++x)
            if (const Point at{from.x + x, from.y + y}; holds(*source, at))
                draw_bytes(canvas, *source, at, {to.x + x * side, to.y + y * side, side, side});
}

void draw_bytes_under_pointer(Canvas& canvas, const Model& model, const Sides& sides)
{
    const tool::Surface* source = carried(model);
    const auto at = source_at(model.layout(), model.pointer);
    if (model.zoom.factor < pointer_from || source == nullptr || !at || !holds(*source, *at))
        return;
    std::vector<Line> lines{{place("source", *at), Ink::grey}, {described(*source, *at)}};
    for (size_t i = 0; i < sides.size(); ++i) {
        const tool::Surface& target = sides[i].target();
        if (!model.shows(i) || !holds(target, model.pointer))
            continue;
        lines.push_back(
            {place(i == 0 ? "target A" : "target B", model.pointer), i == 0 ? Ink::amber : Ink::cyan});
        lines.push_back({described(target, model.pointer)});
    }
    const auto [from, to] = model.layout();
    const int32_t side = model.zoom.factor;
    canvas.frame({to.x + (at->x - from.x) * side, to.y + (at->y - from.y) * side, side, side}, Ink::white);
    constexpr int32_t away = 20;
    const Size size = panel_size(lines);
    const auto beside = [](int32_t pointer, int32_t length, int32_t room) {
        return pointer + away + length <= room ? pointer + away : std::max(pointer - away - length, 0);
    };
    draw_panel(canvas,
               {beside(model.pointer.x, size.width, model.window.width),
                beside(model.pointer.y, size.height, model.window.height)},
               lines, 225);
}

} // namespace view

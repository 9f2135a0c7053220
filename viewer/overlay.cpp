#include "overlay.h"

#include "parse.h"

#include <algorithm>
#include <cstdio>

namespace view {

using tool::Point;
using tool::Size;

namespace {

constexpr tool::Color shade{10, 12, 16};
constexpr int32_t padding = 9, margin = 12;

void draw_wipe_bar(Canvas& canvas, const Model& model)
{
    const int32_t x = model.wipe_x(), h = model.window.height, y = h / 2;
    canvas.area({x - 2, 0, 4, h}, shade, 120);
    canvas.area({x - 1, 0, 2, h}, color_of(Ink::white));
    canvas.area({x - 30, y - 14, 60, 28}, shade, 210);
    canvas.frame({x - 30, y - 14, 60, 28}, Ink::white);
    canvas.area({x - 1, y - 14, 2, 28}, color_of(Ink::white));
    canvas.text({x - 20, y - 7}, "A", model.active == 0 ? Ink::amber : Ink::grey);
    canvas.text({x + 12, y - 7}, "B", model.active == 1 ? Ink::cyan : Ink::grey);
}

// Cuts a text into lines of at most `width` letters, between words.
std::vector<Line> wrapped(const std::string& text, size_t width, Ink ink)
{
    std::vector<Line> lines;
    for (const std::string& paragraph : tool::split(text, '\n')) {
        std::string line;
        for (const std::string& word : tool::split(paragraph, ' ')) {
            if (!line.empty() && line.size() + 1 + word.size() > width) {
                lines.push_back({line, ink});
                line.clear();
            }
            line += (line.empty() ? "" : " ") + word;
        }
        lines.push_back({line, ink});
    }
    return lines;
}

// Why a side is not what it should be, in the middle of what is seen of it.
void draw_refusals(Canvas& canvas, const Model& model, const Sides& sides)
{
    const int32_t middle = model.wipe_x(), width = model.window.width;
    for (size_t i = 0; i < sides.size(); ++i) {
        if (sides[i].refusal().empty() || !model.shows(i))
            continue;
        const bool part = model.mode == Mode::wipe;
        const int32_t left = part && i == 1 ? middle : 0, right = part && i == 0 ? middle : width;
        const int32_t letters = std::clamp((right - left) / Canvas::letter_width - 6, 16, 60);
        std::vector<Line> lines = wrapped(sides[i].refusal(), static_cast<size_t>(letters), Ink::white);
        lines.insert(lines.begin(), {i == 0 ? "Side A" : "Side B", Ink::red});
        const Size size = panel_size(lines);
        const int32_t y = (model.window.height - size.height) / 2 +
                          (model.mode == Mode::single ? 0 : (i == 0 ? -1 : 1) * (size.height / 2 + 24));
        draw_panel(canvas, {left + (right - left - size.width) / 2, y}, lines, 225);
    }
}

} // namespace

std::string milliseconds(double seconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f ms", seconds * 1e3);
    return text;
}

Size panel_size(const std::vector<Line>& lines)
{
    size_t longest = 0;
    for (const Line& line : lines)
        longest = std::max(longest, line.text.size());
    return {static_cast<int32_t>(longest) * Canvas::letter_width + 2 * padding,
            static_cast<int32_t>(lines.size()) * Canvas::letter_height + 2 * padding};
}

void draw_panel(Canvas& canvas, Point at, const std::vector<Line>& lines, uint8_t alpha)
{
    const Size size = panel_size(lines);
    canvas.area({at.x, at.y, size.width, size.height}, shade, alpha);
    at = {at.x + padding, at.y + padding};
    for (const Line& line : lines) {
        canvas.text(at, line.text, line.ink);
        at.y += Canvas::letter_height;
    }
}

void draw_calls(Canvas& canvas, const Model& model, const Sides& sides)
{
    std::vector<Line> lines{
        {std::string("These C calls draw side ") + (model.active == 0 ? "A" : "B") + " (ctrl+c copies them)",
         model.active == 0 ? Ink::amber : Ink::cyan}};
    for (const std::string& line : tool::split(sides[model.active].calls(), '\n'))
        if (!line.empty())
            lines.push_back({line, line.starts_with("/*") ? Ink::red : Ink::white});
    draw_panel(canvas, {margin, model.window.height - margin - panel_size(lines).height}, lines);
}

void draw_help(Canvas& canvas)
{
    std::vector<Line> lines{{"vexlor-view", Ink::amber}, {""}};
    for (const KeyHelp& key : key_help()) {
        std::string names = key.names;
        names.resize(14, ' ');
        lines.push_back({names + key.text});
    }
    lines.insert(lines.end(),
                 {{""},
                  {"Drag the sprite, the wipe bar or the zoomed picture with the pointer.", Ink::grey},
                  {"Zoomed in far enough, each pixel shows its bytes in memory order.", Ink::grey}});
    const Size size = panel_size(lines);
    const Point at{std::max((canvas.size().width - size.width) / 2, 0),
                   std::max((canvas.size().height - size.height) / 2, 0)};
    draw_panel(canvas, at, lines, 248);
    canvas.frame({at.x, at.y, size.width, size.height}, Ink::grey);
}

bool room_for_all(Size window)
{
    // Settings, and the calls of a picture and a sprite by alpha test, which are the most.
    constexpr int32_t lines = 16 + 16;
    return window.height >= lines * Canvas::letter_height + 4 * padding + 3 * margin;
}

void draw_overlay(Canvas& canvas, const Model& model, const Sides& sides)
{
    draw_grid(canvas, model);
    if (model.mode == Mode::wipe)
        draw_wipe_bar(canvas, model);
    draw_refusals(canvas, model, sides);
    if (model.panels) {
        if (!model.calls || room_for_all(model.window))
            draw_settings(canvas, model, sides);
        draw_graph(canvas, model);
        if (model.calls)
            draw_calls(canvas, model, sides);
        draw_bytes_under_pointer(canvas, model, sides);
    }
    if (!model.message.empty()) {
        const std::vector<Line> lines{{model.message, Ink::amber}};
        const Size size = panel_size(lines);
        draw_panel(canvas, {(model.window.width - size.width) / 2, model.window.height / 4}, lines, 225);
    }
    if (model.help)
        draw_help(canvas);
}

} // namespace view

// The panels of the upper edge: settings of both sides, and the times of the last frames.
#include "compose.h"
#include "overlay.h"

#include <algorithm>
#include <cmath>

namespace view {

using tool::Rect;

namespace {

constexpr int32_t margin = 12;

std::string padded(std::string text, size_t width)
{
    text.resize(std::max(width, text.size() + 1), ' ');
    return text;
}

std::string size_text(tool::Size size)
{
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

std::string mode_text(const Model& model, const Sides& sides)
{
    if (model.mode == Mode::single)
        return "";
    const Unequal unequal = count_unequal(sides[0].screen(), sides[1].screen());
    const std::string found = unequal.pixels == 0
                                  ? "A and B show equal colours"
                                  : std::to_string(unequal.pixels) + " pixels differ, by at most " +
                                        std::to_string(unequal.largest);
    return (model.mode == Mode::wipe ? "" : "difference x" + std::to_string(model.amplify) + ": ") + found;
}

} // namespace

void draw_settings(Canvas& canvas, const Model& model, const Sides& sides)
{
    constexpr size_t keys_width = 4, names_width = 12, values_width = 15;
    const Layout layout = model.layout();
    std::string where =
        size_text(model.source.size()) + " shown at " + size_text({layout.to.width, layout.to.height});
    if (model.zoom.factor != 0)
        where += ", zoom " + std::to_string(model.zoom.factor);
    std::vector<Line> lines{{model.source.title()}, {where, Ink::grey}, {"", Ink::grey}};
    const auto left = std::string(keys_width + names_width, ' ');
    lines[2].text = left;
    for (int i = 0; i < setting_count; ++i) {
        const Shown a = shown(model.sides[0], i);
        lines.push_back({padded(a.key, keys_width) + padded(a.name, names_width), Ink::grey});
    }
    lines.push_back({padded("", keys_width) + padded("time", names_width), Ink::grey});
    lines.push_back({mode_text(model, sides), Ink::white});
    lines.push_back({"h  help", Ink::grey});
    lines[1].text =
        padded(lines[1].text, keys_width + names_width + 2 * values_width); // as wide as the table
    draw_panel(canvas, {margin, margin}, lines);

    // The columns of the sides, each in its own ink.
    constexpr int32_t inside = margin + 9;
    for (size_t side = 0; side < 2; ++side) {
        const bool drawn = model.shows(side);
        const bool active = side == model.active;
        const Ink own = side == 0 ? Ink::amber : Ink::cyan;
        tool::Point at{inside + static_cast<int32_t>(keys_width + names_width + side * values_width) *
                                    Canvas::letter_width,
                       inside + 2 * Canvas::letter_height};
        const auto put = [&canvas, &at](const std::string& text, Ink ink) {
            canvas.text(at, text, ink);
            at.y += Canvas::letter_height;
        };
        put(std::string(side == 0 ? "A" : "B") + (active ? " <" : ""), active ? own : Ink::grey);
        for (int i = 0; i < setting_count; ++i) {
            const std::string value = shown(model.sides[side], i).value;
            const bool differs = value != shown(model.sides[1 - side], i).value;
            put(value, !drawn ? Ink::grey : differs ? own : Ink::white);
        }
        put(drawn ? milliseconds(sides[side].seconds()) : "-", drawn ? Ink::white : Ink::grey);
    }
}

void draw_graph(Canvas& canvas, const Model& model)
{
    constexpr int32_t width = 264, height = 96, bar = 2, foot = 18;
    const Rect box{model.window.width - margin - width, margin, width, height};
    constexpr int32_t settings_width = 480;
    if (box.x < settings_width || model.times.empty())
        return;
    canvas.area(box, {10, 12, 16}, 215);
    double most = 0.001;
    for (const Times& t : model.times)
        most = std::max({most, t.a, t.b});
    const int32_t floor = box.y + height - foot, room = height - foot - 8;
    const auto draw = [&](int32_t x, double seconds, Ink ink) {
        const int32_t h = static_cast<int32_t>(std::lround(seconds / most * room));
        canvas.area({x, floor - h, bar, h}, color_of(ink), 170);
    };
    int32_t x = box.x + width - 12 - bar * static_cast<int32_t>(model.times.size());
    for (const Times& t : model.times) {
        // The shorter bar in front.
        const bool a_first = t.a >= t.b;
        draw(x, a_first ? t.a : t.b, a_first ? Ink::amber : Ink::cyan);
        draw(x, a_first ? t.b : t.a, a_first ? Ink::cyan : Ink::amber);
        x += bar;
    }
    canvas.area({box.x + 9, floor, width - 18, 1}, color_of(Ink::grey));
    const Times& now = model.times.back();
    canvas.text({box.x + 9, floor + 2}, now.a > 0 ? "A " + milliseconds(now.a) : "", Ink::amber);
    canvas.text({box.x + width / 2, floor + 2}, now.b > 0 ? "B " + milliseconds(now.b) : "", Ink::cyan);
    canvas.text({box.x + 9, box.y + 4}, "most " + milliseconds(most), Ink::grey);
}

} // namespace view

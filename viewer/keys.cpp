// What each key does, in the order of the help text.
#include "failure.h"
#include "model.h"
#include "parse.h"

#include <algorithm>

namespace view {

namespace {

constexpr int32_t pan = 64; // window pixels

void move_wipe(Model& m, int32_t by) { m.wipe = std::clamp(m.wipe + by, 0, 1000); }
void change_amplify(Model& m, bool up) { m.amplify = std::clamp(up ? m.amplify * 2 : m.amplify / 2, 1, 256); }
void move_source(Model& m, int32_t x, int32_t y)
{
    m.zoom = moved(m.zoom, {x, y}, m.source.size(), m.window);
}
void move_sprite(Model& m, int32_t x, int32_t y) { m.sprite = {m.sprite.x + x, m.sprite.y + y}; }

void zoom(Model& m, int steps)
{
    const tool::Point middle{m.window.width / 2, m.window.height / 2};
    m.zoom = zoomed(m.zoom, steps, m.pointer.x < 0 ? middle : m.pointer, m.source.size(), m.window);
}

void step(Model& m, int by)
{
    if (!m.source.step(by))
        return;
    m.zoom = {};
    for (Settings& side : m.sides) {
        const bool follows = side.source == source_for(true) || side.source == source_for(false);
        if (follows)
            side.source = m.source.format();
    }
}

void swap_side(Model& m) { m.active = 1 - m.active; }
void next_mode(Model& m) { m.mode = static_cast<Mode>((static_cast<int>(m.mode) + 1) % 3); }
void escape(Model& m)
{
    if (m.help)
        m.help = false;
    else
        m.quit = true;
}

bool over_sprite(const Model& m)
{
    const int32_t x = m.pointer.x - m.sprite.x, y = m.pointer.y - m.sprite.y;
    return m.sides[m.active].sprite != SpriteOp::off && x >= 0 && y >= 0 && x < m.sprite_size.width &&
           y < m.sprite_size.height;
}

void press(Model& m)
{
    constexpr int32_t reach = 8;
    m.help = false;
    if (m.mode == Mode::wipe && std::abs(m.pointer.x - m.wipe_x()) <= reach)
        m.drag = Model::Drag::wipe;
    else
        m.drag = over_sprite(m) ? Model::Drag::sprite : Model::Drag::source;
}

void move(Model& m, tool::Point to)
{
    const tool::Point by{to.x - m.pointer.x, to.y - m.pointer.y};
    m.pointer = to;
    switch (m.drag) {
    case Model::Drag::wipe: m.wipe = std::clamp(to.x * 1000 / m.window.width, 0, 1000); break;
    case Model::Drag::sprite: move_sprite(m, by.x, by.y); break;
    case Model::Drag::source: move_source(m, by.x, by.y); break;
    default: break;
    }
}

} // namespace

// clang-format off
const std::array<Key, 38> keys{{
    {"f",           "filter",                                      [](Model& m) { m.chosen().filter = (m.chosen().filter + 1) % 3; }},
    {"c",           "format that the picture is carried as",       [](Model& m) { next_source(m.chosen()); }},
    {"o",           "format that is drawn into",                   [](Model& m) { next_target(m.chosen()); }},
    {"b",           "picture written, or blended by its alpha",    [](Model& m) { m.chosen().blended ^= true; }},
    {"a",           "sprite: off, written, tested, blended",       [](Model& m) { next_sprite(m.chosen()); }},
    {"u",           "colours multiplied by alpha beforehand",      [](Model& m) { m.chosen().multiplied ^= true; }},
    {"m",           "alpha mode",                                  [](Model& m) { m.chosen().alpha_mode ^= 1; }},
    {"d",           "destination alpha",                           [](Model& m) { m.chosen().alpha_dst_op = (m.chosen().alpha_dst_op + 1) % 3; }},
    {"g",           "global alpha down, up",                       [](Model& m) { change_alpha(m.chosen(), -16); }},
    {"G",           "",                                            [](Model& m) { change_alpha(m.chosen(), 16); }},
    {"s",           "SIMD",                                        [](Model& m) { m.chosen().simd ^= true; }},
    {"tab",         "keys change the other side",                  swap_side},
    {"e",           "make the other side equal to this one",       [](Model& m) { m.sides[1 - m.active] = m.chosen(); }},
    {"r",           "everything as at the start",                  [](Model& m) { m.reset(); }},
    {"1",           "one side, wipe, difference",                  [](Model& m) { m.mode = Mode::single; }},
    {"2",           "",                                            [](Model& m) { m.mode = Mode::wipe; }},
    {"3",           "",                                            [](Model& m) { m.mode = Mode::difference; }},
    {"v",           "the next of these",                           next_mode},
    {"[",           "wipe bar left, right",                        [](Model& m) { move_wipe(m, -25); }},
    {"]",           "",                                            [](Model& m) { move_wipe(m, 25); }},
    {",",           "amplify the difference less, more",           [](Model& m) { change_amplify(m, false); }},
    {".",           "",                                            [](Model& m) { change_amplify(m, true); }},
    {"+",           "zoom in, out, fit (or the wheel)",            [](Model& m) { zoom(m, 1); }},
    {"-",           "",                                            [](Model& m) { zoom(m, -1); }},
    {"0",           "",                                            [](Model& m) { m.zoom = {}; }},
    {"shift+left",  "move the zoomed picture (or drag it)",        [](Model& m) { move_source(m, pan, 0); }},
    {"shift+right", "",                                            [](Model& m) { move_source(m, -pan, 0); }},
    {"shift+up",    "",                                            [](Model& m) { move_source(m, 0, pan); }},
    {"shift+down",  "",                                            [](Model& m) { move_source(m, 0, -pan); }},
    {"left",        "previous, next picture of a folder",          [](Model& m) { step(m, -1); }},
    {"right",       "",                                            [](Model& m) { step(m, 1); }},
    {"space",       "stop and continue a stream",                  [](Model& m) { m.paused ^= true; }},
    {"i",           "panels",                                      [](Model& m) { m.panels ^= true; }},
    {"t",           "C calls",                                     [](Model& m) { m.calls ^= true; }},
    {"ctrl+c",      "copy the C calls to the clipboard",           [](Model& m) { m.copy_calls = true; }},
    {"h",           "this help (or F1)",                           [](Model& m) { m.help ^= true; }},
    {"q",           "quit",                                        [](Model& m) { m.quit = true; }},
    {"escape",      "",                                            escape},
}};
// clang-format on

std::vector<KeyHelp> key_help()
{
    std::vector<KeyHelp> lines;
    for (const Key& key : keys) {
        const std::string_view name = key.name;
        if (key.help[0] != '\0')
            lines.push_back({key.name, key.help});
        else if (name.starts_with("shift+"))
            lines.back().names = "shift+arrows";
        else
            lines.back().names.append(" ").append(name);
    }
    return lines;
}

void play(Model& model, const std::string& word)
{
    model.message.clear();
    const std::vector<std::string> parts = tool::split(word, ':');
    const auto key = std::ranges::find_if(keys, [&word](const Key& k) { return word == k.name; });
    if (key != keys.end())
        key->act(model);
    else if (parts.size() == 2 && parts[0] == "move")
        move(model, tool::parse_point(parts[1]));
    else if (parts.size() == 2 && parts[0] == "wheel")
        zoom(model, tool::parse_integer(parts[1], -1, 1));
    else if (word == "press")
        press(model);
    else if (word == "release")
        model.drag = Model::Drag::nothing;
    else
        throw tool::BadValue("'" + word +
                             "' is neither a key of the help text nor move:X,Y, press, release, "
                             "wheel:1 or wheel:-1");
}

} // namespace view

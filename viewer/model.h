// All that the viewer knows between frames, and what keys and the pointer change of it.
#pragma once

#include "geometry.h"
#include "settings.h"
#include "source.h"

#include <array>
#include <deque>
#include <string>
#include <vector>

namespace view {

enum class Mode : uint8_t { single, wipe, difference };

struct Times {
    double a = 0, b = 0; // seconds; b is 0 where that side is not drawn
};

struct Model {
    explicit Model(Source& shown, tool::Size sprite_size);
    void reset();

    Source& source;
    const tool::Size sprite_size;
    tool::Size window{1280, 720};

    std::array<Settings, 2> sides;
    size_t active = 0; // the side that keys change
    Mode mode = Mode::single;
    int32_t wipe = 500; // thousandths of the window's width that show side A
    int32_t amplify = 16;
    Zoom zoom;
    tool::Point sprite{0, 0}; // its upper left corner in the window
    tool::Point pointer{-1, -1};
    bool panels = true, calls = true, help = false, paused = false;
    std::string message; // in answer to the last key

    enum class Drag : uint8_t { nothing, sprite, wipe, source } drag = Drag::nothing;

    bool quit = false, copy_calls = false; // wishes to the program around
    std::deque<Times> times;               // of the last frames, the newest at the end

    Settings& chosen() { return sides[active]; }
    bool shows(size_t side) const { return mode != Mode::single || side == active; }
    Layout layout() const;
    int32_t wipe_x() const { return window.width * wipe / 1000; }
    void add_times(Times now);
    void place_sprite(); // in the middle of the window
};

struct Key {
    const char* name;
    const char* help; // empty: its neighbour's text tells
    void (*act)(Model&);
};
extern const std::array<Key, 38> keys;

// The keys that belong together, and what they do.
struct KeyHelp {
    std::string names, text;
};
std::vector<KeyHelp> key_help();

// One word: a key's name, move:X,Y, press, release or wheel:N. BadValue when there is no such thing.
void play(Model& model, const std::string& word);

} // namespace view

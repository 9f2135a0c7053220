// What is written and drawn over the picture.
#pragma once

#include "canvas.h"
#include "model.h"
#include "side.h"

#include <array>

namespace view {

using Sides = std::array<Side, 2>;

// Whether settings and C calls have room one below the other; otherwise the calls take the settings' place.
bool room_for_all(tool::Size window);

void draw_overlay(Canvas& canvas, const Model& model, const Sides& sides);

// Its parts.
void draw_settings(Canvas& canvas, const Model& model, const Sides& sides);
void draw_graph(Canvas& canvas, const Model& model);
void draw_calls(Canvas& canvas, const Model& model, const Sides& sides);
void draw_help(Canvas& canvas);
void draw_grid(Canvas& canvas, const Model& model);
void draw_bytes_under_pointer(Canvas& canvas, const Model& model, const Sides& sides);

// A panel of lines, each in its ink, with its upper left corner at `at`; returns its size.
struct Line {
    std::string text;
    Ink ink = Ink::white;
};
tool::Size panel_size(const std::vector<Line>& lines);
void draw_panel(Canvas& canvas, tool::Point at, const std::vector<Line>& lines, uint8_t alpha = 215);

std::string milliseconds(double seconds);

} // namespace view

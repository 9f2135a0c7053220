// A picture made of labelled cells, row by row under a title, drawn by the library.
#pragma once

#include "surface.h"

#include <string>
#include <vector>

namespace tool {

// White on black, for labels and as something with sharp edges to be scaled.
Surface text_surface(const std::string& text, uint32_t pixel_format);

class Board {
public:
    Board(std::string title, int32_t columns) : title_(std::move(title)), columns_(columns) {}
    // The label's lines are separated by \n. A surface of any format.
    void add(const std::string& label, const Surface& cell);
    Picture draw() const;

private:
    struct Cell {
        std::vector<std::string> label;
        Surface pixels; // B8G8R8X8
    };
    std::string title_;
    int32_t columns_;
    std::vector<Cell> cells_;
};

} // namespace tool

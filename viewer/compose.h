// From the two sides to one picture: one of them, a wipe, or their difference.
#pragma once

#include "canvas.h"
#include "model.h"
#include "side.h"

namespace view {

void compose(Canvas& canvas, const Model& model, const std::array<Side, 2>& sides);

// |a - b| * amplify of each colour byte, at most 255. Alpha is not shown.
void difference(const tool::Surface& a, const tool::Surface& b, int32_t amplify, tool::Surface& out);

struct Unequal {
    int64_t pixels = 0;
    int32_t largest = 0; // of any colour byte
};
Unequal count_unequal(const tool::Surface& a, const tool::Surface& b);

} // namespace view

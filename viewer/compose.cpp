#include "compose.h"

#include <algorithm>
#include <cstdlib>

namespace view {

namespace {

template <class Pixel> void each_pixel(const tool::Surface& a, const tool::Surface& b, Pixel pixel)
{
    for (int32_t y = 0; y < a.size().height; ++y)
        for (int32_t x = 0; x < a.size().width; ++x)
            pixel(x, y, a.row(y) + ptrdiff_t{x} * 4, b.row(y) + ptrdiff_t{x} * 4);
}

} // namespace

void difference(const tool::Surface& a, const tool::Surface& b, int32_t amplify, tool::Surface& out)
{
    each_pixel(a, b, [&out, amplify](int32_t x, int32_t y, const uint8_t* p, const uint8_t* q) {
        uint8_t* o = out.row(y) + ptrdiff_t{x} * 4;
        for (int i = 0; i < 3; ++i)
            o[i] = static_cast<uint8_t>(std::min(std::abs(p[i] - q[i]) * amplify, 255));
        o[3] = 255;
    });
}

Unequal count_unequal(const tool::Surface& a, const tool::Surface& b)
{
    Unequal result;
    each_pixel(a, b, [&result](int32_t, int32_t, const uint8_t* p, const uint8_t* q) {
        int32_t largest = 0;
        for (int i = 0; i < 3; ++i)
            largest = std::max(largest, std::abs(p[i] - q[i]));
        result.pixels += largest != 0;
        result.largest = std::max(result.largest, largest);
    });
    return result;
}

void compose(Canvas& canvas, const Model& model, const std::array<Side, 2>& sides)
{
    const auto [width, height] = model.window;
    const tool::Surface &a = sides[0].screen(), &b = sides[1].screen();
    const int32_t middle = model.wipe_x();
    switch (model.mode) {
    case Mode::single: canvas.picture(sides[model.active].screen(), {0, 0, width, height}, {0, 0}); break;
    case Mode::wipe:
        canvas.picture(a, {0, 0, middle, height}, {0, 0});
        canvas.picture(b, {middle, 0, width - middle, height}, {middle, 0});
        break;
    case Mode::difference: difference(a, b, model.amplify, canvas.pixels()); break;
    }
}

} // namespace view

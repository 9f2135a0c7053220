// The sprite: a picture with alpha that is drawn over the source and can be dragged.
#pragma once

#include "picture.h"
#include "surface.h"

#include <map>
#include <utility>

namespace view {

// A shaded ball with a soft shadow.
tool::Picture ball(int32_t diameter);

class Sprite {
public:
    explicit Sprite(tool::Picture picture) : picture_(std::move(picture)) {}
    tool::Size size() const { return picture_.size; }
    const tool::Surface& as(uint32_t format, bool multiplied);

private:
    tool::Picture picture_;
    std::map<std::pair<uint32_t, bool>, tool::Surface> made_;
};

} // namespace view

// One side of a comparison: source and sprite drawn with its settings, the calls, their time, any refusal.
#pragma once

#include "canvas.h"
#include "geometry.h"
#include "pen.h"
#include "source.h"
#include "sprite.h"

#include <string>

namespace view {

class Side {
public:
    Side();
    void draw(const Settings& settings, Source& source, const Layout& layout, Sprite& sprite, tool::Point at,
              tool::Size window, const Clock& clock);

    const tool::Surface& screen() const { return screen_; } // as the canvas holds it
    const tool::Surface& target() const { return target_; } // as the settings ask for
    const std::string& calls() const { return calls_; }
    const std::string& refusal() const { return refusal_; } // why something is missing, or empty
    double seconds() const { return seconds_; }

private:
    void prepare(tool::Size window, uint32_t format, bool chequered);

    tool::Surface screen_, target_;
    std::string calls_, refusal_;
    double seconds_ = 0;
};

} // namespace view

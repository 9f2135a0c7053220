// Model and drawing together: what a window, or a run without one, shows frame by frame.
#pragma once

#include "canvas.h"
#include "model.h"
#include "overlay.h"
#include "side.h"

#include <optional>
#include <string>

namespace view {

class Stage {
public:
    Stage(Source& source, tool::Picture sprite, Clock clock);

    Model model;
    Canvas canvas;
    Sides sides;

    void resize(tool::Size window);
    // Sides that would come out as they are, are drawn anew only if so wished.
    void draw(bool anew = false);

private:
    // All that a side's picture depends on.
    struct Inputs {
        Settings settings;
        std::array<int32_t, 12> places;
        int64_t source;

        bool operator==(const Inputs&) const = default;
    };
    Inputs inputs(size_t side) const;

    Sprite sprite_;
    Clock clock_;
    std::array<std::optional<Inputs>, 2> drawn_;
};

} // namespace view

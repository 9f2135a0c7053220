// Model and drawing together: what a window, or a run without one, shows frame by frame.
#pragma once

#include "canvas.h"
#include "model.h"
#include "overlay.h"
#include "side.h"

#include <memory>
#include <string>

namespace view {

class Stage {
public:
    Stage(Source& source, tool::Picture sprite, Clock clock);

    Model model;
    Canvas canvas;
    Sides sides;

    void resize(tool::Size window);
    void draw();

private:
    Sprite sprite_;
    Clock clock_;
};

} // namespace view

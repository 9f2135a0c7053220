#include "stage.h"

#include "compose.h"

namespace view {

Stage::Stage(Source& source, tool::Picture sprite, Clock clock)
    : model(source, sprite.size), sprite_(std::move(sprite)), clock_(std::move(clock))
{}

void Stage::resize(tool::Size window)
{
    // The sprite keeps its place relative to the middle.
    model.sprite.x += window.width / 2 - model.window.width / 2;
    model.sprite.y += window.height / 2 - model.window.height / 2;
    model.window = window;
    canvas.resize(window);
}

void Stage::draw()
{
    const Layout layout = model.layout();
    for (size_t i = 0; i < sides.size(); ++i)
        if (model.shows(i))
            sides[i].draw(model.sides[i], model.source, layout, sprite_, model.sprite, model.window, clock_);
    model.add_times({model.shows(0) ? sides[0].seconds() : 0, model.shows(1) ? sides[1].seconds() : 0});
    compose(canvas, model, sides);
    draw_overlay(canvas, model, sides);
}

} // namespace view

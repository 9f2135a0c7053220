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
    if (!room_for_all(window))
        model.calls = false;
    model.window = window;
    canvas.resize(window);
}

Stage::Inputs Stage::inputs(size_t side) const
{
    const auto [from, to] = model.layout();
    return {model.sides[side],
            {from.x, from.y, from.width, from.height, to.x, to.y, to.width, to.height, model.sprite.x,
             model.sprite.y, model.window.width, model.window.height},
            model.source.version()};
}

void Stage::draw(bool anew)
{
    const Layout layout = model.layout();
    bool any = false;
    for (size_t i = 0; i < sides.size(); ++i) {
        const Inputs now = inputs(i);
        if (!model.shows(i) || (!anew && drawn_[i] == now))
            continue;
        sides[i].draw(model.sides[i], model.source, layout, sprite_, model.sprite, model.window, clock_);
        drawn_[i] = now;
        any = true;
    }
    if (any)
        model.add_times({model.shows(0) ? sides[0].seconds() : 0, model.shows(1) ? sides[1].seconds() : 0});
    compose(canvas, model, sides);
    draw_overlay(canvas, model, sides);
}

} // namespace view

#include "model.h"

#include "formats.h"

#include <algorithm>

namespace view {

Model::Model(Source& shown, tool::Size size) : source(shown), sprite_size(size) { reset(); }

void Model::reset()
{
    for (Settings& side : sides) {
        side = Settings{};
        side.source = source.format();
        side.target = target_for(side.source);
        side.sprite = side.target == VEXLOR_FMT_565 ? SpriteOp::global : SpriteOp::pixel;
    }
    active = 0;
    mode = Mode::single;
    wipe = 500;
    amplify = 16;
    zoom = {};
    place_sprite();
}

Layout Model::layout() const
{
    const bool pairs = tool::is_yuv(sides[0].source) || tool::is_yuv(sides[1].source);
    return view::layout(zoom, source.size(), window, pairs);
}

void Model::place_sprite()
{
    sprite = {(window.width - sprite_size.width) / 2, (window.height - sprite_size.height) / 2};
}

void Model::add_times(Times now)
{
    constexpr size_t most = 120;
    times.push_back(now);
    if (times.size() > most)
        times.pop_front();
}

} // namespace view

#include "side.h"

#include "failure.h"
#include "formats.h"

#include <array>

namespace view {

using tool::Rect;
using tool::Size;
using tool::Surface;

namespace {

constexpr int32_t chequer = 16;
constexpr tool::Color backdrop{24, 26, 30}, dark{96, 96, 96}, bright{150, 150, 150};

// Opaque areas of the background.
class Filler {
public:
    explicit Filler(const Surface& surface) : surface_(surface) {}
    void fill(Rect rect, tool::Color color)
    {
        vexlor_surface_clip(surface_.desc(), &rect.x, &rect.y, &rect.width, &rect.height);
        const uint32_t pixel = tool::pack(color, surface_.format());
        const bool half =
            surface_.format() == VEXLOR_FMT_565; // a 16-bit pixel fills both halves of the colour
        vexlor_context_set_color(ctx_.get(), half ? pixel | pixel << 16 : pixel);
        vexlor_fill(ctx_.get(), surface_.desc(), rect.x, rect.y, rect.width, rect.height);
    }

private:
    const Surface& surface_;
    tool::Context ctx_ = tool::new_context();
};

void draw_sprite(Pen& pen, const Settings& s, Sprite& sprite, const Surface& target, tool::Point at)
{
    const Surface& pixels = sprite.as(sprite_format(s.target), s.multiplied);
    Rect to{at.x, at.y, pixels.size().width, pixels.size().height};
    vexlor_surface_clip(target.desc(), &to.x, &to.y, &to.width, &to.height);
    if (s.sprite == SpriteOp::off || to.width <= 0 || to.height <= 0)
        return;
    pen.describe({"sprite", pixels.desc()});
    switch (s.sprite) {
    case SpriteOp::test:
        pen.alpha_op(VEXLOR_ALPHA_OP_TEST);
        pen.alpha_test(sprite_test, sprite_ref);
        break;
    case SpriteOp::pixel:
    case SpriteOp::global:
        pen.alpha_op(VEXLOR_ALPHA_OP_BLEND);
        pen.alpha_src(s.sprite == SpriteOp::pixel ? VEXLOR_ALPHA_SRC_PIXEL : VEXLOR_ALPHA_SRC_GLOBAL);
        pen.alpha_mode(s.alpha_mode);
        if (s.sprite == SpriteOp::global)
            pen.alpha_value(s.alpha_value);
        break;
    default: pen.alpha_op(VEXLOR_ALPHA_OP_NONE); break;
    }
    pen.alpha_dst_op(s.alpha_dst_op);
    pen.copy({"sprite", pixels.desc()}, {"screen", target.desc()},
             {to.x - at.x, to.y - at.y, to.width, to.height}, {to.x, to.y});
}

} // namespace

Side::Side() : screen_({1, 1}, Canvas::format), target_({1, 1}, Canvas::format) {}

void Side::prepare(Size window, uint32_t format, bool chequered)
{
    const auto differs = [window](const Surface& surface, uint32_t wanted) {
        return surface.size().width != window.width || surface.size().height != window.height ||
               surface.format() != wanted;
    };
    if (differs(target_, format))
        target_ = Surface(window, format);
    if (differs(screen_, Canvas::format))
        screen_ = Surface(window, Canvas::format);
    Filler background(target_);
    background.fill({0, 0, window.width, window.height}, chequered ? dark : backdrop);
    for (int32_t y = 0; chequered && y < window.height; y += chequer)
        for (int32_t x = y / chequer % 2 * chequer; x < window.width; x += 2 * chequer)
            background.fill({x, y, chequer, chequer}, bright);
}

void Side::draw(const Settings& s, Source& source, const Layout& layout, Sprite& sprite, tool::Point at,
                Size window, const Clock& clock)
{
    prepare(window, s.target, s.blended);
    refusal_.clear();
    Pen pen(s.simd, clock);
    const Named to{"screen", target_.desc()};
    pen.describe(to);
    try {
        const Surface& pixels = source.carried(s.source, s.multiplied);
        const Named from{"source", pixels.desc()};
        pen.describe(from);
        pen.filter(s.filter);
        if (s.blended) {
            pen.alpha_op(VEXLOR_ALPHA_OP_BLEND);
            pen.alpha_src(VEXLOR_ALPHA_SRC_PIXEL);
            pen.alpha_mode(s.alpha_mode);
        }
        pen.alpha_dst_op(s.alpha_dst_op);
        pen.scale(from, to, layout.from, layout.to);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        refusal_ = error.what();
    }
    try {
        draw_sprite(pen, s, sprite, target_, at);
    } catch (const tool::Refused& refused) {
        refusal_ += (refusal_.empty() ? "" : "\n") + std::string(refused.what()) + " (the sprite)";
    }
    calls_ = pen.calls();
    seconds_ = pen.seconds();
    to_screen(target_, screen_);
}

} // namespace view

// The ball is computed in integers, so that its pixels are the same wherever the viewer is built.
#include "sprite.h"

#include "alpha.h"

#include <algorithm>

namespace view {

namespace {

// 255 inside a disc of the given radius, falling to 0 over `edge` (squared distances, in 1/16 pixels).
int64_t disc(int64_t dx, int64_t dy, int64_t radius, int64_t edge)
{
    const int64_t inner = std::max<int64_t>(radius - edge, 0);
    const int64_t distance = dx * dx + dy * dy;
    return std::clamp<int64_t>((radius * radius - distance) * 255 / (radius * radius - inner * inner), 0,
                               255);
}

uint8_t byte(int64_t value) { return static_cast<uint8_t>(std::clamp<int64_t>(value, 0, 255)); }

} // namespace

tool::Picture ball(int32_t diameter)
{
    const int64_t side = diameter + diameter / 4, radius = int64_t{diameter} * 8;
    tool::Picture picture({static_cast<int32_t>(side), static_cast<int32_t>(side)}, true);
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x) {
            const int64_t dx = int64_t{x} * 16 + 8 - radius - 16, dy = int64_t{y} * 16 + 8 - radius - 16;
            const int64_t shadow_at = radius / 4;
            const int64_t shadow =
                disc(dx - shadow_at, dy - shadow_at, radius * 9 / 8, radius * 3 / 4) * 140 / 255;
            const int64_t solid = disc(dx, dy, radius, 16);
            // Lit from the upper left, glass-like: the middle lets a quarter of the background through.
            const int64_t lx = dx + radius * 3 / 8, ly = dy + radius * 3 / 8;
            const int64_t light =
                255 - std::min<int64_t>((lx * lx + ly * ly) * 200 / (radius * radius * 2), 255);
            const int64_t shine = disc(lx, ly, radius * 5 / 16, radius * 5 / 16);
            const int64_t glass = 150 + (dx * dx + dy * dy) * 105 / (radius * radius);
            const int64_t alpha = std::min<int64_t>(glass + shine / 2, 255) * solid / 255;
            const bool inside = alpha >= shadow;
            uint8_t* p = picture.row(y) + ptrdiff_t{x} * 4;
            p[0] = inside ? byte(light + shine / 2) : 0;
            p[1] = inside ? byte(light * 110 / 255 + shine) : 0;
            p[2] = inside ? byte(light * 50 / 255 + shine) : 0;
            p[3] = byte(std::max(alpha, shadow));
        }
    return picture;
}

const tool::Surface& Sprite::as(uint32_t format, bool multiplied)
{
    const auto found = made_.find({format, multiplied});
    if (found != made_.end())
        return found->second;
    tool::Picture picture(picture_.size, picture_.has_alpha);
    std::copy_n(picture_.pixels.get(), picture.bytes(), picture.pixels.get());
    if (multiplied)
        tool::premultiply(picture, -1);
    return made_.emplace(std::pair{format, multiplied}, tool::pack(picture, format)).first->second;
}

} // namespace view

// The C++ layer: checked surfaces, errors as results, clipping, and one call over several threads.
//
// A picture is enlarged over the screen by a crew of contexts. Then small ones slide past the screen's edges; clipped
// scaling keeps each pixel where the whole picture would have it.
#include "scene.h"
#include <array>
#include <cstdio>
#include <string_view>
#include <vexlor_parallel.hpp>

int main()
{
    using namespace vexlor;
    vexlor_surface_desc made, framed;
    uint32_t* const day = scene(&made, DAY, 320, 180);
    uint32_t* const night = scene(&framed, NIGHT, 96, 96);
    std::array<uint32_t, 640 * 360> memory{};

    // A view exists only when it fits into its memory; this one does not.
    const auto refused = surface_view::make(memory, 640, 361, format::b8g8r8a8);
    if (refused.error() != result::memory_too_short)
        return 1;
    const auto screen = surface_view::make(memory, 640, 360, format::b8g8r8a8);
    const auto photo = const_surface_view::make(std::span(day, 320 * 180), 320, 180, format::b8g8r8a8);
    const auto sprite = surface_view::make(std::span(night, 96 * 96), 96, 96, format::b8g8r8a8);

    std::array crew{context::make(), context::make()};
    if (!screen || !photo || !sprite || !crew[0] || !crew[1])
        return 1;
    std::array contexts{*std::move(crew[0]), *std::move(crew[1])};
    contexts[0].set_filter(filter::catrom);
    result r = draw_parallel(contexts, *photo, photo->bounds(), *screen, screen->bounds());

    // A round sprite: alpha 255 within, and a soft edge.
    for (int i = 0; i < 96 * 96; ++i) {
        const int dx = 2 * (i % 96) - 95, dy = 2 * (i / 96) - 95, edge = 92 * 92 - dx * dx - dy * dy;
        night[i] = (night[i] & 0xFFFFFF) | static_cast<uint32_t>(std::clamp(edge / 5, 0, 255)) << 24;
    }
    context& ctx = contexts[0];
    ctx.set_alpha_op(alpha_op::blend)
        .set_alpha_source(alpha_source::pixel)
        .set_alpha_destination(alpha_destination::one);
    for (int i = 0; i < 6 && r == result::ok;
         ++i) { // larger and larger, from the left edge past the right one
        const int size = 56 + 26 * i;
        r = ctx.scale_clipped(*sprite, sprite->bounds(), *screen,
                              {i * 114 - 34, 318 - 52 * i - size / 2, size, size});
    }
    if (r != result::ok)
        std::printf("%s\n", to_string(r).data());
    const int status = save("sliding.ppm", &screen->desc());
    free(day);
    free(night);
    return status || r != result::ok;
}

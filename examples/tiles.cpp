// A large picture drawn by several threads. Contexts are cheap and share nothing, so every thread has its own: here
// each draws tiles, whichever comes next, with fills, blends and a scale that may run over the tile's edge. Clipped
// drawing leaves out what lies beside a tile, pixel for pixel, so the tiles fit without a seam.
#include "scene.h"
#include <atomic>
#include <thread>
#include <vector>
#include <vexlor.hpp>

namespace {

constexpr int width = 640, height = 360, tile = 80;

// The whole drawing, through the window that one tile is.
void draw(vexlor::throwing_context& ctx, const vexlor::const_surface_view& photo,
          const vexlor::surface_view& window, vexlor::point at)
{
    using namespace vexlor;
    ctx.set_alpha_op(alpha_op::none).set_filter(filter::catrom);
    ctx.scale_clipped(photo, photo.bounds(), window, {-at.x, -at.y, width, height});
    ctx.set_alpha_op(alpha_op::blend).set_alpha_source(alpha_source::global);
    for (int i = 0; i < 14; ++i) { // rings of translucent panels
        const int w = 560 - 40 * i, h = 300 - 21 * i;
        ctx.set_alpha_value(20).set_color(i % 2 ? 0xFFFFF0D0 : 0xFF4060C0);
        ctx.fill_clipped(window, {(width - w) / 2 - at.x, (height - h) / 2 - at.y, w, h});
    }
    ctx.set_alpha_value(60).set_color(0xFFFFFFFF); // the tile's own edges, to be seen
    ctx.fill(window, {0, 0, window.width(), 1});
    ctx.fill(window, {0, 1, 1, window.height() - 1});
}

} // namespace

int main()
{
    vexlor_surface_desc small, screen;
    uint32_t* const photo = scene(&small, DUSK, 160, 90);
    std::vector<uint32_t> pixels(width * height);
    const vexlor::const_surface_view source(std::span(photo, 160 * 90), 160, 90, vexlor::format::b8g8r8a8);

    constexpr int columns = width / tile, tiles = columns * ((height + tile - 1) / tile);
    std::atomic<int> next = 0;
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&] {
                vexlor::throwing_context ctx;
                for (int n = next++; n < tiles; n = next++) {
                    const vexlor::point at{n % columns * tile, n / columns * tile};
                    // A window into the surface: its own first pixel and size, and the surface's stride.
                    const auto first = pixels.begin() + at.y * width + at.x;
                    draw(ctx, source,
                         vexlor::surface_view(std::span(first, pixels.end()), tile,
                                              std::min(tile, height - at.y), vexlor::format::b8g8r8a8,
                                              width * 4),
                         at);
                }
            });
    }
    free(photo);
    vexlor_surface_desc_init(&screen, width, height, width * 4, pixels.data(), VEXLOR_FMT_B8G8R8A8);
    return save("tiles.ppm", &screen);
}

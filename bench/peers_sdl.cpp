// SDL2: surface blits, with blend modes, alpha modulation and colour keys, and its stretching.
#include "peers.h"

#include <memory>
#include <SDL.h>

namespace bench {
namespace {

using Surface = std::shared_ptr<SDL_Surface>;

Surface view(const Picture& picture, uint32_t format)
{
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceWithFormatFrom(picture.pixels(), picture.width(), picture.height(),
                                           SDL_BITSPERPIXEL(format), picture.stride(), format);
    if (!surface)
        refuse("SDL", SDL_GetError());
    demand(SDL_SetSurfaceBlendMode(surface, SDL_BLENDMODE_NONE) == 0, "SDL");
    return {surface, SDL_FreeSurface};
}

Drawing blit(Surface from, Surface to)
{
    return {"SDL", [=] { demand(SDL_BlitSurface(from.get(), nullptr, to.get(), nullptr) == 0, "SDL"); }};
}

// SDL tells by a colour what is not to be copied. Pixels that fail the library's alpha test get that colour.
Drawing keyed(const Scene& scene)
{
    constexpr uint32_t key = 0x00FF00FF;
    const auto copy = std::make_shared<Picture>(scene.source.width(), scene.source.height(), scene.job.from);
    for (int y = 0; y < copy->height(); ++y) {
        const auto* in = reinterpret_cast<const uint32_t*>(scene.source.row(y));
        std::transform(in, in + copy->width(), reinterpret_cast<uint32_t*>(copy->row(y)),
                       [](uint32_t pixel) { return pixel >> 24 >= reference ? pixel : key; });
    }
    const Surface from = view(*copy, SDL_PIXELFORMAT_ARGB8888),
                  to = view(scene.target, SDL_PIXELFORMAT_ARGB8888);
    demand(SDL_SetColorKey(from.get(), SDL_TRUE, key) == 0, "SDL");
    Drawing drawing = blit(from, to);
    drawing.draw = [copy, draw = drawing.draw] { draw(); };
    return drawing;
}

Drawing blended_fill(const Scene& scene)
{
    // Blending fills are the software renderer's; it takes the surface as its screen.
    const Surface to = view(scene.target, SDL_PIXELFORMAT_ARGB8888);
    const std::shared_ptr<SDL_Renderer> renderer(SDL_CreateSoftwareRenderer(to.get()), [to](SDL_Renderer* r) {
        if (r)
            SDL_DestroyRenderer(r);
    });
    demand(renderer != nullptr, "SDL");
    const auto part = [](int shift) { return static_cast<uint8_t>(fill_color >> shift); };
    demand(SDL_SetRenderDrawBlendMode(renderer.get(), SDL_BLENDMODE_BLEND) == 0, "SDL");
    demand(SDL_SetRenderDrawColor(renderer.get(), part(16), part(8), part(0), weight) == 0, "SDL");
    return {"SDL", [renderer] {
                demand(SDL_RenderFillRect(renderer.get(), nullptr) == 0, "SDL");
                demand(SDL_RenderFlush(renderer.get()) == 0, "SDL");
            }};
}

std::vector<Drawing> drawings(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    const uint32_t format = to.format() == VEXLOR_FMT_565 ? SDL_PIXELFORMAT_RGB565 : SDL_PIXELFORMAT_ARGB8888;
    const uint32_t opaque = to.format() == VEXLOR_FMT_565 ? SDL_PIXELFORMAT_RGB565 : SDL_PIXELFORMAT_RGB888;
    const bool yuv = from.format() & 0x40;
    switch (scene.job.work) {
    case Work::fill: {
        const uint32_t color = to.format() == VEXLOR_FMT_565 ? fill_color & 0xFFFF : fill_color;
        return {{"SDL", [=, surface = view(to, format)] {
                     demand(SDL_FillRect(surface.get(), nullptr, color) == 0, "SDL");
                 }}};
    }
    case Work::fill_blend: return {blended_fill(scene)};
    case Work::copy: return {blit(view(from, format), view(to, format))};
    case Work::copy_opaque: return {blit(view(from, SDL_PIXELFORMAT_RGB888), view(to, format))};
    case Work::alpha_test: return {keyed(scene)};
    case Work::over: {
        // Its fast path wants a destination without alpha, so the alpha byte stays as it is.
        const Surface source = view(from, format);
        demand(SDL_SetSurfaceBlendMode(source.get(), SDL_BLENDMODE_BLEND) == 0, "SDL");
        return {blit(source, view(to, SDL_PIXELFORMAT_RGB888))};
    }
    case Work::global: {
        if (yuv)
            return {};
        const Surface source = view(from, opaque);
        demand(SDL_SetSurfaceBlendMode(source.get(), SDL_BLENDMODE_BLEND) == 0, "SDL");
        demand(SDL_SetSurfaceAlphaMod(source.get(), weight) == 0, "SDL");
        return {blit(source, view(to, opaque))};
    }
    case Work::convert: {
        const uint32_t in = yuv ? SDL_PIXELFORMAT_UYVY : SDL_PIXELFORMAT_RGB888;
        uint32_t out = SDL_PIXELFORMAT_UYVY;
        if (yuv)
            out = to.format() == VEXLOR_FMT_X8R8G8B8 ? SDL_PIXELFORMAT_BGRA8888 : SDL_PIXELFORMAT_ARGB8888;
        return {{"SDL", [&, in, out] {
                     demand(SDL_ConvertPixels(to.width(), to.height(), in, from.pixels(), from.stride(), out,
                                              to.pixels(), to.stride()) == 0,
                            "SDL");
                 }}};
    }
    case Work::scale: {
        if (yuv || (scene.job.filter != Filter::nearest && scene.job.filter != Filter::linear))
            return {};
        if (scene.job.filter == Filter::linear && format == SDL_PIXELFORMAT_RGB565)
            return {};
        const auto stretch = scene.job.filter == Filter::nearest ? SDL_SoftStretch : SDL_SoftStretchLinear;
        return {{"SDL", [=, source = view(from, format), target = view(to, format)] {
                     demand(stretch(source.get(), nullptr, target.get(), nullptr) == 0, "SDL");
                 }}};
    }
    default: return {};
    }
}

} // namespace

Peer sdl_peer()
{
    SDL_version v;
    SDL_GetVersion(&v);
    return {"SDL", std::to_string(v.major) + '.' + std::to_string(v.minor) + '.' + std::to_string(v.patch),
            drawings};
}

} // namespace bench

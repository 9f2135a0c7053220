// What the pictures show: colours, a landscape, a soft disc; and the two kinds of blend. The list of all pictures.
#pragma once

#include "canvas.h"

#include <span>

struct Picture {
    const char* name;
    Page (*draw)();
};
std::span<const Picture> guide_pictures();
std::span<const Picture> irregular_pictures();

constexpr uint32_t navy = rgb(24, 40, 84);
constexpr uint32_t sand = rgb(236, 214, 170);

inline void paint(const Surface& s, auto color)
{
    for (int32_t y = 0; y < s.height(); ++y)
        for (int32_t x = 0; x < s.width(); ++x)
            if (const uint32_t p = color(x, y); s.desc()->format == VEXLOR_FMT_565)
                s.row<uint16_t>(y)[x] = to_565(p);
            else
                s.row(y)[x] = p;
}

// Sky, a sun, hills and the light on them: smooth colours, an edge, a round thing.
inline uint32_t landscape(double x, double y, double height = 0.75)
{
    const auto mixed = [](double a, double b, double t) { return static_cast<uint32_t>(a + (b - a) * t); };
    if (std::hypot(x - 0.72, (y - 0.3) * height) < 0.12 * height / 0.75)
        return rgb(255, mixed(236, 150, y), 120);
    const double far = 0.62 + 0.1 * std::sin(x * 7), near = 0.8 + 0.07 * std::sin(x * 5 + 2);
    if (y > near)
        return rgb(mixed(60, 20, (y - near) * 4), mixed(120, 60, (y - near) * 4), 50);
    if (y > far)
        return rgb(70, mixed(110, 90, x), mixed(150, 110, x));
    return rgb(mixed(60, 250, y), mixed(120, 200, y), mixed(220, 190, y));
}
inline void paint_landscape(const Surface& s)
{
    paint(s, [&](int32_t x, int32_t y) { return landscape(double(x) / s.width(), double(y) / s.height()); });
}
inline void paint_night(const Surface& s)
{
    paint(s, [&](int32_t x, int32_t y) {
        return landscape(double(x) / s.width(), double(y) / s.height()) >> 2 & 0x3F3F3F;
    });
}

// A soft disc; its colour multiplied by its alpha or not.
inline void paint_disc(const Surface& s, uint32_t color, bool premultiplied)
{
    const double middle = s.width() / 2.0;
    paint(s, [&](int32_t x, int32_t y) {
        const double away = std::hypot(x + 0.5 - middle, y + 0.5 - middle) / middle;
        const auto a = static_cast<uint32_t>(255 * std::clamp((0.95 - away) / 0.5, 0.0, 1.0));
        const uint32_t m = premultiplied ? a : 255;
        return a << 24 | ((color >> 16 & 255) * m / 255) << 16 | ((color >> 8 & 255) * m / 255) << 8 |
               (color & 255) * m / 255;
    });
}
inline uint32_t checks(int32_t x, int32_t y)
{
    return (x / 14 + y / 14) % 2 ? rgb(150, 190, 230) : rgb(70, 120, 190);
}

inline void show_alpha(const Page& page, const Surface& s, int32_t x, int32_t y)
{
    Surface alpha(s.width(), s.height(), VEXLOR_FMT_B8G8R8X8);
    paint(alpha, [&](int32_t i, int32_t j) { return grey(s.row(j)[i] >> 24); });
    page.show(alpha, alpha.all(), x, y);
    page.frame({x, y, s.width(), s.height()});
}

inline void blend_by_pixel(const Context& ctx, uint32_t mode, uint32_t dst_op)
{
    vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx.get(), VEXLOR_ALPHA_SRC_PIXEL);
    vexlor_context_set_alpha_mode(ctx.get(), mode);
    vexlor_context_set_alpha_dst_op(ctx.get(), dst_op);
}
inline void blend_by_value(const Context& ctx, uint32_t value, uint32_t dst_op)
{
    vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_value(ctx.get(), static_cast<uint8_t>(value));
    vexlor_context_set_alpha_dst_op(ctx.get(), dst_op);
}

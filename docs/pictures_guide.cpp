// The pictures of the guide and of the front page.
#include "scenes.h"

namespace {

// What the library is for, at a glance: a camera frame converted for a screen, night blended over it, sprites, a panel.
Page screen()
{
    Page page(640, 260);
    Surface frame(640, 260, VEXLOR_FMT_U8Y8V8Y8), day(640, 260, VEXLOR_FMT_B8G8R8A8),
        layer(640, 260, VEXLOR_FMT_B8G8R8A8);
    Surface sprite(96, 96, VEXLOR_FMT_B8G8R8A8);
    paint(day, [](int32_t x, int32_t y) { return landscape(x / 640.0, y / 260.0, 260.0 / 640); });
    for (int32_t y = 0; y < frame.height(); ++y)
        vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(day.row(y), frame.row(y), frame.width());
    const Context ctx;
    ctx.copy(frame, frame.all(), page, 0, 0);
    vexlor_context_set_filter(ctx.get(), VEXLOR_FILTER_CATROM);
    paint(layer, [](int32_t x, int32_t) {
        return 0x081026u | static_cast<uint32_t>(std::clamp(400 - x, 0, 225)) << 24;
    });
    blend_by_pixel(ctx, VEXLOR_ALPHA_STRAIGHT, VEXLOR_ALPHA_DST_BLEND);
    ctx.copy(layer, layer.all(), page, 0, 0);
    paint_disc(sprite, rgb(255, 170, 60), true);
    blend_by_pixel(ctx, VEXLOR_ALPHA_PREMULTIPLIED, VEXLOR_ALPHA_DST_BLEND);
    for (int32_t i = 0; i < 5; ++i)
        ctx.scale(sprite, sprite.all(), page, {20 + i * 62, 130 - i * 18, 36 + i * 14, 36 + i * 14});
    const Context panel;
    blend_by_value(panel, 150, VEXLOR_ALPHA_DST_BLEND);
    panel.fill(page, {380, 170, 240, 70}, navy);
    page.write(400, 186, "LIBVEXLOR", grey(255));
    page.write(400, 204, "FILL, COPY, BLEND,", grey(230));
    page.write(400, 218, "CONVERT, SCALE", grey(230));
    return page;
}

Page alpha_modes()
{
    Page page(608, 176);
    const std::array<std::string_view, 4> words{"STRAIGHT, MODE 0", "PRE, MODE 0: WRONG", "STRAIGHT, MODE 1",
                                                "PRE, MODE 1: RIGHT"};
    for (int32_t i = 0; i < 4; ++i) {
        Surface sprite(140, 140, VEXLOR_FMT_B8G8R8A8), under(140, 140, VEXLOR_FMT_B8G8R8A8);
        paint_disc(sprite, rgb(255, 150, 40), i % 2 == 1);
        paint(under, checks);
        const Context ctx;
        blend_by_pixel(ctx, i / 2 ? VEXLOR_ALPHA_PREMULTIPLIED : VEXLOR_ALPHA_STRAIGHT, VEXLOR_ALPHA_DST_ONE);
        ctx.copy(sprite, sprite.all(), under, 0, 0);
        page.panel(under, 10 + i * 149, 10, words[static_cast<size_t>(i)]);
    }
    return page;
}

Page alpha_destination()
{
    Page page(608, 152);
    Surface sprite(112, 112, VEXLOR_FMT_B8G8R8A8), under(112, 112, VEXLOR_FMT_B8G8R8A8);
    const auto paint_under = [&] {
        paint(under, [](int32_t x, int32_t y) {
            return (checks(x, y) & 0xFFFFFF) | (x < 56 ? 0x40000000u : 0xC0000000u);
        });
    };
    paint_disc(sprite, rgb(255, 150, 40), false);
    paint_under();
    show_alpha(page, sprite, 12, 12);
    page.write(12, 134, "SOURCE ALPHA");
    show_alpha(page, under, 130, 12);
    page.write(130, 134, "BEFORE");
    const std::array<std::string_view, 3> words{"BLENDED (0)", "REPLACED (1)", "ONE (2)"};
    for (int32_t op = 0; op < 3; ++op) {
        paint_under();
        const Context ctx;
        blend_by_pixel(ctx, VEXLOR_ALPHA_STRAIGHT, static_cast<uint32_t>(op));
        ctx.copy(sprite, sprite.all(), under, 0, 0);
        show_alpha(page, under, 248 + op * 118, 12);
        page.write(248 + op * 118, 134, words[static_cast<size_t>(op)]);
    }
    return page;
}

Page global_alpha()
{
    Page page(608, 116);
    for (int32_t i = 0; i < 5; ++i) {
        Surface day(112, 80, VEXLOR_FMT_B8G8R8X8), under(112, 80, VEXLOR_FMT_B8G8R8X8);
        paint_landscape(day);
        paint_night(under);
        const Context ctx;
        const auto value = static_cast<uint32_t>(i * 255 / 4);
        blend_by_value(ctx, value, VEXLOR_ALPHA_DST_BLEND);
        ctx.copy(day, day.all(), under, 0, 0);
        page.panel(under, 12 + i * 118, 10, "VALUE " + std::to_string(value));
    }
    return page;
}

constexpr std::array<std::string_view, 3> filter_names{"NONE (0)", "MEAN (1)", "CATROM (2)"};

void draw_filters(const Page& page, const Surface& source, int32_t w, int32_t h)
{
    for (uint32_t filter = 0; filter < 3; ++filter) {
        const Context ctx;
        vexlor_context_set_filter(ctx.get(), filter);
        const int32_t x = 10 + static_cast<int32_t>(filter) * 198;
        ctx.scale(source, source.all(), page, {x, 10, w, h});
        page.write(x, 18 + h, filter_names[filter]);
    }
}

Page enlarged()
{
    Page page(608, 150);
    Surface detail(24, 16, VEXLOR_FMT_B8G8R8X8);
    paint_landscape(detail);
    draw_filters(page, detail, 180, 120);
    return page;
}

Page reduced()
{
    Page page(608, 150);
    Surface rings(480, 320, VEXLOR_FMT_B8G8R8X8);
    paint(rings,
          [](int32_t x, int32_t y) { return std::fmod((x * x + y * y) / 2000.0, 1) < 0.5 ? navy : sand; });
    draw_filters(page, rings, 180, 120);
    return page;
}

// Pixels of RGB through YUV 4:2:2 and back, by rows.
Page yuv()
{
    Page page(608, 142);
    Surface source(18, 7, VEXLOR_FMT_B8G8R8X8), frame(18, 7, VEXLOR_FMT_U8Y8V8Y8),
        back(18, 7, VEXLOR_FMT_B8G8R8X8);
    paint(source, [](int32_t x, int32_t y) {
        return y < 3 ? (x / 3 % 2 ? rgb(220, 30, 30) : grey(240))
                     : (x % 4 == y % 4 ? rgb(30, 60, 210) : rgb(240, 220, 60));
    });
    for (int32_t y = 0; y < 7; ++y)
        vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(source.row(y), frame.row(y), 18);
    const Context ctx;
    ctx.copy(frame, frame.all(), back, 0, 0);
    page.panel(source, 14, 10, "AS DRAWN IN RGB", 16);
    page.panel(back, 310, 10, "THROUGH U8Y8V8Y8 AND BACK", 16);
    return page;
}

Page overlap()
{
    Page page(608, 166);
    const std::array<std::string_view, 3> words{"BEFORE", "ALPHA-DST-OP 0: RIGHT", "ALPHA-DST-OP 2: SMEARED"};
    for (int32_t i = 0; i < 3; ++i) {
        Surface s(188, 128, VEXLOR_FMT_B8G8R8X8);
        paint_landscape(s);
        const Context ctx;
        vexlor_context_set_alpha_dst_op(ctx.get(), i == 2 ? VEXLOR_ALPHA_DST_ONE : VEXLOR_ALPHA_DST_BLEND);
        if (i > 0)
            ctx.copy(s, {0, 0, 164, 104}, s, 24, 24);
        page.panel(s, 14 + i * 197, 10, words[static_cast<size_t>(i)]);
    }
    return page;
}

constexpr std::array pictures{
    Picture{"screen", screen},
    Picture{"alpha-modes", alpha_modes},
    Picture{"alpha-destination", alpha_destination},
    Picture{"global-alpha", global_alpha},
    Picture{"enlarged", enlarged},
    Picture{"reduced", reduced},
    Picture{"yuv", yuv},
    Picture{"overlap", overlap},
};

} // namespace

std::span<const Picture> guide_pictures() { return pictures; }

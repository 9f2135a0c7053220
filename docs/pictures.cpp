// Draws the pictures of the guide and of the page on irregularities: pictures FOLDER. Each function is one picture,
// named after it, and shows what the library does and not what it should look like: nothing is painted by hand but
// sources, frames and words.
#include "canvas.h"

#include <png.h>

void Page::save(const std::string& name) const
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<uint32_t>(width());
    image.height = static_cast<uint32_t>(height());
    image.format = PNG_FORMAT_BGR;
    std::vector<uint8_t> bytes;
    for (int32_t y = 0; y < height(); ++y)
        for (int32_t x = 0; x < width(); ++x)
            for (uint32_t shift = 0; shift < 24; shift += 8)
                bytes.push_back(static_cast<uint8_t>(row(y)[x] >> shift));
    if (!png_image_write_to_file(&image, name.c_str(), 0, bytes.data(), 0, nullptr)) {
        std::cerr << "pictures: " << name << ": " << image.message << '\n';
        std::exit(1);
    }
}

namespace {

constexpr uint32_t navy = rgb(24, 40, 84);
constexpr uint32_t sand = rgb(236, 214, 170);

void paint(const Surface& s, auto color)
{
    for (int32_t y = 0; y < s.height(); ++y)
        for (int32_t x = 0; x < s.width(); ++x)
            if (const uint32_t p = color(x, y); s.desc()->format == VEXLOR_FMT_565)
                s.row<uint16_t>(y)[x] = to_565(p);
            else
                s.row(y)[x] = p;
}

// Sky, a sun, hills and the light on them: smooth colours, an edge, a round thing.
uint32_t landscape(double x, double y, double height = 0.75)
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
void paint_landscape(const Surface& s)
{
    paint(s, [&](int32_t x, int32_t y) { return landscape(double(x) / s.width(), double(y) / s.height()); });
}
void paint_night(const Surface& s)
{
    paint(s, [&](int32_t x, int32_t y) {
        return landscape(double(x) / s.width(), double(y) / s.height()) >> 2 & 0x3F3F3F;
    });
}

// A soft disc; its colour multiplied by its alpha or not.
void paint_disc(const Surface& s, uint32_t color, bool premultiplied)
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
uint32_t checks(int32_t x, int32_t y)
{
    return (x / 14 + y / 14) % 2 ? rgb(150, 190, 230) : rgb(70, 120, 190);
}

void show_alpha(const Page& page, const Surface& s, int32_t x, int32_t y)
{
    Surface alpha(s.width(), s.height(), VEXLOR_FMT_B8G8R8X8);
    paint(alpha, [&](int32_t i, int32_t j) { return grey(s.row(j)[i] >> 24); });
    page.show(alpha, alpha.all(), x, y);
    page.frame({x, y, s.width(), s.height()});
}

void blend_by_pixel(const Context& ctx, uint32_t mode, uint32_t dst_op)
{
    vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx.get(), VEXLOR_ALPHA_SRC_PIXEL);
    vexlor_context_set_alpha_mode(ctx.get(), mode);
    vexlor_context_set_alpha_dst_op(ctx.get(), dst_op);
}
void blend_by_value(const Context& ctx, uint32_t value, uint32_t dst_op)
{
    vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_value(ctx.get(), static_cast<uint8_t>(value));
    vexlor_context_set_alpha_dst_op(ctx.get(), dst_op);
}

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
        page.show(under, under.all(), 10 + i * 149, 10);
        page.write(10 + i * 149, 158, words[static_cast<size_t>(i)]);
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
        page.show(under, under.all(), 12 + i * 118, 10);
        page.write(12 + i * 118, 98, "VALUE " + std::to_string(value));
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
    page.show(source, source.all(), 14, 10, 16);
    page.write(14, 126, "AS DRAWN IN RGB");
    page.show(back, back.all(), 310, 10, 16);
    page.write(310, 126, "THROUGH U8Y8V8Y8 AND BACK");
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
        page.show(s, s.all(), 14 + i * 197, 10);
        page.write(14 + i * 197, 146, words[static_cast<size_t>(i)]);
    }
    return page;
}

Page quarter_fill()
{
    Page page(608, 122);
    const std::array<std::string_view, 2> words{"ALPHA-DST-OP 0", "ALPHA-DST-OP 2: A QUARTER"};
    for (int32_t i = 0; i < 2; ++i) {
        Surface s(286, 84, VEXLOR_FMT_B8G8R8A8);
        paint(s, [](int32_t, int32_t) { return sand; });
        const Context ctx;
        vexlor_context_set_alpha_dst_op(ctx.get(), i ? VEXLOR_ALPHA_DST_ONE : VEXLOR_ALPHA_DST_BLEND);
        ctx.fill(s, {23, 12, 240, 60}, navy);
        page.show(s, s.all(), 12 + i * 298, 10);
        page.write(12 + i * 298, 102, words[static_cast<size_t>(i)]);
    }
    return page;
}

// A dark picture copied over a light one, at full global alpha and just below.
Page full_weight()
{
    Page page(608, 116);
    const std::array<std::string_view, 5> words{"BEFORE", "OP 0, 255", "OP 2, 255", "OP 2, 254",
                                                "OPAQUE COPY"};
    for (int32_t i = 0; i < 5; ++i) {
        Surface s(112, 80, VEXLOR_FMT_B8G8R8X8), dark(80, 48, VEXLOR_FMT_B8G8R8X8);
        paint_landscape(s);
        paint(dark, [](int32_t x, int32_t) { return rgb(static_cast<uint32_t>(x), 0, 40); });
        const Context ctx;
        if (i > 0 && i < 4)
            blend_by_value(ctx, i == 3 ? 254 : 255, i == 1 ? VEXLOR_ALPHA_DST_BLEND : VEXLOR_ALPHA_DST_ONE);
        if (i > 0)
            ctx.copy(dark, dark.all(), s, 16, 16);
        page.show(s, s.all(), 12 + i * 118, 10);
        page.write(12 + i * 118, 98, words[static_cast<size_t>(i)]);
    }
    return page;
}

// The weight that a global replace ORs into the lowest byte.
Page replaced_alpha()
{
    Page page(608, 142);
    for (int32_t i = 0; i < 2; ++i) {
        Surface over(140, 100, VEXLOR_FMT_B8G8R8A8), under(140, 100, VEXLOR_FMT_B8G8R8A8);
        paint_landscape(over);
        paint(under, checks);
        const Context ctx;
        blend_by_value(ctx, 128, i ? VEXLOR_ALPHA_DST_REPLACE : VEXLOR_ALPHA_DST_BLEND);
        ctx.copy(over, over.all(), under, 0, 0);
        page.show(under, under.all(), 12 + i * 298, 10);
        show_alpha(page, under, 158 + i * 298, 10);
        page.write(12 + i * 298, 122, i ? "OP 1: COLOUR, AND ALPHA 0" : "OP 0: COLOUR, AND ALPHA");
    }
    return page;
}

Page borrow()
{
    Page page(608, 176);
    Surface sprite(140, 140, VEXLOR_FMT_B8G8R8A8), portable(140, 140, VEXLOR_FMT_B8G8R8A8),
        vector(140, 140, VEXLOR_FMT_B8G8R8A8), apart(140, 140, VEXLOR_FMT_B8G8R8X8);
    paint_disc(sprite, rgb(255, 150, 40), true);
    paint(portable, checks);
    paint(vector, checks);
    for (int32_t y = 0; y < 140; ++y) {
        vexlor_1d_copy_blend_over_src_pre_8888(sprite.row(y), portable.row(y), 140, 24);
        vexlor_1d_copy_blend_over_src_pre_8888_sse2(sprite.row(y), vector.row(y), 140, 24);
    }
    paint(apart, [&](int32_t x, int32_t y) {
        const uint32_t d = vector.row(y)[x] - portable.row(y)[x];
        return rgb((d >> 16 & 255) * 255, (d >> 8 & 255) * 255, (d & 255) * 255);
    });
    const std::array<const Surface*, 3> shown{&portable, &vector, &apart};
    const std::array<std::string_view, 3> words{"SLOT: PORTABLE", "SSE2 ROW, IN NO SLOT", "DIFFERENCE X 255"};
    for (int32_t i = 0; i < 3; ++i) {
        page.show(*shown[static_cast<size_t>(i)], portable.all(), 40 + i * 190, 10);
        page.write(40 + i * 190, 158, words[static_cast<size_t>(i)]);
    }
    return page;
}

// White blended over navy, the global alpha growing from left to right.
Page blend_565()
{
    Page page(608, 152);
    for (int32_t i = 0; i < 2; ++i) {
        const uint32_t format = i ? VEXLOR_FMT_565 : VEXLOR_FMT_B8G8R8X8;
        Surface over(256, 24, format), under(256, 24, format);
        paint(over, [](int32_t, int32_t y) { return y < 12 ? grey(255) : rgb(255, 150, 40); });
        paint(under, [](int32_t, int32_t) { return navy; });
        const Context ctx;
        for (int32_t x = 0; x < 256; ++x) {
            blend_by_value(ctx, static_cast<uint32_t>(x), VEXLOR_ALPHA_DST_BLEND);
            ctx.copy(over, {x, 0, 1, 24}, under, x, 0);
        }
        for (int32_t half = 0; half < 2; ++half)
            page.show(under, {half * 128, 0, 128, 24}, 48 + half * 256, 10 + i * 70, 2);
        page.write(48, 64 + i * 70, i ? "565: DONE AT 31, GREEN AT 63" : "32-BIT PIXELS: VALUE 0 TO 255");
    }
    return page;
}

Page linear_565()
{
    Page page(608, 166);
    Surface source(24, 16, VEXLOR_FMT_565);
    paint_landscape(source);
    const std::array<std::string_view, 3> words{"NONE (0)", "MEAN (1): COLOURS WRAP", "CATROM (2)"};
    for (uint32_t filter = 0; filter < 3; ++filter) {
        Surface large(192, 128, VEXLOR_FMT_565);
        const Context ctx;
        vexlor_context_set_filter(ctx.get(), filter);
        ctx.scale(source, source.all(), large, large.all());
        const int32_t x = 10 + static_cast<int32_t>(filter) * 198;
        page.show(large, large.all(), x, 10);
        page.write(x, 146, words[filter]);
    }
    return page;
}

// One size, filtered again and again.
Page darkening()
{
    Page page(608, 230);
    const std::array<int32_t, 5> passes{0, 1, 4, 8, 16};
    for (int32_t i = 0; i < 2; ++i) {
        const uint32_t format = i ? VEXLOR_FMT_565 : VEXLOR_FMT_B8G8R8X8;
        int32_t done = 0;
        Surface a(112, 80, format), b(112, 80, format);
        paint(a, [](int32_t x, int32_t y) { return x < 28 ? grey(255) : landscape(x / 112.0, y / 80.0); });
        const Context ctx;
        vexlor_context_set_filter(ctx.get(), i ? VEXLOR_FILTER_CATROM : VEXLOR_FILTER_MEAN);
        for (int32_t column = 0; column < 5; ++column) {
            for (; done < passes[static_cast<size_t>(column)]; ++done) {
                ctx.scale(a, a.all(), b, b.all());
                for (int32_t y = 0; y < 80; ++y)
                    std::copy_n(b.row<uint8_t>(y), b.desc()->stride, a.row<uint8_t>(y));
            }
            page.show(a, a.all(), 12 + column * 118, 10 + i * 112);
            page.write(12 + column * 118, 98 + i * 112, (i ? "565 CATROM " : "MEAN ") + std::to_string(done));
        }
    }
    return page;
}

// Rows around a rectangle, magnified: before, and after.
Page repeated_565()
{
    Page page(608, 174);
    Surface source(4, 3, VEXLOR_FMT_565), screen(20, 10, VEXLOR_FMT_565);
    paint(source, [](int32_t x, int32_t y) {
        return rgb(255, static_cast<uint32_t>(40 + 60 * x), static_cast<uint32_t>(40 + 80 * y));
    });
    paint(screen, [](int32_t x, int32_t y) { return grey(static_cast<uint32_t>(80 + 17 * y + 2 * x % 20)); });
    page.show(screen, screen.all(), 14, 10, 14);
    page.frame({14 + 2 * 14, 10, 8 * 14 - 1, 9 * 14 - 1});
    const Context ctx;
    ctx.scale(source, source.all(), screen, {2, 0, 8, 9});
    page.show(screen, screen.all(), 312, 10, 14);
    page.frame({312 + 2 * 14, 10, 8 * 14 - 1, 9 * 14 - 1});
    page.write(14, 158, "BEFORE, FRAMED: THE RECTANGLE");
    page.write(312, 158, "AFTER: ROWS RIGHT OF IT REPEATED");
    return page;
}

Page carried_pixel()
{
    Page page(608, 104);
    Surface source(16, 3, VEXLOR_FMT_565), screen(20, 5, VEXLOR_FMT_565);
    paint(source, [](int32_t x, int32_t y) {
        return rgb(255, static_cast<uint32_t>(40 + 14 * x), static_cast<uint32_t>(40 + 80 * y));
    });
    paint(screen, [](int32_t, int32_t y) { return grey(static_cast<uint32_t>(130 + 17 * y)); });
    page.show(screen, screen.all(), 14, 10, 14);
    const Context ctx;
    ctx.copy(source, {0, 0, 7, 3}, screen, 3, 1);
    page.show(screen, screen.all(), 312, 10, 14);
    page.frame({14 + 3 * 14, 24, 7 * 14 - 1, 3 * 14 - 1});
    page.frame({312 + 3 * 14, 24, 7 * 14 - 1, 3 * 14 - 1});
    page.write(14, 88, "BEFORE, FRAMED: 7 X 3 PIXELS");
    page.write(312, 88, "AFTER: AN EIGHTH IN EACH ROW");
    return page;
}

Page streamed_fill()
{
    Page page(608, 144);
    for (int32_t simd = 0; simd < 2; ++simd) {
        Surface s(41, 3, VEXLOR_FMT_B8G8R8X8);
        paint(s, [](int32_t, int32_t) { return sand; });
        const Context ctx;
        vexlor_context_set_simd(ctx.get(), simd == 1);
        ctx.fill(s, {1, 0, 38, 3}, rgb(230, 120, 30));
        page.show(s, s.all(), 14, 10 + simd * 66, 14);
        page.frame({28, 10 + simd * 66, 38 * 14 - 1, 3 * 14 - 1});
        page.write(14, 58 + simd * 66,
                   simd ? "SIMD ON: ROWS START 4 BYTES BEHIND A MULTIPLE OF 16, 152 BYTES LONG" : "SIMD OFF");
    }
    return page;
}

void paint_frame(const Surface& frame, auto color)
{
    Surface rgb_frame(frame.width(), frame.height(), VEXLOR_FMT_B8G8R8X8);
    paint(rgb_frame, color);
    for (int32_t y = 0; y < frame.height(); ++y)
        vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(rgb_frame.row(y), frame.row(y), frame.width());
}
uint32_t bands(int32_t, int32_t y)
{
    return y % 4 == 0 ? rgb(200, 60, 40) : grey(static_cast<uint32_t>(60 + 15 * y));
}

Page lag()
{
    Page page(608, 190);
    Surface frame(12, 12, VEXLOR_FMT_U8Y8V8Y8), small(12, 4, VEXLOR_FMT_B8G8R8X8),
        screen(12, 12, VEXLOR_FMT_B8G8R8X8);
    paint_frame(frame, bands);
    page.show(frame, frame.all(), 14, 10, 13);
    page.write(14, 174, "FRAME, 12 ROWS");
    for (int32_t i = 0; i < 2; ++i) {
        const Context ctx;
        vexlor_context_set_filter(ctx.get(), VEXLOR_FILTER_MEAN);
        if (i)
            ctx.scale(frame, frame.all(), small, small.all());
        ctx.scale(frame, frame.all(), screen, screen.all());
        page.show(screen, screen.all(), 212 + i * 198, 10, 13);
        page.write(212 + i * 198, 174, i ? "AFTER 12 TO 4, 12 TO 12" : "FRESH, 12 TO 12");
    }
    return page;
}

Page yuv_rows()
{
    Page page(608, 192);
    Surface frame(12, 8, VEXLOR_FMT_U8Y8V8Y8), pixels(12, 8, VEXLOR_FMT_B8G8R8X8),
        screen(276, 152, VEXLOR_FMT_B8G8R8X8);
    const auto picture = [](int32_t x, int32_t y) { return landscape(x / 12.0, y / 8.0); };
    paint_frame(frame, picture);
    paint(pixels, picture);
    const Context ctx;
    vexlor_context_set_filter(ctx.get(), VEXLOR_FILTER_MEAN);
    ctx.scale(pixels, pixels.all(), screen, screen.all());
    page.show(screen, screen.all(), 14, 10);
    page.write(14, 174, "32-BIT PIXELS");
    ctx.scale(frame, frame.all(), screen, screen.all());
    page.show(screen, screen.all(), 312, 10);
    page.write(312, 174, "U8Y8V8Y8: ROWS REPEAT");
    return page;
}

Page odd_width()
{
    Page page(608, 146);
    Surface frame(8, 4, VEXLOR_FMT_U8Y8V8Y8), screen(20, 8, VEXLOR_FMT_B8G8R8X8);
    paint_frame(frame, [](int32_t x, int32_t y) {
        return rgb(255, static_cast<uint32_t>(60 + 24 * x), static_cast<uint32_t>(40 + 50 * y));
    });
    paint(screen, [](int32_t, int32_t y) { return grey(static_cast<uint32_t>(90 + 17 * y)); });
    page.show(screen, screen.all(), 14, 10, 14);
    page.frame({14 + 3 * 14, 10, 13 * 14 - 1, 8 * 14 - 1});
    const Context ctx;
    ctx.scale(frame, frame.all(), screen, {3, 0, 13, 8});
    page.show(screen, screen.all(), 312, 10, 14);
    page.frame({312 + 3 * 14, 10, 13 * 14 - 1, 8 * 14 - 1});
    page.write(14, 130, "BEFORE, FRAMED: 13 X 8 PIXELS");
    page.write(312, 130, "AFTER: THE THIRTEENTH IS LEFT ALONE");
    return page;
}

// The middle of a surface, enlarged from there and from a copy of its own.
Page rectangle_edges()
{
    Page page(608, 192);
    Surface sheet(36, 24, VEXLOR_FMT_B8G8R8X8), cut(12, 8, VEXLOR_FMT_B8G8R8X8);
    paint(sheet, [](int32_t x, int32_t y) {
        const bool inside = x >= 12 && x < 24 && y >= 8 && y < 16;
        return inside ? ((x + y) % 2 ? rgb(240, 220, 120) : rgb(250, 240, 190)) : rgb(30, 40, 160);
    });
    const Context plain, ctx;
    plain.copy(sheet, {12, 8, 12, 8}, cut, 0, 0);
    vexlor_context_set_filter(ctx.get(), VEXLOR_FILTER_CATROM);
    page.show(sheet, sheet.all(), 14, 30, 3);
    page.write(14, 174, "THE SURFACE");
    ctx.scale(sheet, {12, 8, 12, 8}, page, {136, 10, 222, 148});
    page.write(136, 174, "ITS MIDDLE, CATROM");
    ctx.scale(cut, cut.all(), page, {372, 10, 222, 148});
    page.write(372, 174, "COPIED OUT, CATROM");
    return page;
}

struct Picture {
    const char* name;
    Page (*draw)();
};
constexpr std::array pictures{
    Picture{"screen", screen},
    Picture{"alpha-modes", alpha_modes},
    Picture{"alpha-destination", alpha_destination},
    Picture{"global-alpha", global_alpha},
    Picture{"enlarged", enlarged},
    Picture{"reduced", reduced},
    Picture{"yuv", yuv},
    Picture{"overlap", overlap},
    Picture{"quarter-fill", quarter_fill},
    Picture{"full-weight", full_weight},
    Picture{"replaced-alpha", replaced_alpha},
    Picture{"borrow", borrow},
    Picture{"blend-565", blend_565},
    Picture{"linear-565", linear_565},
    Picture{"darkening", darkening},
    Picture{"repeated-565", repeated_565},
    Picture{"carried-pixel", carried_pixel},
    Picture{"streamed-fill", streamed_fill},
    Picture{"lag", lag},
    Picture{"yuv-rows", yuv_rows},
    Picture{"odd-width", odd_width},
    Picture{"rectangle-edges", rectangle_edges},
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: pictures FOLDER\n";
        return 2;
    }
    for (const Picture& picture : pictures)
        picture.draw().save(std::string(argv[1]) + "/" + picture.name + ".png");
}

// The pictures of the page on irregularities. Each shows what the library does, beside what one would expect.
#include "scenes.h"

namespace {

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
        page.panel(s, 12 + i * 298, 10, words[static_cast<size_t>(i)]);
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
        page.panel(s, 12 + i * 118, 10, words[static_cast<size_t>(i)]);
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
        page.panel(large, x, 10, words[filter]);
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
            page.panel(a, 12 + column * 118, 10 + i * 112,
                       (i ? "565 CATROM " : "MEAN ") + std::to_string(done));
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
    page.panel(frame, 14, 10, "FRAME, 12 ROWS", 13);
    for (int32_t i = 0; i < 2; ++i) {
        const Context ctx;
        vexlor_context_set_filter(ctx.get(), VEXLOR_FILTER_MEAN);
        if (i)
            ctx.scale(frame, frame.all(), small, small.all());
        ctx.scale(frame, frame.all(), screen, screen.all());
        page.panel(screen, 212 + i * 198, 10, i ? "AFTER 12 TO 4, 12 TO 12" : "FRESH, 12 TO 12", 13);
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
    page.panel(screen, 14, 10, "32-BIT PIXELS");
    ctx.scale(frame, frame.all(), screen, screen.all());
    page.panel(screen, 312, 10, "U8Y8V8Y8: ROWS REPEAT");
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

// A first row of its own colour, which filter 2 leaves out.
Page first_row()
{
    Page page(608, 174);
    Surface source(8, 6, VEXLOR_FMT_B8G8R8X8); // no bytes between rows, which would show at the lower edge
    paint(source, [](int32_t, int32_t y) { return y == 0 ? rgb(230, 60, 30) : y % 2 ? sand : navy; });
    const std::array<std::string_view, 3> words{"NONE (0)", "MEAN (1)", "CATROM (2): NO RED"};
    for (uint32_t filter = 0; filter < 3; ++filter) {
        Surface large(168, 144, VEXLOR_FMT_B8G8R8X8);
        const Context ctx;
        vexlor_context_set_filter(ctx.get(), filter);
        ctx.scale(source, source.all(), large, large.all());
        page.panel(large, 14 + static_cast<int32_t>(filter) * 206, 10, words[filter]);
    }
    return page;
}

constexpr std::array pictures{
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
    Picture{"first-row", first_row},
    Picture{"rectangle-edges", rectangle_edges},
};

} // namespace

std::span<const Picture> irregular_pictures() { return pictures; }

// Letters are a surface with alpha: the font's points are enlarged four times without a filter and brought to
// their final size by mean, which leaves soft edges where a point does not end on a pixel.
#include "canvas.h"

#include "font.h"
#include "formats.h"

#include <cstring>

namespace view {

using tool::Color;
using tool::Point;
using tool::Rect;
using tool::Size;
using tool::Surface;

namespace {

constexpr tool::Color inks[ink_count] = {
    {240, 240, 236}, {150, 156, 164}, {255, 190, 80}, {110, 205, 255}, {255, 110, 90}};

constexpr int32_t font_columns = 16, font_lines = 6; // the letters, all on one surface

// The font in one colour, letter_width x letter_height for each character.
Surface letters(Color color)
{
    const tool::Context ctx = tool::new_context();
    const auto scaled = [&ctx](const Surface& from, Size size, uint32_t filter) {
        Surface to(size, VEXLOR_FMT_B8G8R8A8);
        vexlor_context_set_filter(ctx.get(), filter);
        vexlor_scale(ctx.get(), from.desc(), to.desc(), 0, 0, from.size().width, from.size().height, 0, 0,
                     size.width, size.height);
        return to;
    };
    tool::Picture points({font_columns * tool::glyph_width, font_lines * tool::glyph_height}, true);
    for (int32_t y = 0; y < points.size.height; ++y)
        for (int32_t x = 0; x < points.size.width; ++x) {
            const int32_t glyph = x / tool::glyph_width + y / tool::glyph_height * font_columns;
            const bool ink = tool::font_pixel(static_cast<char>(tool::first_glyph + glyph),
                                              x % tool::glyph_width, y % tool::glyph_height);
            const uint8_t pixel[4] = {color.r, color.g, color.b, static_cast<uint8_t>(ink ? 255 : 0)};
            std::memcpy(points.row(y) + ptrdiff_t{x} * 4, pixel, 4);
        }
    const Surface large = scaled(tool::pack(points, VEXLOR_FMT_B8G8R8A8),
                                 {points.size.width * 4, points.size.height * 4}, VEXLOR_FILTER_NONE);
    return scaled(large, {font_columns * Canvas::letter_width, font_lines * Canvas::letter_height},
                  VEXLOR_FILTER_MEAN);
}

template <size_t... Ink> std::array<Surface, ink_count> all_letters(std::index_sequence<Ink...>)
{
    return {letters(inks[Ink])...};
}

Rect clipped(const Surface& surface, Rect rect)
{
    vexlor_surface_clip(surface.desc(), &rect.x, &rect.y, &rect.width, &rect.height);
    return rect;
}

} // namespace

Color color_of(Ink ink) { return inks[static_cast<size_t>(ink)]; }

Canvas::Canvas()
    : pixels_({1, 1}, format), ctx_(tool::new_context(tool::simd_all)),
      letters_(all_letters(std::make_index_sequence<ink_count>{}))
{}

void Canvas::resize(Size size) { pixels_ = Surface(size, format); }

void Canvas::area(Rect rect, Color color, uint8_t alpha)
{
    const Rect r = clipped(pixels_, rect);
    if (r.width <= 0 || r.height <= 0)
        return;
    vexlor_context* ctx = ctx_.get();
    vexlor_context_set_color(ctx, tool::pack(color, format));
    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx, VEXLOR_ALPHA_SRC_GLOBAL);
    vexlor_context_set_alpha_value(ctx, alpha);
    vexlor_fill(ctx, pixels_.desc(), r.x, r.y, r.width, r.height);
}

void Canvas::frame(Rect r, Ink ink, uint8_t alpha)
{
    const Color color = color_of(ink);
    area({r.x, r.y, r.width, 1}, color, alpha);
    area({r.x, r.y + r.height - 1, r.width, 1}, color, alpha);
    area({r.x, r.y + 1, 1, r.height - 2}, color, alpha);
    area({r.x + r.width - 1, r.y + 1, 1, r.height - 2}, color, alpha);
}

void Canvas::text(Point at, std::string_view text, Ink ink)
{
    vexlor_context* ctx = ctx_.get();
    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx, VEXLOR_ALPHA_SRC_PIXEL);
    const Surface& font = letters_[static_cast<size_t>(ink)];
    for (const char c : text) {
        const int32_t glyph = (c < tool::first_glyph || c > tool::last_glyph ? '?' : c) - tool::first_glyph;
        const Rect r = clipped(pixels_, {at.x, at.y, letter_width, letter_height});
        if (r.width > 0 && r.height > 0)
            vexlor_copy(ctx, font.desc(), pixels_.desc(), glyph % font_columns * letter_width + r.x - at.x,
                        glyph / font_columns * letter_height + r.y - at.y, r.x, r.y, r.width, r.height);
        at.x += letter_width;
    }
}

void Canvas::picture(const Surface& from, Rect part, Point at)
{
    const Rect r = clipped(pixels_, {at.x, at.y, part.width, part.height});
    if (r.width <= 0 || r.height <= 0)
        return;
    vexlor_context_set_alpha_op(ctx_.get(), VEXLOR_ALPHA_OP_NONE);
    vexlor_copy(ctx_.get(), from.desc(), pixels_.desc(), part.x + r.x - at.x, part.y + r.y - at.y, r.x, r.y,
                r.width, r.height);
}

void to_screen(const Surface& pixels, Surface& screen)
{
    const auto [width, height] = pixels.size();
    if (vexlor_fmt_is_equiv(pixels.format(), screen.format())) {
        const tool::Context ctx = tool::new_context(tool::simd_all);
        vexlor_copy(ctx.get(), pixels.desc(), screen.desc(), 0, 0, 0, 0, width, height);
        return;
    }
    for (int32_t y = 0; y < height; ++y) {
        const uint8_t* in = pixels.row(y);
        uint8_t* out = screen.row(y);
        for (int32_t x = 0; x < width; ++x, out += 4) {
            if (pixels.format() == VEXLOR_FMT_565) {
                const uint32_t word = in[0] | uint32_t{in[1]} << 8;
                const uint32_t r = word >> 11, g = word >> 5 & 63, b = word & 31;
                out[0] = static_cast<uint8_t>(b << 3 | b >> 2);
                out[1] = static_cast<uint8_t>(g << 2 | g >> 4);
                out[2] = static_cast<uint8_t>(r << 3 | r >> 2);
                out[3] = 255;
                in += 2;
            } else { // A8R8G8B8: the bytes in reverse
                for (int i = 0; i < 4; ++i)
                    out[i] = in[3 - i];
                in += 4;
            }
        }
    }
}

} // namespace view

// vexlor fill: a rectangle of one colour, written or blended.
#include "../drawing.h"
#include "../failure.h"
#include "../formats.h"
#include "commands.h"

#include <algorithm>

namespace tool {

namespace {

struct FillCommand : Command {
    void declare(Options& options) override
    {
        options.text("picture", target.background.file, "PICTURE",
                     "PNG, JPEG or raw file; - is standard input");
        target.background.declare_raw(options, "", "the picture");
        target.declare(options);
        options.parsed("--rect", rect, parse_rect, "X,Y,W,H", "the rectangle (default: everything)");
        options.parsed("--color", color, parse_color, "RRGGBB[AA]", "the colour (default: white)");
        options.parsed("--pixel", pixel, parse_hex, "0xHEX",
                       "the colour as a pixel value of the surface's format");
        options.number("--global", global, 0, 255, "blend with this weight instead of writing");
        options.word("--dst-alpha", alpha_dst_op, {"blend", "replace", "one"},
                     "what becomes of the alpha byte. Without --global, `one` writes the first quarter of "
                     "each row only");
    }

    void run() override
    {
        if (target.background.file.empty() && !target.canvas)
            throw Failure("fill", "needs a picture, or --canvas WxH");
        if (color && pixel)
            throw Failure("--pixel", "goes without --color");
        const Surface before = target.make(0, {}, false);
        const auto [width, height] = before.size();
        const Rect r = rect.value_or(Rect{0, 0, width, height});
        // The library leaves this check to its caller; other bad rectangles it refuses itself.
        if (std::min({r.x, r.y, r.width, r.height}) >= 0 &&
            (int64_t{r.x} + r.width > width || int64_t{r.y} + r.height > height))
            throw Failure("--rect", "reaches past the picture, which is " + std::to_string(width) + "x" +
                                        std::to_string(height));
        const uint32_t value = pixel ? *pixel : pixel_of(color.value_or(white), before.format());
        Drawing drawing;
        drawing.operation = global < 0 ? "fill" : "fill blended with " + std::to_string(global);
        drawing.pixels = format_name(before.format());
        drawing.area = std::to_string(r.width) + "x" + std::to_string(r.height);
        drawing.drawn = {r.width, r.height};
        drawing.set_up = [&](vexlor_context* ctx) {
            vexlor_context_set_color(ctx, value);
            vexlor_context_set_alpha_op(ctx, global < 0 ? VEXLOR_ALPHA_OP_NONE : VEXLOR_ALPHA_OP_BLEND);
            vexlor_context_set_alpha_value(ctx, static_cast<uint8_t>(std::max(global, 0)));
            vexlor_context_set_alpha_dst_op(ctx, alpha_dst_op);
        };
        drawing.call = [&](vexlor_context* ctx, const vexlor_surface_desc& dst) {
            return vexlor_fill(ctx, &dst, r.x, r.y, r.width, r.height);
        };
        target.draw(before, drawing);
    }

private:
    static constexpr Color white{255, 255, 255, 255};

    // A fill repeats 16 bits, so U and V of a YUV surface get the same byte: 128 for a grey.
    static uint32_t pixel_of(Color c, uint32_t format)
    {
        if (!is_yuv(format))
            return pack(c, format);
        if (c.r != c.g || c.g != c.b)
            throw Failure("--color", "a YUV surface is filled with one byte for U and V, so with greys only; "
                                     "--pixel gives other values");
        const uint32_t y = ((66u + 129u + 25u) * c.r + 128u) / 256u + 16u;
        return format == VEXLOR_FMT_U8Y8V8Y8 ? y << 8 | 128 : 128 << 8 | y;
    }

    Target target;
    std::optional<Rect> rect;
    std::optional<Color> color;
    std::optional<uint32_t> pixel;
    int32_t global = -1;
    uint32_t alpha_dst_op = VEXLOR_ALPHA_DST_BLEND;
};

} // namespace

const Entry fill_entry{
    "fill", "Fill a rectangle with a colour, written or blended",
    "  vexlor fill photo.jpg --rect 40,40,400,120 --color 102040 --global 160 -o panel.png",
    make_command<FillCommand>};

} // namespace tool

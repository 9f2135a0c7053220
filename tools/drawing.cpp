#include "drawing.h"

#include "alpha.h"
#include "difference.h"
#include "failure.h"
#include "file.h"
#include "formats.h"
#include "output.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace tool {

namespace {

// Calls the library with a new context, whose cache does not remember earlier calls; returns the call's time.
double draw_once(const Drawing& drawing, Surface& surface, uint32_t simd)
{
    using Clock = std::chrono::steady_clock;
    const Context ctx = new_context(simd);
    drawing.set_up(ctx.get());
    const auto start = Clock::now();
    const uint32_t result = drawing.call(ctx.get(), *surface.desc());
    const Clock::duration taken = Clock::now() - start;
    if (result != VEXLOR_OK)
        throw Refused(drawing.operation, result);
    return std::max(std::chrono::duration<double>(taken).count(), 1e-9);
}

std::string milliseconds(double seconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.3f ms", seconds * 1e3);
    return text;
}

} // namespace

uint32_t default_format(uint32_t like, bool alpha)
{
    if (like == VEXLOR_FMT_565)
        return like;
    return with_alpha(is_rgb32(like) ? like : VEXLOR_FMT_B8G8R8X8, alpha);
}

void Input::declare_raw(Options& options, const std::string& prefix, const std::string& what)
{
    options.format("--" + prefix + "format", raw_format, what + " is a raw frame of this format");
    options.parsed("--" + prefix + "size", raw_size, parse_size, "WxH", "size of the raw frame, in pixels");
    options.number("--" + prefix + "stride", raw_stride, 1, 1 << 30,
                   "bytes from row to row of the raw frame (default: no gaps)");
}

Surface Input::read_raw() const
{
    if (!raw_size)
        throw Failure(shown(file), "a raw frame needs its size as well as its format");
    const auto [width, height] = *raw_size;
    const int64_t row = int64_t{width} * bytes_per_pixel(raw_format);
    const int64_t stride = raw_stride == 0 ? row : raw_stride;
    if (stride < row)
        throw Failure(shown(file), "the stride of " + std::to_string(stride) +
                                       " bytes is less than a row's " + std::to_string(row));
    const int64_t padded = stride * height;
    const int64_t exact = padded - stride + row;
    if (padded > most_pixels * 4)
        throw Failure(shown(file), "a raw frame of " + std::to_string(padded) + " bytes is too large");

    const std::vector<uint8_t> bytes = read_file(file, static_cast<size_t>(padded));
    const int64_t size = static_cast<int64_t>(bytes.size());
    if (size != exact && size != padded)
        throw Failure(shown(file), "has " + std::to_string(size) + " bytes, but a " + std::to_string(width) +
                                       "x" + std::to_string(height) + " frame of " +
                                       std::string(format_name(raw_format)) + " with a stride of " +
                                       std::to_string(stride) + " has " + std::to_string(padded));
    Surface surface(*raw_size, raw_format, static_cast<uint32_t>(stride));
    std::memcpy(surface.row(0), bytes.data(), surface.bytes());
    return surface;
}

Picture Input::read() const
{
    if (!is_raw() && (raw_size || raw_stride != 0))
        throw Failure(shown(file), "a size and a stride are for raw frames, and the format is missing");
    if (!is_raw())
        return read_picture(file);
    return about(shown(file), [this] { return unpack(read_raw()); });
}

void Target::declare(Options& options)
{
    options.parsed("--canvas", canvas, parse_size, "WxH", "draw on an empty picture of this size");
    options.parsed("--canvas-color", canvas_color, parse_color, "RRGGBB[AA]",
                   "colour of the empty picture (default: black)");
    options.format(
        "--to", format,
        "format of the surface that is drawn on (default: the raw frame's own; 565 for a 565 source; "
        "else B8G8R8A8 for a picture with alpha, B8G8R8X8 for one without)");
    options.text("-o,--output", output, "FILE", output_help);
    options.number("--repeat", repeat, 1, 100000,
                   "draw N times, each on a fresh copy, and report the best time");
    options.word("--simd", simd, {"none", "sse", "sse2", "all"},
                 "instruction sets whose routines the context uses (default: none); `all` is what the "
                 "processor has");
    options.flag(
        "--compare-simd", compare_simd,
        "draw without and with SIMD (all, unless --simd says which), and report both times and how far "
        "the surfaces are apart. The output, not required here, is the surface with SIMD");
}

Surface Target::make(uint32_t like, Size otherwise, bool alpha) const
{
    if (!background.file.empty() && canvas)
        throw Failure("--canvas", "cannot be used together with the background " + shown(background.file));
    if (background.file.empty() && background.is_raw())
        throw Failure("usage", "there is a raw format to draw on, but no file");
    if (background.is_raw() && (format == 0 || format == background.raw_format))
        return background.read_raw();
    const std::string name = !background.file.empty() ? background.file
                             : !output.empty()        ? output
                                                      : "the surface";
    return about(shown(name), [&] {
        const Picture picture =
            !background.file.empty() ? background.read()
            : canvas
                ? plain_picture(*canvas, canvas_color.value_or(Color{}))
                : plain_picture(otherwise, canvas_color.value_or(Color{0, 0, 0, uint8_t(alpha ? 0 : 255)}));
        return pack(picture, format != 0 ? format : default_format(like, picture.has_alpha));
    });
}

void Target::draw(const Surface& before, const Drawing& drawing) const
{
    std::optional<Output> file;
    if (!output.empty() || !compare_simd)
        file.emplace(output);
    const uint32_t with_simd = compare_simd && simd == simd_none ? simd_all : simd;
    Surface surface = before.copy();
    std::optional<Surface> portable;
    double seconds = draw_once(drawing, surface, with_simd), portable_seconds = 0;
    if (compare_simd) {
        portable = before.copy();
        portable_seconds = draw_once(drawing, *portable, simd_none);
    }
    // Taking turns: a busy moment of the machine does not hit one of them alone.
    for (int32_t i = 1; i < repeat; ++i) {
        surface.assign(before);
        seconds = std::min(seconds, draw_once(drawing, surface, with_simd));
        if (portable) {
            portable->assign(before);
            portable_seconds = std::min(portable_seconds, draw_once(drawing, *portable, simd_none));
        }
    }
    if (file)
        file->write(surface);

    const double rate = double(drawing.drawn.width) * drawing.drawn.height / seconds / 1e6;
    const std::string result =
        portable ? "portable " + milliseconds(portable_seconds) + ", SIMD " + milliseconds(seconds) + ", " +
                       difference(*portable, surface)
                 : milliseconds(seconds) + ", " + std::to_string(std::lround(rate)) + " Mpx/s";
    std::fprintf(file ? file->report() : stdout, "%s%s%s, %s, %s, %s\n", output.c_str(),
                 output.empty() ? "" : ": ", drawing.operation.c_str(), drawing.pixels.c_str(),
                 drawing.area.c_str(), result.c_str());
}

void Transfer::declare(Options& options)
{
    options.text("!source", source.file, "SOURCE", "PNG, JPEG or raw file; - is standard input");
    source.declare_raw(options, scales ? "raw-" : "", "the source");
    options.format(
        "--from", source_format,
        "format that the source is carried as (default: the raw frame's own, else one that fits --to)");
    options.text(
        "--alpha", alpha, "N|ramp:X0:X1|disc|night:LON:LAT|FILE",
        "give the source an alpha channel: one value; a ramp from 0 at column X0 to 255 at X1; a disc that "
        "fills the rectangle; the night side of a world map; another picture's alpha or brightness");
    options.parsed("--rect", rect, parse_rect, "X,Y,W,H", "part of the source (default: all of it)");
    options.text("--onto", target.background.file, "FILE",
                 "picture that is drawn on (default: an empty one)");
    target.background.declare_raw(options, "onto-", "the --onto file");
    if (scales) {
        options.parsed("--size", scaled_size, parse_size, "WxH", "size to scale to, drawn at 0,0");
        options.parsed("--to-rect", to_rect, parse_rect, "X,Y,W,H", "or the rectangle to scale into");
    } else {
        options.parsed("--at", at, parse_point, "X,Y", "place of the rectangle's corner (default: 0,0)");
    }
    options.flag("--within", within, "draw on the source itself instead");
    target.declare(options);
}

Surface Transfer::read_source() const
{
    const uint32_t to = target.format != 0 ? target.format : target.background.raw_format;
    const bool open = source_format == 0 && !source.is_raw(); // the format is free to fit the target
    uint32_t format = source_format != 0 ? source_format : source.raw_format;
    if (open)
        format = to == 0 || is_rgb32(to) ? default_format(to, needs_alpha) : to;
    // A raw frame that stays in its format keeps its bytes and its stride.
    if (source.raw_format == format && alpha.empty())
        return source.read_raw();
    Picture picture = source.read();
    if (!alpha.empty())
        about("--alpha", [&] {
            set_alpha(picture, alpha, rect.value_or(Rect{0, 0, picture.size.width, picture.size.height}));
        });
    if (premultiplied_by != no)
        premultiply(picture, premultiplied_by);
    if (open && is_rgb32(format) && picture.has_alpha)
        format = with_alpha(format, true);
    return about(shown(source.file), [&] { return pack(picture, format); });
}

// Where a rectangle of size `drawn` goes.
Rect Transfer::destination(Size drawn) const
{
    if (scales && scaled_size.has_value() == to_rect.has_value())
        throw Failure("scale", "needs either --size or --to-rect");
    if (to_rect)
        return *to_rect;
    const Point corner = at.value_or(Point{});
    const Size size = scaled_size.value_or(drawn);
    return {corner.x, corner.y, size.width, size.height};
}

void Transfer::run(const std::string& operation, const std::function<void(vexlor_context*)>& set_up) const
{
    const std::string& onto = target.background.file;
    if (within && (!onto.empty() || target.canvas || target.format != 0))
        throw Failure("--within", "goes without --onto, --canvas and --to");
    if (source.file == "-" && onto == "-")
        throw Failure("--onto", "standard input can be read only once");
    const Surface from = read_source();
    const Size all = from.size();
    const Rect r = rect.value_or(Rect{0, 0, all.width, all.height});
    const Rect to = destination({r.width, r.height});
    // The library would find nothing to draw in what wraps around.
    const auto wraps = [](int32_t start, int32_t length) { return start > 0 && length > INT32_MAX - start; };
    if (wraps(r.x, r.width) || wraps(r.y, r.height) || wraps(to.x, to.width) || wraps(to.y, to.height))
        throw Failure(to_rect ? "--to-rect" : "--rect", "reaches beyond " + std::to_string(INT32_MAX));
    // An empty canvas is as large as what is drawn there, if that makes sense at all.
    const int64_t right = int64_t{to.x} + to.width, bottom = int64_t{to.y} + to.height;
    const bool fits =
        (scales || (r.width <= all.width && r.height <= all.height)) && check_size(right, bottom).empty();
    const Size canvas = fits ? Size{static_cast<int32_t>(right), static_cast<int32_t>(bottom)} : all;

    const Surface before =
        within ? from.copy() : target.make(from.format(), canvas, has_alpha(from.format()));
    Drawing drawing;
    drawing.operation = operation;
    drawing.pixels =
        std::string(format_name(from.format())) + " to " + std::string(format_name(before.format()));
    drawing.area = (scales ? size_text(r.width, r.height) + " to " : "") + size_text(to.width, to.height);
    drawing.drawn = {to.width, to.height};
    drawing.set_up = set_up;
    drawing.call = [&](vexlor_context* ctx, const vexlor_surface_desc& dst) {
        const vexlor_surface_desc* src = within ? &dst : from.desc();
        return scales ? vexlor_scale(ctx, src, &dst, r.x, r.y, r.width, r.height, to.x, to.y, to.width,
                                     to.height)
                      : vexlor_copy(ctx, src, &dst, r.x, r.y, to.x, to.y, r.width, r.height);
    };
    target.draw(before, drawing);
}

} // namespace tool

#include "drawing.h"

#include "alpha.h"
#include "failure.h"
#include "file.h"
#include "formats.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <new>

namespace tool {

namespace {

// Runs `make`, turning a BadValue into a Failure about the file.
template <class Make> auto about(const std::string& file, Make make)
{
    try {
        return make();
    } catch (const BadValue& bad) {
        throw Failure(shown(file), bad.what());
    }
}

bool ends_with_one_of(const std::string& name, std::initializer_list<const char*> endings)
{
    return std::ranges::any_of(endings, [&name](const char* ending) { return name.ends_with(ending); });
}

void require_known_ending(const std::string& name)
{
    if (!ends_with_one_of(name, {".png", ".raw", ".yuv", ".rgb"}))
        throw Failure(name.empty() ? "--output" : name,
                      "the output's name must end in .png, or in .raw, .yuv or .rgb for a raw frame");
}

void write_surface(const std::string& name, const Surface& surface)
{
    if (name.ends_with(".png")) {
        write_file(name, encode_png(name, about(name, [&surface] { return unpack(surface); })));
        return;
    }
    std::vector<uint8_t> bytes;
    bytes.reserve(surface.row_bytes() * static_cast<size_t>(surface.size().height));
    for (int32_t y = 0; y < surface.size().height; ++y)
        bytes.insert(bytes.end(), surface.row(y), surface.row(y) + surface.row_bytes());
    write_file(name, bytes);
}

} // namespace

Context new_context()
{
    vexlor_context* ctx = nullptr;
    vexlor_context_create(&ctx);
    if (ctx == nullptr)
        throw std::bad_alloc();
    return Context(ctx);
}

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
    return about(file, [this] { return unpack(read_raw()); });
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
    options.text("!-o,--output", output, "FILE", ".png, or .raw, .yuv, .rgb: the surface's bytes");
    options.number("--repeat", repeat, 1, 100000,
                   "draw N times, each on a fresh copy, and report the best time");
}

Surface Target::make(uint32_t like, Size otherwise, bool alpha) const
{
    require_known_ending(output);
    if (!background.file.empty() && canvas)
        throw Failure("--canvas", "cannot be used together with the background " + shown(background.file));
    if (background.file.empty() && background.is_raw())
        throw Failure(output, "there is a raw format to draw on, but no file");
    if (background.is_raw() && (format == 0 || format == background.raw_format))
        return background.read_raw();
    const std::string& name = background.file.empty() ? output : background.file;
    return about(name, [&] {
        const Picture picture =
            !background.file.empty() ? background.read()
            : canvas
                ? plain_picture(*canvas, canvas_color.value_or(Color{}))
                : plain_picture(otherwise, canvas_color.value_or(Color{0, 0, 0, uint8_t(alpha ? 0 : 255)}));
        return pack(picture, format != 0 ? format : default_format(like, picture.has_alpha));
    });
}

void Target::draw(const Surface& before, const std::string& operation, const std::string& pixels, Size drawn,
                  const std::function<uint32_t(const vexlor_surface_desc&)>& call) const
{
    using Clock = std::chrono::steady_clock;
    Surface surface = before.copy();
    Clock::duration best = Clock::duration::max();
    for (int32_t i = 0; i < repeat; ++i) {
        if (i > 0)
            surface.assign(before);
        const auto start = Clock::now();
        const uint32_t result = call(*surface.desc());
        best = std::min(best, Clock::now() - start);
        if (result != VEXLOR_OK)
            throw Refused(operation, result);
    }
    write_surface(output, surface);
    const double seconds = std::max(std::chrono::duration<double>(best).count(), 1e-9);
    std::printf("%s: %s, %s, %dx%d, %.3f ms, %.0f Mpx/s\n", output.c_str(), operation.c_str(), pixels.c_str(),
                drawn.width, drawn.height, seconds * 1e3, double(drawn.width) * drawn.height / seconds / 1e6);
}

void Transfer::declare(Options& options)
{
    options.text("!source", source.file, "SOURCE", "PNG, JPEG or raw file; - is standard input");
    source.declare_raw(options, "", "the source");
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
    options.parsed("--at", at, parse_point, "X,Y", "place of the rectangle's corner (default: 0,0)");
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
    return about(source.file, [&] { return pack(picture, format); });
}

void Transfer::run(const std::string& operation, const vexlor_context* ctx) const
{
    const std::string& onto = target.background.file;
    if (within && (!onto.empty() || target.canvas || target.format != 0))
        throw Failure("--within", "goes without --onto, --canvas and --to");
    if (source.file == "-" && onto == "-")
        throw Failure("--onto", "standard input can be read only once");
    const Surface from = read_source();
    const Point to = at.value_or(Point{});
    const Size all = from.size();
    const Rect r = rect.value_or(Rect{0, 0, all.width, all.height});
    // The library would find nothing to draw in what wraps around.
    const auto wraps = [](int32_t start, int32_t length) { return start > 0 && length > INT32_MAX - start; };
    if (wraps(r.x, r.width) || wraps(r.y, r.height) || wraps(to.x, r.width) || wraps(to.y, r.height))
        throw Failure("--rect", "reaches beyond " + std::to_string(INT32_MAX));
    // An empty canvas is as large as what is drawn there, if that makes sense at all.
    const int64_t right = int64_t{to.x} + r.width, bottom = int64_t{to.y} + r.height;
    const bool fits = r.width <= all.width && r.height <= all.height && check_size(right, bottom).empty();
    const Size canvas = fits ? Size{static_cast<int32_t>(right), static_cast<int32_t>(bottom)} : all;

    const Surface before =
        within ? from.copy() : target.make(from.format(), canvas, has_alpha(from.format()));
    const std::string pixels =
        std::string(format_name(from.format())) + " to " + std::string(format_name(before.format()));
    target.draw(before, operation, pixels, {r.width, r.height}, [&](const vexlor_surface_desc& dst) {
        return vexlor_copy(ctx, within ? &dst : from.desc(), &dst, r.x, r.y, to.x, to.y, r.width, r.height);
    });
}

} // namespace tool

// Each plate is a function that fills a board. The drawing is spelled out in the library's calls, so that a plate can be
// read as an example of what it shows.
#include "gallery.h"

#include "alpha.h"
#include "board.h"
#include "context.h"
#include "failure.h"
#include "formats.h"
#include "samples.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tool {

namespace {

constexpr uint32_t bgrx = VEXLOR_FMT_B8G8R8X8, bgra = VEXLOR_FMT_B8G8R8A8, yuv = VEXLOR_FMT_U8Y8V8Y8,
                   r565 = VEXLOR_FMT_565;
constexpr const char* filters[] = {"none", "mean", "catrom"};
constexpr Size small_size{256, 128}, large_size{280, 210};
constexpr const char* dst_ops[] = {"blend", "replace", "one"};

void require(uint32_t result)
{
    if (result != VEXLOR_OK)
        throw Refused("sheet", result);
}

Surface plain(Size size, Color color, uint32_t format) { return pack(plain_picture(size, color), format); }

Surface scaled(vexlor_context* ctx, const Surface& from, Rect r, Size to, uint32_t filter, uint32_t format)
{
    Surface target = plain(to, {0, 0, 0, 255}, format);
    vexlor_context_set_filter(ctx, filter);
    require(vexlor_scale(ctx, from.desc(), target.desc(), r.x, r.y, r.width, r.height, 0, 0, to.width,
                         to.height));
    return target;
}

Surface scaled(const Surface& from, Size to, uint32_t filter, uint32_t format)
{
    return scaled(new_context().get(), from, {0, 0, from.size().width, from.size().height}, to, filter,
                  format);
}

Surface cut(const Surface& from, Rect r)
{
    Surface part({r.width, r.height}, from.format());
    require(vexlor_copy(new_context().get(), from.desc(), part.desc(), r.x, r.y, 0, 0, r.width, r.height));
    return part;
}

// The part of this size with the most contrast from column to column.
Rect liveliest(const Surface& surface, Size size)
{
    constexpr int32_t step = 16;
    Rect best{0, 0, size.width, size.height};
    int64_t most = -1;
    for (int32_t y = 0; y + size.height <= surface.size().height; y += step)
        for (int32_t x = 0; x + size.width <= surface.size().width; x += step) {
            int64_t contrast = 0;
            for (int32_t row = y; row < y + size.height; row += 2)
                for (int32_t i = x * 4; i < (x + size.width - 4) * 4; ++i)
                    contrast += std::abs(surface.row(row)[i] - surface.row(row)[i + 16]);
            if (contrast > most) {
                most = contrast;
                best.x = x;
                best.y = y;
            }
        }
    return best;
}

// A picture at one size, whatever it was, at a smaller one, and a part of it.
struct Photo {
    explicit Photo(const Picture& picture)
        : rgb(scaled(pack(picture, bgrx), {1024, 512}, VEXLOR_FILTER_MEAN, bgrx)),
          small(scaled(rgb, small_size, VEXLOR_FILTER_MEAN, bgrx)), detail(cut(rgb, liveliest(rgb, {56, 42})))
    {}
    Surface rgb, small, detail;
};

Surface in_format(const Surface& surface, uint32_t format) { return pack(unpack(surface), format); }

// Squares of two greys, which show through what is transparent.
Surface checks(Size size)
{
    Surface board = plain(size, {96, 96, 96, 255}, bgrx);
    const Context ctx = new_context();
    vexlor_context_set_color(ctx.get(), pack(Color{160, 160, 160, 255}, bgrx));
    constexpr int32_t side = 10;
    for (int32_t y = 0; y < size.height; y += side)
        for (int32_t x = y / side % 2 * side; x < size.width; x += 2 * side) {
            int32_t fx = x, fy = y, w = side, h = side;
            vexlor_surface_clip(board.desc(), &fx, &fy, &w, &h);
            require(vexlor_fill(ctx.get(), board.desc(), fx, fy, w, h));
        }
    return board;
}

Surface over_checks(const Surface& surface)
{
    Surface board = checks(surface.size());
    const Context ctx = new_context();
    vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx.get(), VEXLOR_ALPHA_SRC_PIXEL);
    require(vexlor_copy(ctx.get(), surface.desc(), board.desc(), 0, 0, 0, 0, surface.size().width,
                        surface.size().height));
    return board;
}

Surface alpha_channel(const Surface& surface)
{
    Picture picture = unpack(surface);
    for (size_t i = 0; i < picture.bytes(); i += 4)
        picture.pixels[i] = picture.pixels[i + 1] = picture.pixels[i + 2] = picture.pixels[i + 3];
    picture.has_alpha = false;
    return pack(picture, bgrx);
}

// A soft disc cut from the picture, straight or premultiplied.
Surface sprite(const Photo& photo, int32_t side, bool premultiplied)
{
    Picture picture = unpack(cut(photo.rgb, liveliest(photo.rgb, {side, side})));
    picture.has_alpha = true;
    const double radius = side / 2.0;
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x) {
            const double inside = 1 - std::hypot(x + 0.5 - radius, y + 0.5 - radius) / radius;
            picture.row(y)[4 * x + 3] =
                static_cast<uint8_t>(std::lround(255 * std::clamp(inside * 2, 0.0, 1.0)));
        }
    if (premultiplied)
        premultiply(picture, -1);
    return pack(picture, bgra);
}

Surface drawn_over(const Surface& source, Surface target, uint32_t mode, uint32_t dst_op)
{
    const Context ctx = new_context();
    vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx.get(), VEXLOR_ALPHA_SRC_PIXEL);
    vexlor_context_set_alpha_mode(ctx.get(), mode);
    vexlor_context_set_alpha_dst_op(ctx.get(), dst_op);
    require(vexlor_copy(ctx.get(), source.desc(), target.desc(), 0, 0, 0, 0, source.size().width,
                        source.size().height));
    return target;
}

// Rings that get finer towards the edge: what a reduction cannot show must vanish, not turn into other rings.
Surface rings(int32_t side)
{
    Picture picture({side, side}, false);
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x) {
            const double dx = x - side / 2.0, dy = y - side / 2.0;
            const double wave = std::cos((dx * dx + dy * dy) * std::numbers::pi / side);
            uint8_t* const pixel = picture.row(y) + size_t{4} * static_cast<size_t>(x);
            std::fill_n(pixel, 3, static_cast<uint8_t>(std::lround(127.5 + 127 * wave)));
            pixel[3] = 255;
        }
    return pack(picture, bgrx);
}

// Words with black around them: at its edges a surface has nothing to be interpolated with, and Catmull-Rom shows the
// second and third row in the place of the first.
Surface framed_words(const std::string& words)
{
    const Surface letters = text_surface(words, bgrx);
    const auto [width, height] = letters.size();
    Surface framed = plain({width + 2, height + 5}, {0, 0, 0, 255}, bgrx);
    require(vexlor_copy(new_context().get(), letters.desc(), framed.desc(), 0, 0, 2, 3, width, height));
    return framed;
}

Picture enlarging(const Photo& day, const Photo&)
{
    Board board("Enlarging five times", 3);
    const Surface letters = framed_words("Fade: 8x5");
    constexpr const char* names[] = {"none: nearest pixel", "mean: linear", "catrom: Catmull-Rom"};
    for (uint32_t filter = 0; filter < 3; ++filter)
        board.add(names[filter], scaled(day.detail, large_size, filter, bgrx));
    for (uint32_t filter = 0; filter < 3; ++filter)
        board.add(filters[filter], scaled(letters, {280, 70}, filter, bgrx));
    return board.draw();
}

Picture reducing(const Photo& day, const Photo&)
{
    Board board("Reducing", 3);
    const Surface plate = rings(320);
    constexpr const char* names[] = {"none: nearest pixel", "mean: of 2 x 2 pixels",
                                     "catrom: Gaussian, 3 x 3"};
    for (uint32_t filter = 0; filter < 3; ++filter)
        board.add(std::string(names[filter]) + "\n1024x512 to 256x128",
                  scaled(day.rgb, small_size, filter, bgrx));
    for (uint32_t filter = 0; filter < 3; ++filter)
        board.add(std::string(filters[filter]) + "\n320x320 to 160x160",
                  scaled(plate, {160, 160}, filter, bgrx));
    return board.draw();
}

Picture alpha_modes(const Photo& day, const Photo&)
{
    Board board("Straight and premultiplied: what fits and what does not", 4);
    constexpr int32_t side = 240;
    // Dark enough to be added to, light enough to be seen to be darkened.
    const Surface background = plain({side, side}, {72, 76, 84, 255}, bgrx);
    for (const bool premultiplied : {false, true})
        for (const uint32_t mode : {VEXLOR_ALPHA_STRAIGHT, VEXLOR_ALPHA_PREMULTIPLIED}) {
            const bool right = premultiplied == (mode == VEXLOR_ALPHA_PREMULTIPLIED);
            board.add(std::string(premultiplied ? "premultiplied pixels" : "straight pixels") +
                          (mode == VEXLOR_ALPHA_STRAIGHT ? "\nalpha_mode straight" : "\nalpha_mode premul.") +
                          (right                           ? "\nright"
                           : mode == VEXLOR_ALPHA_STRAIGHT ? "\nWRONG: too dark"
                                                           : "\nWRONG: too bright"),
                      drawn_over(sprite(day, side, premultiplied), background.copy(), mode,
                                 VEXLOR_ALPHA_DST_BLEND));
        }
    return board.draw();
}

Picture destination_alpha(const Photo& day, const Photo&)
{
    Board board("alpha_dst_op: over half transparent blue", 3);
    constexpr int32_t side = 200;
    for (const uint32_t mode : {VEXLOR_ALPHA_STRAIGHT, VEXLOR_ALPHA_PREMULTIPLIED})
        for (uint32_t dst_op = 0; dst_op < 3; ++dst_op)
            board.add(std::string(dst_ops[dst_op]) +
                          (mode == VEXLOR_ALPHA_STRAIGHT ? ", straight" : ", premul."),
                      over_checks(drawn_over(sprite(day, side, mode == VEXLOR_ALPHA_PREMULTIPLIED),
                                             plain({side, side}, {40, 80, 200, 128}, bgra), mode, dst_op)));
    for (uint32_t dst_op = 0; dst_op < 3; ++dst_op)
        board.add(
            std::string(dst_ops[dst_op]) + ": its alpha",
            alpha_channel(drawn_over(sprite(day, side, false), plain({side, side}, {40, 80, 200, 128}, bgra),
                                     VEXLOR_ALPHA_STRAIGHT, dst_op)));
    return board.draw();
}

Picture fading(const Photo& day, const Photo& night)
{
    Board board("One weight for all pixels: alpha_value", 4);
    const auto fade = [&](uint32_t format, int32_t weight) {
        Surface target = in_format(day.small, format);
        const Surface source = in_format(night.small, format);
        const Context ctx = new_context();
        vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_BLEND);
        vexlor_context_set_alpha_value(ctx.get(), static_cast<uint8_t>(weight));
        require(vexlor_copy(ctx.get(), source.desc(), target.desc(), 0, 0, 0, 0, small_size.width,
                            small_size.height));
        return target;
    };
    for (const int32_t weight : {0, 85, 170, 255})
        board.add("32 bit, weight " + std::to_string(weight), fade(bgrx, weight));
    for (const int32_t weight : {0, 10, 20, 31})
        board.add("565, weight " + std::to_string(weight) + (weight == 31 ? ":\nred and blue are there" : ""),
                  fade(r565, weight));
    for (const int32_t weight : {48, 63, 128, 255})
        board.add("565, weight " + std::to_string(weight) +
                      (weight == 63 ? ":\ngreen is there" : ":\nwraps around"),
                  fade(r565, weight));
    return board.draw();
}

Picture alpha_tests(const Photo& day, const Photo& night)
{
    Board board("The alpha test: a ramp from 0 to 255, reference 128", 3);
    constexpr const char* names[] = {"less", "less-equal", "equal", "greater-equal", "greater", "not-equal"};
    Picture ramp = unpack(night.small);
    set_alpha(ramp, "ramp:0:255", {});
    // Steps, so that "equal" is more than a line.
    for (size_t i = 3; i < ramp.bytes(); i += 4)
        ramp.pixels[i] &= 0xE0;
    const Surface source = pack(ramp, bgra);
    for (uint32_t test = 0; test < std::size(names); ++test) {
        const Surface target = in_format(day.small, bgra);
        const Context ctx = new_context();
        vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_TEST);
        vexlor_context_set_alpha_dst_op(ctx.get(), VEXLOR_ALPHA_DST_REPLACE);
        vexlor_context_set_alpha_test(ctx.get(), test);
        vexlor_context_set_alpha_ref(ctx.get(), 128);
        require(vexlor_copy(ctx.get(), source.desc(), target.desc(), 0, 0, 0, 0, small_size.width,
                            small_size.height));
        board.add(names[test], target);
    }
    return board.draw();
}

Picture fills(const Photo& day, const Photo&)
{
    Board board("Fills", 3);
    const auto fill = [&](const std::string& label, bool blended, uint8_t weight, uint32_t dst_op) {
        const Surface target = in_format(day.small, bgra);
        const Context ctx = new_context();
        vexlor_context_set_color(ctx.get(), pack(Color{22, 52, 92, 64}, bgra));
        vexlor_context_set_alpha_op(ctx.get(), blended ? VEXLOR_ALPHA_OP_BLEND : VEXLOR_ALPHA_OP_NONE);
        vexlor_context_set_alpha_value(ctx.get(), weight);
        vexlor_context_set_alpha_dst_op(ctx.get(), dst_op);
        require(vexlor_fill(ctx.get(), target.desc(), 32, 24, 192, 80));
        board.add(label, over_checks(target));
    };
    fill("written, colour's alpha 64", false, 0, VEXLOR_ALPHA_DST_BLEND);
    fill("written, dst alpha one:\na quarter of each row", false, 0, VEXLOR_ALPHA_DST_ONE);
    fill("weight 255", true, 255, VEXLOR_ALPHA_DST_BLEND);
    for (uint32_t dst_op = 0; dst_op < 3; ++dst_op)
        fill(std::string("weight 160, dst alpha ") + dst_ops[dst_op] +
                 (dst_op == 1 ? ":\nthe weight goes into byte 0" : ""),
             true, 160, dst_op);
    return board.draw();
}

Picture pixel_formats(const Photo& day, const Photo&)
{
    Board board("Formats", 3);
    const Surface& detail = day.detail;
    board.add("32 bit", scaled(detail, large_size, VEXLOR_FILTER_NONE, bgrx));
    board.add("565", scaled(in_format(detail, r565), large_size, VEXLOR_FILTER_NONE, r565));
    board.add("YUV 4:2:2", scaled(in_format(detail, yuv), large_size, VEXLOR_FILTER_NONE, bgrx));
    board.add("32 bit, linear", scaled(detail, large_size, VEXLOR_FILTER_MEAN, bgrx));
    board.add("565, linear: wraps around",
              scaled(in_format(detail, r565), large_size, VEXLOR_FILTER_MEAN, r565));
    board.add("YUV 4:2:2, linear: rows repeat",
              scaled(in_format(detail, yuv), large_size, VEXLOR_FILTER_MEAN, bgrx));
    return board.draw();
}

// What surprises, and is part of the contract.
Picture peculiarities(const Photo& day, const Photo&)
{
    Board board("Peculiarities", 3);
    Surface dark = day.small.copy();
    for (int pass = 1; pass <= 8; ++pass) {
        dark = scaled(dark, dark.size(), VEXLOR_FILTER_MEAN, bgrx);
        if (pass == 1 || pass == 8)
            board.add("mean at the same size,\n" + std::to_string(pass) + (pass == 1 ? " time" : " times"),
                      dark);
    }
    const Surface frame = in_format(day.small, yuv);
    const Context used = new_context();
    scaled(used.get(), frame, {0, 0, 256, 128}, {256, 10}, VEXLOR_FILTER_MEAN, bgrx);
    board.add("filtered YUV on a context that\nreduced before: rows lag",
              scaled(used.get(), frame, {0, 0, 256, 128}, small_size, VEXLOR_FILTER_MEAN, bgrx));

    const Surface fresh = scaled(frame, small_size, VEXLOR_FILTER_MEAN, bgrx);
    board.add("the same on a fresh context", fresh);
    Surface copies[2] = {plain(small_size, {}, VEXLOR_FMT_X8R8G8B8),
                         plain(small_size, {}, VEXLOR_FMT_X8R8G8B8)};
    for (const uint32_t simd : {simd_none, simd_all})
        require(vexlor_copy(new_context(simd).get(), frame.desc(), copies[simd != simd_none].desc(), 0, 0, 0,
                            0, small_size.width, small_size.height));
    board.add("YUV to X8R8G8B8: SIMD on\nagainst off, times 255",
              pack(picture_of_differences(samples_of(copies[0]), samples_of(copies[1]), 255), bgrx));
    Surface narrow = in_format(day.small, r565);
    const Surface source = plain({64, 16}, {240, 140, 40, 255}, r565);
    require(vexlor_scale(new_context().get(), source.desc(), narrow.desc(), 0, 0, 64, 16, 20, 40, 90, 64));
    board.add("565 repeats rows twice as wide\nas its rectangle", narrow);
    return board.draw();
}

} // namespace

std::vector<Plate> gallery(const Picture& day_picture, const Picture& night_picture)
{
    const Photo day(day_picture), night(night_picture);
    struct {
        const char *name, *title;
        Picture (*draw)(const Photo&, const Photo&);
    } constexpr plates[] = {
        {"1-enlarging", "filters, enlarging", enlarging},
        {"2-reducing", "filters, reducing", reducing},
        {"3-alpha-modes", "straight and premultiplied alpha", alpha_modes},
        {"4-destination-alpha", "what becomes of the alpha byte", destination_alpha},
        {"5-fading", "blending by one weight", fading},
        {"6-alpha-tests", "copying by alpha test", alpha_tests},
        {"7-fills", "fills", fills},
        {"8-formats", "pixel formats", pixel_formats},
        {"9-peculiarities", "what surprises", peculiarities},
    };
    std::vector<Plate> drawn;
    for (const auto& [name, title, draw] : plates)
        drawn.push_back({name, title, draw(day, night)});
    return drawn;
}

} // namespace tool

// libyuv. Its ARGB is the bytes B, G, R, A. Jobs that it has no single call for are put together from two or three,
// in bands that stay in the cache where its calls allow it.
#include "peers.h"

#include <libyuv.h>
#include <memory>

namespace bench {
namespace {

using Scratch = std::shared_ptr<Picture>;

void done(int code) { demand(code == 0, "libyuv"); }

Scratch scratch(int width, int height)
{
    return std::make_shared<Picture>(width, height, VEXLOR_FMT_B8G8R8A8, 1024);
}

// As many rows as in_bands hands out at most.
Scratch band_scratch(int width)
{
    int most = 0;
    in_bands(1 << 20, width * 4, [&](int, int rows) { most = std::max(most, rows); });
    return scratch(width, most);
}

libyuv::FilterMode filter_of(Filter filter)
{
    switch (filter) {
    case Filter::nearest: return libyuv::kFilterNone;
    case Filter::box: return libyuv::kFilterBox;
    default: return libyuv::kFilterBilinear;
    }
}

// Scales the rows [y, y + rows) of a picture of the size of `to` into the first rows of `band`.
void scale_band(const Picture& from, const Picture& to, const Picture& band, int y, int rows,
                libyuv::FilterMode filter)
{
    // The call counts rows from the whole picture's first, which need not be there.
    const auto first =
        reinterpret_cast<uintptr_t>(band.pixels()) - static_cast<uintptr_t>(y) * band.surface().stride;
    done(libyuv::ARGBScaleClip(from.pixels(), from.stride(), from.width(), from.height(),
                               reinterpret_cast<uint8_t*>(first), band.stride(), to.width(), to.height(), 0,
                               y, to.width(), rows, filter));
}

std::vector<Drawing> blended_fill(const Scene& scene)
{
    // One row of the colour serves as the source of every row: its stride is 0.
    const Picture& to = scene.target;
    const Scratch row = scratch(to.width(), 1), faint = scratch(to.width(), 1);
    done(libyuv::ARGBRect(row->pixels(), row->stride(), 0, 0, to.width(), 1, fill_color));
    done(libyuv::ARGBRect(faint->pixels(), faint->stride(), 0, 0, to.width(), 1,
                          (fill_color & 0xFFFFFF) | uint32_t{weight} << 24));
    done(libyuv::ARGBAttenuate(faint->pixels(), faint->stride(), faint->pixels(), faint->stride(), to.width(),
                               1));
    return {{"libyuv interpolate",
             [&, row] {
                 done(libyuv::ARGBInterpolate(to.pixels(), to.stride(), row->pixels(), 0, to.pixels(),
                                              to.stride(), to.width(), to.height(), weight + 1));
             }},
            {"libyuv blend", [&, faint] {
                 done(libyuv::ARGBBlend(faint->pixels(), 0, to.pixels(), to.stride(), to.pixels(),
                                        to.stride(), to.width(), to.height()));
             }}};
}

Drawing over(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    return {"libyuv 2-pass", [&, band = band_scratch(to.width())] {
                in_bands(to.height(), band->stride(), [&](int y, int rows) {
                    done(libyuv::ARGBAttenuate(from.row(y), from.stride(), band->pixels(), band->stride(),
                                               to.width(), rows));
                    done(libyuv::ARGBBlend(band->pixels(), band->stride(), to.row(y), to.stride(), to.row(y),
                                           to.stride(), to.width(), rows));
                });
            }};
}

std::vector<Drawing> global(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    if (to.format() == VEXLOR_FMT_565)
        return {};
    if (!(from.format() & 0x40))
        return {{"libyuv", [&] {
                     done(libyuv::ARGBInterpolate(to.pixels(), to.stride(), from.pixels(), from.stride(),
                                                  to.pixels(), to.stride(), to.width(), to.height(),
                                                  weight + 1));
                 }}};
    return {{"libyuv 2-pass", [&, band = band_scratch(to.width())] {
                 in_bands(to.height(), band->stride(), [&](int y, int rows) {
                     done(libyuv::UYVYToARGB(from.row(y), from.stride(), band->pixels(), band->stride(),
                                             to.width(), rows));
                     done(libyuv::ARGBInterpolate(to.row(y), to.stride(), band->pixels(), band->stride(),
                                                  to.row(y), to.stride(), to.width(), rows, weight + 1));
                 });
             }}};
}

// UYVY scaled in RGB, after the whole source is converted, or plane by plane and converted at the end.
std::vector<Drawing> scale_yuv(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    const libyuv::FilterMode filter = filter_of(scene.job.filter);
    std::vector<Drawing> ways;
    ways.push_back({"libyuv 2-pass", [&, filter, rgb = scratch(from.width(), from.height())] {
                        done(libyuv::UYVYToARGB(from.pixels(), from.stride(), rgb->pixels(), rgb->stride(),
                                                from.width(), from.height()));
                        done(libyuv::ARGBScale(rgb->pixels(), rgb->stride(), rgb->width(), rgb->height(),
                                               to.pixels(), to.stride(), to.width(), to.height(), filter));
                    }});
    struct Planes {
        Planes(int w, int h) : width(w), height(h), y(size(w, h)), u(size(w / 2, h)), v(size(w / 2, h)) {}
        static size_t size(int w, int h) { return static_cast<size_t>(w) * static_cast<size_t>(h) + 64; }
        int width, height;
        std::vector<uint8_t> y, u, v;
    };
    const auto in = std::make_shared<Planes>(from.width(), from.height());
    const auto out = std::make_shared<Planes>(to.width(), to.height());
    ways.push_back(
        {"libyuv planes", [&, filter, in, out] {
             done(libyuv::UYVYToI422(from.pixels(), from.stride(), in->y.data(), in->width, in->u.data(),
                                     in->width / 2, in->v.data(), in->width / 2, in->width, in->height));
             done(libyuv::I422Scale(in->y.data(), in->width, in->u.data(), in->width / 2, in->v.data(),
                                    in->width / 2, in->width, in->height, out->y.data(), out->width,
                                    out->u.data(), out->width / 2, out->v.data(), out->width / 2, out->width,
                                    out->height, filter));
             done(libyuv::I422ToARGB(out->y.data(), out->width, out->u.data(), out->width / 2, out->v.data(),
                                     out->width / 2, to.pixels(), to.stride(), out->width, out->height));
         }});
    return ways;
}

Drawing scale_565(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    const libyuv::FilterMode filter = filter_of(scene.job.filter);
    if (filter == libyuv::kFilterNone) // pixels as 16-bit samples
        return {"libyuv", [&] {
                    libyuv::ScalePlane_16(reinterpret_cast<const uint16_t*>(from.pixels()), from.stride() / 2,
                                          from.width(), from.height(),
                                          reinterpret_cast<uint16_t*>(to.pixels()), to.stride() / 2,
                                          to.width(), to.height(), libyuv::kFilterNone);
                }};
    return {"libyuv via ARGB",
            [&, filter, wide = scratch(from.width(), from.height()), band = band_scratch(to.width())] {
                done(libyuv::RGB565ToARGB(from.pixels(), from.stride(), wide->pixels(), wide->stride(),
                                          from.width(), from.height()));
                in_bands(to.height(), band->stride(), [&](int y, int rows) {
                    scale_band(*wide, to, *band, y, rows, filter);
                    done(libyuv::ARGBToRGB565(band->pixels(), band->stride(), to.row(y), to.stride(),
                                              to.width(), rows));
                });
            }};
}

std::vector<Drawing> scale(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    if (scene.job.filter == Filter::catrom || scene.job.filter == Filter::gauss)
        return {}; // it has neither
    if (from.format() & 0x40)
        return scale_yuv(scene);
    if (from.format() == VEXLOR_FMT_565)
        return {scale_565(scene)};
    return {{"libyuv", [&, filter = filter_of(scene.job.filter)] {
                 done(libyuv::ARGBScale(from.pixels(), from.stride(), from.width(), from.height(),
                                        to.pixels(), to.stride(), to.width(), to.height(), filter));
             }}};
}

Drawing scale_over(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    return {"libyuv 2-pass", [&, filter = filter_of(scene.job.filter), band = band_scratch(to.width())] {
                in_bands(to.height(), band->stride(), [&](int y, int rows) {
                    scale_band(from, to, *band, y, rows, filter);
                    done(libyuv::ARGBBlend(band->pixels(), band->stride(), to.row(y), to.stride(), to.row(y),
                                           to.stride(), to.width(), rows));
                });
            }};
}

std::vector<Drawing> drawings(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    switch (scene.job.work) {
    case Work::fill:
        if (to.format() == VEXLOR_FMT_565)
            return {};
        return {
            {"libyuv", [&] {
                 done(libyuv::ARGBRect(to.pixels(), to.stride(), 0, 0, to.width(), to.height(), fill_color));
             }}};
    case Work::fill_blend: return blended_fill(scene);
    case Work::copy:
        return {{"libyuv", [&] {
                     done(libyuv::ARGBCopy(from.pixels(), from.stride(), to.pixels(), to.stride(), to.width(),
                                           to.height()));
                 }}};
    case Work::over: return {over(scene)};
    case Work::over_premultiplied:
        return {{"libyuv", [&] {
                     done(libyuv::ARGBBlend(from.pixels(), from.stride(), to.pixels(), to.stride(),
                                            to.pixels(), to.stride(), to.width(), to.height()));
                 }}};
    case Work::global: return global(scene);
    case Work::convert:
        if (!(from.format() & 0x40))
            return {{"libyuv", [&] {
                         done(libyuv::ARGBToUYVY(from.pixels(), from.stride(), to.pixels(), to.stride(),
                                                 to.width(), to.height()));
                     }}};
        // Its bytes are B, G, R, A also where the library's are the other way round.
        return {{"libyuv",
                 [&] {
                     done(libyuv::UYVYToARGB(from.pixels(), from.stride(), to.pixels(), to.stride(),
                                             to.width(), to.height()));
                 },
                 VEXLOR_FMT_B8G8R8A8}};
    case Work::scale: return scale(scene);
    case Work::scale_over: return {scale_over(scene)};
    default: return {};
    }
}

} // namespace

Peer libyuv_peer() { return {"libyuv", std::to_string(LIBYUV_VERSION), drawings}; }

} // namespace bench

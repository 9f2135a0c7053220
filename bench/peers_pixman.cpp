// pixman: composition with the operators SRC and OVER, solid sources and masks, scaling by a transform.
// Its OVER rounds (x * a + 127) / 255 where the library shifts by 8.
#include "peers.h"

#include <memory>
#include <pixman.h>

namespace bench {
namespace {

struct Unref {
    void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};
using Image = std::shared_ptr<pixman_image_t>;

Image owned(pixman_image_t* image)
{
    if (!image)
        refuse("pixman", "no image");
    return {image, Unref{}};
}

Image view(const Picture& picture, pixman_format_code_t format)
{
    return owned(pixman_image_create_bits(format, picture.width(), picture.height(),
                                          reinterpret_cast<uint32_t*>(picture.pixels()), picture.stride()));
}

Image solid(uint32_t argb)
{
    const auto wide = [argb](int shift) { return static_cast<uint16_t>((argb >> shift & 0xFF) * 0x101); };
    const pixman_color_t color = {wide(16), wide(8), wide(0), wide(24)};
    return owned(pixman_image_create_solid_fill(&color));
}

Drawing composite(const Scene& scene, pixman_op_t op, Image from, Image mask, Image to)
{
    return {"pixman", [=, width = scene.target.width(), height = scene.target.height()] {
                pixman_image_composite32(op, from.get(), mask.get(), to.get(), 0, 0, 0, 0, 0, 0, width,
                                         height);
            }};
}

std::vector<Drawing> scaled(const Scene& scene, pixman_op_t op, pixman_format_code_t format)
{
    const Picture &from = scene.source, &to = scene.target;
    const Filter filter = scene.job.filter;
    if (filter == Filter::catrom || filter == Filter::gauss)
        return {};
    const Image source = view(from, format);
    const auto ratio = [](int a, int b) {
        return static_cast<pixman_fixed_t>((static_cast<int64_t>(a) << 16) / b);
    };
    pixman_transform_t transform;
    pixman_transform_init_scale(&transform, ratio(from.width(), to.width()),
                                ratio(from.height(), to.height()));
    demand(pixman_image_set_transform(source.get(), &transform), "pixman");
    // At half size a bilinear sample lies between four pixels: their mean, as the box gives it.
    demand(pixman_image_set_filter(source.get(),
                                   filter == Filter::nearest ? PIXMAN_FILTER_NEAREST : PIXMAN_FILTER_BILINEAR,
                                   nullptr, 0),
           "pixman");
    pixman_image_set_repeat(source.get(), PIXMAN_REPEAT_PAD);
    return {composite(scene, op, source, nullptr, view(to, format))};
}

std::vector<Drawing> drawings(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    const bool half = to.format() == VEXLOR_FMT_565;
    const auto format = half ? PIXMAN_r5g6b5 : PIXMAN_a8r8g8b8;
    if ((from.format() | to.format()) & 0x40)
        return {}; // UYVY is none of its formats
    switch (scene.job.work) {
    case Work::fill:
        return {{"pixman", [&, half] {
                     demand(pixman_fill(reinterpret_cast<uint32_t*>(to.pixels()), to.stride() / 4,
                                        half ? 16 : 32, 0, 0, to.width(), to.height(), fill_color),
                            "pixman");
                 }}};
    case Work::fill_blend: {
        const auto part = [](int shift) { return (fill_color >> shift & 0xFF) * weight / 255 << shift; };
        const uint32_t premultiplied = part(0) | part(8) | part(16) | uint32_t{weight} << 24;
        return {composite(scene, PIXMAN_OP_OVER, solid(premultiplied), nullptr, view(to, format))};
    }
    case Work::copy: return {composite(scene, PIXMAN_OP_SRC, view(from, format), nullptr, view(to, format))};
    case Work::copy_opaque:
        return {composite(scene, PIXMAN_OP_SRC, view(from, PIXMAN_x8r8g8b8), nullptr, view(to, format))};
    case Work::over_premultiplied:
        return {composite(scene, PIXMAN_OP_OVER, view(from, format), nullptr, view(to, format))};
    case Work::global:
        return {composite(scene, PIXMAN_OP_OVER, view(from, half ? PIXMAN_r5g6b5 : PIXMAN_x8r8g8b8),
                          solid(uint32_t{weight} << 24), view(to, format))};
    case Work::scale: return scaled(scene, PIXMAN_OP_SRC, format);
    case Work::scale_over: return scaled(scene, PIXMAN_OP_OVER, format);
    default: return {};
    }
}

} // namespace

Peer pixman_peer() { return {"pixman", pixman_version_string(), drawings}; }

} // namespace bench

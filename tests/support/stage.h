// Where whole scale calls are compared with their model: one context and its model, and two memories with twins, in
// which the model draws.
#pragma once

#include "scale_model.h"
#include "scene.h"

// Formats that scale into each other.
inline constexpr struct {
    uint32_t from, to;
} scalable[] = {
    {0x00000010, 0x00000010}, {0x20000020, 0x20000020}, {0x20000020, 0x60000020}, {0x60000020, 0x60000020},
    {0x60000020, 0x20000020}, {0xA0000020, 0xE0000020}, {0xE0000020, 0xE0000020}, {0xE0000020, 0xA0000020},
    {0x00000050, 0x00000050}, {0x80000050, 0x80000050}, {0x00000050, 0x20000020}, {0x00000050, 0xE0000020},
    {0x80000050, 0x60000020}, {0x80000050, 0xA0000020},
};

inline model::Surface surface_at(Arena& arena, Side side, uint32_t format, int32_t w, int32_t h, uint32_t pad)
{
    const uint32_t row = static_cast<uint32_t>(w) * ((format & 0x3F) / 8), stride = row + pad;
    uint8_t* const pixels = arena.place(static_cast<size_t>(h - 1) * stride + row, side, 0);
    return {{w, h, stride, pixels, format}, arena.twin(pixels)};
}

class Stage {
public:
    Stage(size_t pages, uint64_t seed) : random(seed), source(pages), target(pages) { refresh(); }

    void refresh()
    {
        context = make_context();
        scaler_ = {};
        if (random.one_in(3))
            context->memcpy = vexlor_memcpy16_sse; // as with SIMD, the row cache has rows at multiples of 16
        if (random.one_in(3))                      // the same bytes from converters that nobody knows
            context->conversions[1] = context->conversions[5] = [](const void* s, void* d, int32_t n) {
                vexlor_1d_Y8V8Y8U8_2_X8R8G8B8(s, d, n);
            };
    }

    // Scales between surfaces that lie in `source` and `target`, through the entry or through one driver.
    testing::AssertionResult compare(const model::Surface& src, const model::Surface& dst,
                                     const model::Rectangles& r, const model::Driver* driver = nullptr)
    {
        constexpr decltype(&vexlor_scale) entries[] = {
            vexlor_scale_opaque_nofilter, vexlor_scale_opaque_filter, vexlor_scale_blend_over_src_nofilter,
            vexlor_scale_blend_over_src_filter};
        source.randomize(random);
        target.randomize(random);
        const auto entry = driver != nullptr ? entries[static_cast<int>(*driver)] : vexlor_scale;
        const uint32_t code =
            entry(context.get(), &src.desc, &dst.desc, r.sx, r.sy, r.sw, r.sh, r.dx, r.dy, r.dw, r.dh);
        const uint32_t expected = driver != nullptr ? scaler_.drive(*driver, *context, src, dst, r)
                                                    : scaler_.scale(context.get(), &src, &dst, r);
        drawn += code == 0 ? 1 : 0;
        if (code == expected && source.same() && target.same())
            return testing::AssertionSuccess();
        auto failure = testing::AssertionFailure();
        for (const model::Surface* s : {&src, &dst})
            failure << std::hex << s->desc.format << std::dec << ' ' << s->desc.width << 'x' << s->desc.height
                    << " stride " << s->desc.stride << (s == &src ? " -> " : "; ");
        return failure << r.sx << ',' << r.sy << ' ' << r.sw << 'x' << r.sh << " -> " << r.dx << ',' << r.dy
                       << ' ' << r.dw << 'x' << r.dh << "; driver "
                       << (driver != nullptr ? static_cast<int>(*driver) : -1) << ", filter "
                       << context->filter << ", op " << context->alpha_op << ' ' << context->alpha_src << ' '
                       << context->alpha_dst_op << ' ' << context->alpha_mode << "; result " << code
                       << ", expected " << expected << "; source "
                       << source.same_as_twin(src.desc.pixels).message() << "; target "
                       << target.same_as_twin(dst.desc.pixels).message();
    }

    Random random;
    Context context;
    Arena source, target;
    uint64_t drawn = 0; // calls that were not refused

private:
    model::Scaler scaler_;
};

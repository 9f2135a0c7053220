// Scaling through the entry: the result code, and every byte where a model can follow. One context serves several calls,
// because its row cache remembers.
#include "geometry.h"
#include "support/scale_model.h"

#include <optional>

namespace {

// Filtered calls look at whole source rows for each destination row, some for each pixel, and convert YUV ones whole.
bool is_quick(const vexlor_surface_desc& src, const model::Rectangles& r, bool filtered)
{
    const int64_t pixels = int64_t{r.dw} * r.dh, row = filtered ? int64_t{src.stride} + 64 : 1;
    const bool each_pixel = r.sh == 1;
    return pixels <= 1 << 14 && row * (each_pixel ? pixels : int64_t{r.dh} + r.sh) <= 1 << 20 &&
           (!filtered || !each_pixel || pixels * r.dw <= 1 << 18);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    const fuzz::Owner owner;
    model::Scaler scaler;
    bool modelled = true; // as long as the model has seen what the cache has
    for (int calls = 0; calls < 4 && input.more(); ++calls) {
        fuzz::choose_state(input, owner.ctx);
        constexpr uint32_t yuv[] = {0x50, 0x80000050};
        const uint32_t from = input.one_in(3) ? input.pick(yuv) : fuzz::choose_format(input);
        const bool one_surface = input.one_in(6);
        const fuzz::Memory source(input, fuzz::choose_surface(input, from), 0);
        std::optional<fuzz::Memory> other;
        if (!one_surface)
            other.emplace(input,
                          fuzz::choose_surface(input, input.one_in(2) ? from : fuzz::choose_format(input)),
                          size_t{0});
        const fuzz::Memory& target = one_surface ? source : *other;
        const model::Surface &src = source.surface(), &dst = target.surface();
        model::Rectangles r;
        fuzz::choose_part(input, src.desc.width, r.sx, r.sw);
        fuzz::choose_part(input, src.desc.height, r.sy, r.sh);
        fuzz::choose_part(input, dst.desc.width, r.dx, r.dw);
        fuzz::choose_part(input, dst.desc.height, r.dy, r.dh);
        if (r.sw > 1 && input.one_in(2))
            r.sw &= ~1;

        const model::Surface src_described{src.desc, nullptr}, dst_described{dst.desc, nullptr};
        const uint32_t expected = scaler.scale(owner.ctx, &src_described, &dst_described, r);
        const bool draws = expected == 0 && !fuzz::wraps(r.sx, r.sw) && !fuzz::wraps(r.sy, r.sh) &&
                           !fuzz::wraps(r.dx, r.dw) && !fuzz::wraps(r.dy, r.dh) &&
                           (!model::equivalent(src.desc.format, dst.desc.format) || src.bpp() == dst.bpp());
        if (draws &&
            (!source.is_owned() || !target.is_owned() || !is_quick(src.desc, r, owner.ctx->filter != 0)))
            continue;
        const uint32_t code =
            vexlor_scale(owner.ctx, &src.desc, &dst.desc, r.sx, r.sy, r.sw, r.sh, r.dx, r.dy, r.dw, r.dh);
        fuzz::require(code == expected, "another result code");
        constexpr int32_t longest = 0x7FFF; // that 16.16 holds
        const bool holds = std::max({r.sw, r.sh, r.dw, r.dh, r.sx, r.sy}) <= longest;
        if (draws && !(fuzz::is_portable(*owner.ctx) && source.is_small() && target.is_small() && holds))
            modelled = false;
        if (!modelled)
            continue;
        if (source.is_small() && target.is_small())
            scaler.scale(owner.ctx, &src, &dst, r);
        fuzz::require(source.same() && target.same(), "other bytes");
    }
    return 0;
}

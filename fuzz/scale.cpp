// Scaling through the entry: the result code, and every byte where a model can follow. One context serves several calls,
// because its row cache remembers.
#include "geometry.h"
#include "support/scale_model.h"

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
        const fuzz::Pair pair(input, from, 6);
        const model::Surface &src = pair.src(), &dst = pair.dst();
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
                           !fuzz::wraps(r.dx, r.dw) && !fuzz::wraps(r.dy, r.dh) && pair.agree_on_size();
        if (draws && (!pair.are_owned() || !is_quick(src.desc, r, owner.ctx->filter != 0)))
            continue;
        const uint32_t code =
            vexlor_scale(owner.ctx, &src.desc, &dst.desc, r.sx, r.sy, r.sw, r.sh, r.dx, r.dy, r.dw, r.dh);
        fuzz::require(code == expected, "another result code");
        constexpr int32_t longest = 0x7FFF; // that 16.16 holds
        const bool holds = std::max({r.sw, r.sh, r.dw, r.dh, r.sx, r.sy}) <= longest;
        if (draws && !(fuzz::is_portable(*owner.ctx) && pair.are_small() && holds))
            modelled = false;
        if (!modelled)
            continue;
        if (pair.are_small())
            scaler.scale(owner.ctx, &src, &dst, r);
        fuzz::require(pair.same(), "other bytes");
    }
    return 0;
}

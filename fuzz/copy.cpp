// Copies, tests, blends and conversions: the result code, and every byte where a model can follow.
#include "geometry.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    const fuzz::Owner owner;
    for (int calls = 0; calls < 4 && input.more(); ++calls) {
        fuzz::choose_state(input, owner.ctx);
        const uint32_t from = fuzz::choose_format(input);
        const fuzz::Pair pair(input, from, 4);
        const model::Surface &src = pair.src(), &dst = pair.dst();
        int32_t sx, sy, dx, dy, w, h, unused;
        fuzz::choose_part(input, std::min(src.desc.width, dst.desc.width), sx, w);
        fuzz::choose_part(input, std::min(src.desc.height, dst.desc.height), sy, h);
        fuzz::choose_part(input, model::sum(model::sum(dst.desc.width, ~w), 2), dx, unused);
        fuzz::choose_part(input, model::sum(model::sum(dst.desc.height, ~h), 2), dy, unused);
        if (w > 1 && input.one_in(2))
            w &= ~1; // rows that become RGB are even

        const model::Surface src_described{src.desc, nullptr}, dst_described{dst.desc, nullptr};
        const uint32_t expected =
            model::Copy{owner.ctx, &src_described, &dst_described, sx, sy, dx, dy, w, h}.run();
        const bool draws = expected == 0 && !fuzz::wraps(sx, w) && !fuzz::wraps(sy, h) &&
                           !fuzz::wraps(dx, w) && !fuzz::wraps(dy, h) && pair.agree_on_size();
        if (draws && (!pair.are_owned() || !fuzz::is_quick(w, h)))
            continue;
        const uint32_t code = vexlor_copy(owner.ctx, &src.desc, &dst.desc, sx, sy, dx, dy, w, h);
        fuzz::require(code == expected, "another result code");
        if (draws && (!fuzz::is_portable(*owner.ctx) || !pair.are_small()))
            continue;
        if (pair.are_small())
            model::Copy{owner.ctx, &src, &dst, sx, sy, dx, dy, w, h}.run();
        fuzz::require(pair.same(), "other bytes");
    }
    return 0;
}

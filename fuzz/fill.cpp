// Fills: the result code, and every byte where a model can follow.
#include "geometry.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    const fuzz::Owner owner;
    for (int calls = 0; calls < 4 && input.more(); ++calls) {
        fuzz::choose_state(input, owner.ctx);
        const uint32_t format = fuzz::choose_format(input);
        // Rows of an odd number of bytes end in a 16-bit store.
        const fuzz::Memory memory(input, fuzz::choose_surface(input, format), (format & 8) != 0 ? 1 : 0);
        const model::Surface& dst = memory.surface();
        int32_t x, y, w, h;
        fuzz::choose_part(input, dst.desc.width, x, w);
        fuzz::choose_part(input, dst.desc.height, y, h);

        const model::Surface described{dst.desc, nullptr};
        const uint32_t expected = model::fill(owner.ctx, &described, x, y, w, h);
        const bool draws = expected == 0;
        if (draws && (!memory.is_owned() || !fuzz::inside(dst.desc, x, y, w, h) || !fuzz::is_quick(w, h)))
            continue; // the caller's own fault, or too long
        fuzz::require(vexlor_fill(owner.ctx, &dst.desc, x, y, w, h) == expected, "another result code");
        if (draws && (!fuzz::is_portable(*owner.ctx) || !memory.is_small()))
            continue;
        model::fill(owner.ctx, &dst, x, y, w, h);
        fuzz::require(memory.same(), "other bytes");
    }
    return 0;
}

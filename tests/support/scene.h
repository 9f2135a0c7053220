// Random surfaces in exact memory and random drawing state, right and wrong.
#pragma once

#include "arena.h"
#include "model_draw.h"
#include "recorder.h"

// Known formats, and codes that differ from them in one way that the library looks at: size, bits, family.
inline constexpr uint32_t formats[] = {0x00000010, 0x00000050, 0x80000050, 0x20000020, 0x60000020,
                                       0xA0000020, 0xE0000020, 0x00000008, 0x00000018, 0x20000010,
                                       0x40000020, 0x30000020, 0x60000021, 0x00000000};

// With `slack`, that many bytes behind the last pixel may be touched. Some strides are those of wider pixels.
inline model::Surface random_surface(Arena& arena, Random& random, uint32_t format, uint32_t slack = 0,
                                     int32_t width_if_any = 0)
{
    constexpr uint32_t pads[] = {0, 0, 1, 2, 3, 4, 7, 16};
    const int32_t width = width_if_any != 0 ? width_if_any : random.between(1, 24);
    const int32_t height = random.between(1, 5);
    const uint32_t row = static_cast<uint32_t>(width) * ((format & 0x3F) / 8);
    const uint32_t stride = row + (random.one_in(4) ? row * random.below(4) / 4 : random.pick(pads));
    const uint32_t bytes = static_cast<uint32_t>(height - 1) * stride + row;
    const uint32_t gap = slack + (random.one_in(2) ? 0 : random.below(16));
    uint8_t* const pixels = arena.place(bytes, random.one_in(2) ? Side::end : Side::begin, gap);
    return {{width, height, stride, pixels, format}, arena.twin(pixels)};
}

inline void random_state(vexlor_context* ctx, Random& random)
{
    constexpr uint32_t ops[] = {0, 0, 0, 1, 1, 2, 2, 2, 2, 3, ~0u}, few[] = {0, 0, 1, 1, 2, 2, 3, ~0u},
                       modes[] = {0, 0, 0, 1, 1, 1, 2, ~0u};
    vexlor_context_set_color(ctx, random.next());
    vexlor_context_set_alpha_op(ctx, random.pick(ops));
    vexlor_context_set_alpha_src(ctx, random.one_in(8) ? random.pick(few) : random.below(2));
    vexlor_context_set_alpha_dst_op(ctx, random.pick(few));
    vexlor_context_set_alpha_mode(ctx, random.pick(modes));
    vexlor_context_set_alpha_test(ctx, random.below(7));
    vexlor_context_set_alpha_value(ctx, static_cast<uint8_t>(random.weight(255)));
    vexlor_context_set_alpha_ref(ctx, static_cast<uint8_t>(random.weight(255)));
}

// The state that chooses among the operations; a global alpha of 128 makes weights of 129.
inline void set_state(vexlor_context* ctx, uint32_t op, uint32_t src, uint32_t dst_op, uint32_t mode = 0)
{
    vexlor_context_set_alpha_op(ctx, op);
    vexlor_context_set_alpha_src(ctx, src);
    vexlor_context_set_alpha_dst_op(ctx, dst_op);
    vexlor_context_set_alpha_mode(ctx, mode);
    vexlor_context_set_alpha_value(ctx, 128);
}

// A coordinate or length that is wrong, or right only by luck.
inline int32_t spoiled(int32_t value, Random& random)
{
    const int32_t values[] = {-1, 0, model::sum(value, 1), INT32_MAX, INT32_MAX - 1, INT32_MIN, 0x40000000};
    return random.pick(values);
}

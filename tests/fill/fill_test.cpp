// vexlor_fill: whole calls against the model, the order of its checks, its slots.
#include "support/scene.h"

TEST(Fill, EqualsTheModelInCodeAndEveryByte)
{
    const uint64_t calls_made = rounds_of(400000);
    Random random(10);
    Arena arena;
    const Context portable = make_context(), simd = make_context();
    vexlor_context_set_simd(simd.get(), true);
    uint64_t codes[10] = {};
    for (uint64_t i = 0; i < calls_made; ++i) {
        const Context& ctx = random.one_in(4) ? simd : portable;
        random_state(ctx.get(), random);
        const uint32_t format = random.pick(formats);
        // Rows of an odd number of bytes end in a 16-bit store.
        const model::Surface surface = random_surface(arena, random, format, (format & 8) != 0 ? 1 : 0);
        arena.randomize(random);
        int32_t at[4] = {random.between(0, surface.desc.width - 1),
                         random.between(0, surface.desc.height - 1), 0, 0};
        at[2] = random.between(1, surface.desc.width - at[0]);
        at[3] = random.between(1, surface.desc.height - at[1]);
        if (random.one_in(16)) // beyond the surface is the caller's own fault: only what is refused
            at[random.below(4)] = random.one_in(2) ? -1 : INT32_MIN;
        if (random.one_in(32))
            at[2 + random.below(2)] = 0;
        if (&ctx == &simd && ctx->alpha_op == 0) // which fills other bytes
            vexlor_context_set_alpha_op(ctx.get(), 2);
        const auto* used = random.one_in(64) ? nullptr : ctx.get();
        const auto* dst = random.one_in(64) ? nullptr : &surface;
        const auto [x, y, w, h] = at;
        const uint32_t code = vexlor_fill(used, dst == nullptr ? nullptr : &surface.desc, x, y, w, h);
        ASSERT_EQ(code, model::fill(used, dst, x, y, w, h)) << "call " << i;
        ASSERT_TRUE(arena.same_as_twin(surface.desc.pixels))
            << "call " << i << ", format " << std::hex << format << ", op " << ctx->alpha_op << ' '
            << ctx->alpha_dst_op << std::dec << ", " << x << ' ' << y << ' ' << w << ' ' << h;
        ++codes[code];
    }
    for (uint32_t code : {0u, 1u, 4u, 6u, 8u, 9u})
        EXPECT_GT(codes[code], calls_made / 1000) << code;
}

TEST(Fill, GoesThroughItsSlots)
{
    constexpr uint32_t rgb = VEXLOR_FMT_B8G8R8A8;
    using C = vexlor_context;
    constexpr struct {
        Slot slot;
        uint32_t format, alpha_op, alpha_dst_op;
        bool blends;
        uint64_t color, count; // as they arrive
    } cases[] = {{slot<&C::memset>, rgb, 0, 0, false, 0x00ABCDEF, 16},
                 {slot<&C::memset>, rgb, 0, 2, false, 0xFFABCDEF, 4},
                 {slot<&C::memset>, VEXLOR_FMT_565, 0, 7, false, 0xCDEFCDEF, 8},
                 {slot<&C::fill_blend_over_8888>, rgb, 2, 0, true, 0x00ABCDEF, 4},
                 {slot<&C::fill_blend_over_arepl_8888>, rgb, 2, 1, true, 0x00ABCDEF, 4},
                 {slot<&C::fill_blend_over_aone_8888>, rgb, 2, 2, true, 0x00ABCDEF, 4}};
    Random random(12); // rows of whole blocks, which the library's own routines would write together
    Arena arena;
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const Context ctx = make_context();
        ctx->color = 0x00ABCDEF;
        set_state(ctx.get(), c.alpha_op, 0, c.alpha_dst_op);
        arena.randomize(random);
        const vexlor_surface_desc dst{8, 4, 48, arena.place(192, Side::end, 0), c.format};
        const uint64_t first = number(dst.pixels) + 48 + 4 * ((c.format & 0x3F) / 8);

        calls.clear();
        c.slot.record(ctx.get());
        EXPECT_EQ(vexlor_fill(ctx.get(), &dst, 4, 1, 4, 2), 0u);
        ASSERT_EQ(calls.size(), 2u);
        for (uint32_t row : {0u, 1u})
            EXPECT_EQ(calls[row], c.blends ? Call({c.color, first + 48 * row, c.count, 129, 24})
                                           : Call({first + 48 * row, c.color, c.count}));
        c.slot.empty(ctx.get());
        EXPECT_EQ(vexlor_fill(ctx.get(), &dst, 4, 1, 4, 2), 0u);
        EXPECT_TRUE(arena.same());
    }
}

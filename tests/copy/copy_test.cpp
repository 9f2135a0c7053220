// vexlor_copy: whole calls against the model, the order of its checks, its slots.
#include "support/scene.h"
#include <array>

TEST(Copy, EqualsTheModelInCodeAndEveryByte)
{
    const uint64_t calls_made = rounds_of(800000);
    Random random(13);
    Arena src_arena, dst_arena;
    const Context portable = make_context(), simd = make_context();
    vexlor_context_set_simd(simd.get(), true);
    uint64_t codes[10] = {}, overlapping = 0;
    for (uint64_t i = 0; i < calls_made; ++i) {
        const Context& ctx = random.one_in(4) ? simd : portable;
        random_state(ctx.get(), random);
        const uint32_t from = random.pick(formats), to = random.one_in(2) ? from : random.pick(formats);
        model::Surface src = random_surface(src_arena, random, from),
                       dst = random_surface(dst_arena, random, to, 0, random.one_in(4) ? src.desc.width : 0);
        const bool same = from == to && random.one_in(2);
        if (same)
            src = dst;
        else if (random.one_in(8)) { // the memory is more than needed then
            uint32_t& stride = (random.one_in(2) ? src : dst).desc.stride;
            stride = stride * (1 + random.below(3)) / 4;
        }
        src_arena.randomize(random);
        dst_arena.randomize(random);
        int32_t at[6]; // sx, sy, dx, dy, w, h
        const int32_t widest = std::min(src.desc.width, dst.desc.width);
        at[4] = random.one_in(4) ? widest : random.between(1, widest);
        at[5] = random.between(1, std::min(src.desc.height, dst.desc.height));
        at[0] = random.between(0, src.desc.width - at[4]);
        at[1] = random.between(0, src.desc.height - at[5]);
        at[2] = random.between(0, dst.desc.width - at[4]);
        at[3] = random.one_in(3) ? std::min(at[1], dst.desc.height - at[5])
                                 : random.between(0, dst.desc.height - at[5]);
        while (random.one_in(8)) {
            int32_t& value = at[random.below(6)];
            value = spoiled(value, random);
        }
        // Of whole words the same bytes come by SIMD, but where YUV is converted.
        const bool whole = from == to && (static_cast<uint32_t>(at[4]) * src.bpp()) % 4 == 0;
        if (&ctx == &simd && ctx->alpha_op == 0 && !whole)
            vexlor_context_set_alpha_op(ctx.get(), 2);
        const auto* used = random.one_in(256) ? nullptr : ctx.get();
        const auto* source = random.one_in(256) ? nullptr : same && random.one_in(2) ? &dst : &src;
        const auto* target = random.one_in(256) ? nullptr : &dst;
        const auto desc = [](const model::Surface* s) { return s == nullptr ? nullptr : &s->desc; };
        const auto [sx, sy, dx, dy, w, h] = at;
        const uint32_t code = vexlor_copy(used, desc(source), desc(target), sx, sy, dx, dy, w, h);
        const model::Copy copy{used, source, target, sx, sy, dx, dy, w, h};
        const auto call = [&] {
            return testing::Message() << "call " << i << ", formats " << from << ' ' << to << ", state "
                                      << ctx->alpha_op << ctx->alpha_src << ctx->alpha_dst_op
                                      << ctx->alpha_mode << ", at " << testing::PrintToString(at);
        };
        ASSERT_EQ(code, copy.run()) << call();
        ASSERT_TRUE(src_arena.same_as_twin(src.desc.pixels)) << call();
        ASSERT_TRUE(dst_arena.same_as_twin(dst.desc.pixels)) << call();
        ++codes[code];
        overlapping += code == 0 && same && std::abs(sx - dx) < w && std::abs(sy - dy) < h;
    }
    for (uint32_t code = 0; code <= 8; ++code)
        EXPECT_GT(codes[code], calls_made / 1000) << code;
    EXPECT_GT(overlapping, calls_made / 100);
}

namespace {

using C = vexlor_context;
constexpr uint32_t argb = VEXLOR_FMT_A8R8G8B8, bgra = VEXLOR_FMT_B8G8R8A8, yvyu = VEXLOR_FMT_Y8V8Y8U8,
                   uyvy = VEXLOR_FMT_U8Y8V8Y8;

struct SlotCase {
    Slot slot;
    uint32_t from, to, alpha_op, alpha_src, alpha_dst_op, alpha_mode;
    std::vector<uint64_t> extras; // arguments behind (source row, destination row, width)
};

} // namespace

TEST(Copy, GoesThroughItsSlots)
{
    const SlotCase cases[] = {
        {slot<&C::copy_opaque_aone_8888>, argb, argb, 0, 0, 2, 0, {0}},
        {slot<&C::copy_opaque_aone_8888>, bgra, bgra, 0, 0, 2, 0, {24}},
        {slot<&C::Y8V8Y8U8_2_X8R8G8B8>, yvyu, argb, 0, 0, 7, 0, {}},
        {slot<&C::Y8V8Y8U8_2_B8G8R8X8>, yvyu, bgra, 0, 0, 7, 0, {}},
        {slot<&C::U8Y8V8Y8_2_X8R8G8B8>, uyvy, argb, 0, 0, 7, 0, {}},
        {slot<&C::U8Y8V8Y8_2_B8G8R8X8>, uyvy, bgra, 0, 0, 7, 0, {}},
        {slot<&C::copy_test_8888>, bgra, bgra, 1, 0, 1, 7, {9, 200, 24}},
        {slot<&C::copy_blend_over_src_8888>, bgra, bgra, 2, 1, 0, 0, {24}},
        {slot<&C::copy_blend_over_src_arepl_8888>, bgra, bgra, 2, 1, 1, 0, {24}},
        {slot<&C::copy_blend_over_src_aone_8888>, bgra, bgra, 2, 1, 2, 0, {24}},
        {slot<&C::copy_blend_over_src_pre_8888>, argb, argb, 2, 1, 0, 1, {0}},
        {slot<&C::copy_blend_over_src_pre_arepl_8888>, argb, argb, 2, 1, 1, 1, {0}},
        {slot<&C::copy_blend_over_src_pre_aone_8888>, argb, argb, 2, 1, 2, 1, {0}},
        {slot<&C::copy_blend_over_gbl_8888>, bgra, bgra, 2, 0, 0, 0, {129, 24}},
        {slot<&C::copy_blend_over_gbl_arepl_8888>, bgra, bgra, 2, 0, 1, 0, {129, 24}},
        {slot<&C::copy_blend_over_gbl_aone_8888>, bgra, bgra, 2, 0, 2, 0, {129, 24}},
        {slot<&C::copy_blend_over_gbl_pre_8888>, argb, argb, 2, 0, 0, 1, {129, 0}},
        {slot<&C::copy_blend_over_gbl_pre_arepl_8888>, argb, argb, 2, 0, 1, 1, {129, 0}},
        {slot<&C::copy_blend_over_gbl_pre_aone_8888>, argb, argb, 2, 0, 2, 1, {129, 0}},
        {slot<&C::copy_blend_over_gbl_565>, VEXLOR_FMT_565, VEXLOR_FMT_565, 2, 0, 7, 7, {129}},
        {slot<&C::copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8>, yvyu, argb, 2, 0, 7, 7, {129}},
        {slot<&C::copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8>, yvyu, bgra, 2, 0, 7, 7, {129}},
        {slot<&C::copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8>, uyvy, argb, 2, 0, 7, 7, {129}},
        {slot<&C::copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8>, uyvy, bgra, 2, 0, 7, 7, {129}},
    };
    Random random(15);
    Arena src_arena, dst_arena;
    for (const SlotCase& c : cases) {
        SCOPED_TRACE(&c - cases);
        const Context ctx = make_context();
        set_state(ctx.get(), c.alpha_op, c.alpha_src, c.alpha_dst_op, c.alpha_mode);
        ctx->alpha_test = 9;
        ctx->alpha_ref = 200;
        src_arena.randomize(random);
        dst_arena.randomize(random);
        const vexlor_surface_desc src{8, 4, 40, src_arena.place(160, Side::end, 0), c.from};
        const vexlor_surface_desc dst{9, 4, 44, dst_arena.place(176, Side::end, 0), c.to};
        std::vector<Call> expected;
        for (uint32_t row : {0u, 1u}) {
            expected.push_back({number(src.pixels) + 40 * (1 + row) + 2 * ((c.from & 0x3F) / 8),
                                number(dst.pixels) + 44 * (2 + row) + 3 * ((c.to & 0x3F) / 8), 6});
            expected.back().insert(expected.back().end(), c.extras.begin(), c.extras.end());
        }
        calls.clear();
        c.slot.record(ctx.get());
        EXPECT_EQ(vexlor_copy(ctx.get(), &src, &dst, 2, 1, 3, 2, 6, 2), 0u);
        EXPECT_EQ(calls, expected);
        c.slot.empty(ctx.get());
        EXPECT_EQ(vexlor_copy(ctx.get(), &src, &dst, 2, 1, 3, 2, 6, 2), 0u);
        EXPECT_TRUE(src_arena.same() && dst_arena.same());
    }
}

TEST(Copy, MovesRowsInTheOrderThatOverlapAsksFor)
{
    constexpr struct {
        Slot slot;
        int32_t dx, dy; // from (1, 1), 5 x 2 pixels
        int first_row;
    } cases[] = {{slot<&C::memcpy_stream>, 2, 2, 1}, // down, overlapping: the last row first
                 {slot<&C::memcpy_stream>, 2, 0, 0},  {slot<&C::memcpy_stream>, 6, 1, 0}, // beside
                 {slot<&C::memcpy_stream>, 1, 3, 0},                                      // below, touching
                 {slot<&C::memmove_stream>, 2, 1, 0}, {slot<&C::memmove_stream>, 1, 1, 0}};
    Random random(16);
    Arena arena;
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const Context ctx = make_context();
        arena.randomize(random);
        const vexlor_surface_desc surface{12, 6, 50, arena.place(300, Side::end, 0), VEXLOR_FMT_X8R8G8B8};
        const vexlor_surface_desc equal = surface;
        std::vector<Call> expected;
        for (int row : {c.first_row, 1 - c.first_row})
            expected.push_back({number(surface.pixels + 50 * (c.dy + row) + 4 * c.dx),
                                number(surface.pixels + 50 * (1 + row) + 4), 20});
        calls.clear();
        c.slot.record(ctx.get());
        EXPECT_EQ(vexlor_copy(ctx.get(), &surface, &equal, 1, 1, c.dx, c.dy, 5, 2), 0u);
        EXPECT_EQ(calls, expected);
        c.slot.empty(ctx.get());
        EXPECT_EQ(vexlor_copy(ctx.get(), &surface, &equal, 1, 1, c.dx, c.dy, 5, 2), 0u);
        EXPECT_TRUE(arena.same());
    }
}

// Rows that touch may be converted as one, but not by a routine whose pixels depend on where their row begins, nor where a
// row is written over one that is still to be read.
TEST(Copy, ConvertsRowsThatTouch)
{
    constexpr int32_t width = 6, height = 4;
    constexpr uint32_t from_row = 2 * width, to_row = 4 * width;
    struct alignas(64) Memory {
        std::array<uint8_t, 256> bytes;
    };
    Random random(17);
    for (const bool simd : {false, true})
        for (const size_t from : {size_t{16}, size_t{160}}) {
            const Context ctx = make_context();
            vexlor_context_set_simd(ctx.get(), simd);
            Memory drawn;
            random.fill(drawn.bytes.data(), drawn.bytes.size());
            Memory expected = drawn;
            constexpr size_t to = 8; // every second row begins at a boundary of 16 bytes
            for (size_t y = 0; y < height; ++y)
                ctx->Y8V8Y8U8_2_X8R8G8B8(expected.bytes.data() + from + y * from_row,
                                         expected.bytes.data() + to + y * to_row, width);
            const vexlor_surface_desc source{width, height, from_row, drawn.bytes.data() + from,
                                             VEXLOR_FMT_Y8V8Y8U8};
            const vexlor_surface_desc target{width, height, to_row, drawn.bytes.data() + to,
                                             VEXLOR_FMT_X8R8G8B8};
            EXPECT_EQ(vexlor_copy(ctx.get(), &source, &target, 0, 0, 0, 0, width, height), 0u);
            EXPECT_EQ(drawn.bytes, expected.bytes) << simd << ' ' << from;
        }
}

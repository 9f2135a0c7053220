// The choice of routines for every set of processor flags, and what drawing through the chosen ones changes.
#include "context/slots.h"
#include "support/recorder.h"
#include "support/scene.h"

namespace {

constexpr uint32_t sse = 0x800, sse2 = 0x8000;

// What a context with these flags holds, from one with the portable routines.
vexlor_context expected(vexlor_context ctx, uint32_t flags)
{
    if ((flags & sse) != 0) {
        ctx.memcpy = vexlor_memcpy16_sse;
        ctx.memcpy_stream = vexlor_memcpy_stream_sse;
        ctx.memset = vexlor_memset_stream_sse;
    }
    if ((flags & sse2) != 0) {
        ctx.copy_blend_over_src_8888 = vexlor_1d_copy_blend_over_src_8888_sse2;
        ctx.copy_blend_over_gbl_8888 = vexlor_1d_copy_blend_over_gbl_8888_sse2;
        for (vexlor_convert_fn* slot : {&ctx.Y8V8Y8U8_2_X8R8G8B8, &ctx.conversions[1], &ctx.conversions[5]})
            *slot = vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2;
        for (vexlor_convert_fn* slot : {&ctx.U8Y8V8Y8_2_X8R8G8B8, &ctx.conversions[3], &ctx.conversions[9]})
            *slot = vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2;
    }
    return ctx;
}

// State first, then slot by slot.
void expect_same(const vexlor_context& is, const vexlor_context& should)
{
    constexpr size_t state = offsetof(vexlor_context, memcpy), slots = (sizeof is - state) / sizeof is.memcpy;
    EXPECT_EQ(std::memcmp(&is, &should, state), 0);
    for (size_t i = 0; i < slots; ++i)
        EXPECT_EQ(std::memcmp(&is.memcpy + i, &should.memcpy + i, sizeof is.memcpy), 0) << "slot " << i;
}

} // namespace

TEST(Slots, FollowTheFlags)
{
    const Context portable = make_context();
    for (const uint32_t flags : {0u, sse, sse2, sse | sse2})
        for (const uint32_t others : {0u, ~(sse | sse2)}) {
            SCOPED_TRACE(flags | others);
            vexlor_context ctx;
            std::memset(&ctx, 0xA5, sizeof ctx);
            vexlor_context should = expected(*portable, flags);
            std::memcpy(&should, &ctx, offsetof(vexlor_context, memcpy));
            should.cache = ctx.cache;
            vexlor::install_routines(ctx, flags | others);
            expect_same(ctx, should);
        }
}

TEST(Slots, ComeAndGoWithSimd)
{
    const Context portable = make_context(), ctx = make_context();
    const uint32_t has =
        (__builtin_cpu_supports("sse") ? sse : 0) | (__builtin_cpu_supports("sse2") ? sse2 : 0);
    for (const bool enable : {true, true, false, true, false}) {
        vexlor_context should = expected(*portable, enable ? has : 0);
        should.cache = ctx->cache;
        vexlor_context_set_simd(ctx.get(), enable);
        expect_same(*ctx, should);
    }
}

TEST(Simd, FilteredYuvHasNoXByte)
{
    const Context ctx = make_context();
    vexlor_context_set_simd(ctx.get(), true);
    vexlor_context_set_filter(ctx.get(), 1);
    uint8_t grey[16];
    for (size_t i = 0; i < sizeof grey; ++i)
        grey[i] = i % 2 == 0 ? 100 : 128;
    uint8_t pixels[24];
    const vexlor_surface_desc src{8, 1, 16, grey, VEXLOR_FMT_Y8V8Y8U8},
        dst{6, 1, 24, pixels, VEXLOR_FMT_X8R8G8B8};
    ASSERT_EQ(vexlor_scale(ctx.get(), &src, &dst, 2, 0, 6, 1, 0, 0, 6, 1), 0u);
    for (size_t i = 0; i < sizeof pixels; ++i)
        EXPECT_EQ(pixels[i], i % 4 == 0 ? 0 : 0x60) << i;
}

// Left out is what does change: YUV that is converted into X8R8G8B8 on its way, rows that are not
// whole words, and opaque fills.
TEST(Simd, ChangesNoOtherByte)
{
    Random random(22);
    Arena src_arena(2), dst_arena(2);
    const Context portable = make_context(), simd = make_context();
    vexlor_context_set_simd(simd.get(), true);
    int drawn = 0;
    for (int i = 0; i < 100000 / VEXLOR_TEST_STEP; ++i) {
        const auto surface = [&](Arena& arena, uint32_t format) {
            const int32_t width = random.between(1, 50) * 2, height = random.between(1, 5);
            const uint32_t stride = static_cast<uint32_t>(width) * (format % 64 / 8) + random.below(9) * 2;
            uint8_t* const pixels = arena.place(stride * static_cast<uint32_t>(height), Side::end, 0);
            arena.randomize(random);
            return vexlor_surface_desc{width, height, stride, pixels, format};
        };
        const uint32_t from = formats[random.below(7)],
                       to = random.one_in(2) ? from : formats[random.below(7)];
        const vexlor_surface_desc src = surface(src_arena, from);
        vexlor_surface_desc dst = surface(dst_arena, to);
        const int32_t w = std::min(src.width, dst.width), h = std::min(src.height, dst.height);
        const bool copy = random.one_in(2);
        random_state(portable.get(), random);
        vexlor_context_set_filter(portable.get(), random.below(3));
        const bool converted = copy ? from != to && portable->alpha_op == 0 : portable->filter != 0;
        if (converted && model::is_yuv(from) && model::alpha_shift(to) == 0)
            continue;
        std::memcpy(simd.get(), portable.get(), offsetof(vexlor_context, memcpy));
        const auto draw = [&](vexlor_context* ctx) {
            return copy ? vexlor_copy(ctx, &src, &dst, 0, 0, 0, 0, w, h)
                        : vexlor_scale(ctx, &src, &dst, 0, 0, src.width, src.height, 0, 0, dst.width,
                                       dst.height);
        };
        const uint32_t code = draw(simd.get());
        dst.pixels = dst_arena.twin(dst.pixels);
        ASSERT_EQ(code, draw(portable.get()));
        ASSERT_TRUE(dst_arena.same()) << "copy " << copy << ", formats " << from << ' ' << to << ", width "
                                      << dst.width << ", filter " << simd->filter;
        drawn += code == 0 ? 1 : 0;
    }
    EXPECT_GT(drawn, 10000 / VEXLOR_TEST_STEP);
}

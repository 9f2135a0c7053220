// The choice of routines for every set of processor flags.
#include "context/slots.h"
#include "support/recorder.h"
#include <cstring>
#include <gtest/gtest.h>

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

// Contexts: what a new one holds, and that a setter stores one field.
#include "support/recorder.h"
#include <cstring>
#include <gtest/gtest.h>

// The slots that no drawing call uses; the others show in what calls draw.
TEST(Context, StartsWithThePortableRoutines)
{
    const Context ctx = make_context();
    ASSERT_NE(ctx, nullptr);
    EXPECT_TRUE(ctx->memcpy == vexlor_memcpy_x86 && ctx->memmove == vexlor_memmove &&
                ctx->copy_blend_over_gbl_Y8V8Y8U8 == vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8 &&
                ctx->copy_blend_over_gbl_U8Y8V8Y8 == vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8);
}

TEST(Context, StartsWithoutStateAndAnEmptyCache)
{
    const Context ctx = make_context();
    const char zeros[offsetof(vexlor_context, memcpy)] = {};
    EXPECT_EQ(std::memcmp(ctx.get(), zeros, offsetof(vexlor_context, alpha_ref) + 1), 0);
    ASSERT_NE(ctx->cache, nullptr);
    EXPECT_TRUE(ctx->cache->buffer == nullptr && ctx->cache->first_source == nullptr &&
                ctx->cache->pitch == 0);
    vexlor_context_destroy(nullptr);
    vexlor_cache_fini(nullptr);
}

template <auto Field, class Value> void set_only(void (*setter)(vexlor_context*, Value))
{
    const Context ctx = make_context();
    vexlor_context expected = *ctx;
    expected.*Field = static_cast<Value>(0xFFFFFFFE);
    setter(ctx.get(), static_cast<Value>(0xFFFFFFFE));
    EXPECT_EQ(std::memcmp(ctx.get(), &expected, sizeof expected), 0);
}

TEST(Context, SettersStoreOneFieldUnjudged)
{
    set_only<&vexlor_context::filter>(vexlor_context_set_filter);
    set_only<&vexlor_context::color>(vexlor_context_set_color);
    set_only<&vexlor_context::alpha_test>(vexlor_context_set_alpha_test);
    set_only<&vexlor_context::alpha_mode>(vexlor_context_set_alpha_mode);
    set_only<&vexlor_context::alpha_op>(vexlor_context_set_alpha_op);
    set_only<&vexlor_context::alpha_src>(vexlor_context_set_alpha_src);
    set_only<&vexlor_context::alpha_dst_op>(vexlor_context_set_alpha_dst_op);
    set_only<&vexlor_context::alpha_value>(vexlor_context_set_alpha_value);
    set_only<&vexlor_context::alpha_ref>(vexlor_context_set_alpha_ref);
}

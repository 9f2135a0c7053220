// Contexts: what a new one holds, and that a setter stores one field.
#include "support/recorder.h"
#include <cstring>
#include <gtest/gtest.h>

TEST(Context, StartsWithThePortableRoutineInEverySlot)
{
    const Context ctx = make_context();
    ASSERT_NE(ctx, nullptr);
    const auto at = [](auto* routine) { return reinterpret_cast<uintptr_t>(routine); };
    const struct {
        const char* name;
        uintptr_t is, expected;
    } slots[] = {
#define SLOT(name, routine) {#name, at(ctx->name), at(routine)}
#define NAMED(name) SLOT(name, vexlor_1d_##name)
        SLOT(memcpy, vexlor_memcpy_x86),
        SLOT(memcpy_stream, vexlor_memcpy_x86),
        SLOT(memmove, vexlor_memmove),
        SLOT(memmove_stream, vexlor_memmove),
        SLOT(memset, vexlor_memset),
        NAMED(fill_blend_over_8888),
        NAMED(fill_blend_over_aone_8888),
        NAMED(fill_blend_over_arepl_8888),
        NAMED(copy_opaque_aone_8888),
        NAMED(copy_blend_over_src_8888),
        NAMED(copy_blend_over_src_aone_8888),
        NAMED(copy_blend_over_src_arepl_8888),
        NAMED(copy_blend_over_gbl_8888),
        NAMED(copy_blend_over_gbl_aone_8888),
        NAMED(copy_blend_over_gbl_arepl_8888),
        NAMED(copy_blend_over_src_pre_8888),
        NAMED(copy_blend_over_src_pre_aone_8888),
        NAMED(copy_blend_over_src_pre_arepl_8888),
        NAMED(copy_blend_over_gbl_pre_8888),
        NAMED(copy_blend_over_gbl_pre_aone_8888),
        NAMED(copy_blend_over_gbl_pre_arepl_8888),
        NAMED(copy_blend_over_gbl_565),
        NAMED(Y8V8Y8U8_2_X8R8G8B8),
        NAMED(Y8V8Y8U8_2_B8G8R8X8),
        NAMED(U8Y8V8Y8_2_X8R8G8B8),
        NAMED(U8Y8V8Y8_2_B8G8R8X8),
        NAMED(copy_blend_over_gbl_Y8V8Y8U8),
        NAMED(copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8),
        NAMED(copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8),
        NAMED(copy_blend_over_gbl_U8Y8V8Y8),
        NAMED(copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8),
        NAMED(copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8),
        NAMED(copy_test_8888),
        SLOT(conversions[0], vexlor_1d_X8R8G8B8_2_Y8V8Y8U8),
        SLOT(conversions[1], vexlor_1d_Y8V8Y8U8_2_X8R8G8B8),
        SLOT(conversions[2], vexlor_1d_X8R8G8B8_2_U8Y8V8Y8),
        SLOT(conversions[3], vexlor_1d_U8Y8V8Y8_2_X8R8G8B8),
        SLOT(conversions[4], vexlor_1d_passthrough),
        SLOT(conversions[5], vexlor_1d_Y8V8Y8U8_2_X8R8G8B8),
        SLOT(conversions[6], vexlor_1d_passthrough),
        SLOT(conversions[7], vexlor_1d_Y8V8Y8U8_2_B8G8R8X8),
        SLOT(conversions[8], vexlor_1d_passthrough),
        SLOT(conversions[9], vexlor_1d_U8Y8V8Y8_2_X8R8G8B8),
        SLOT(conversions[10], vexlor_1d_passthrough),
        SLOT(conversions[11], vexlor_1d_U8Y8V8Y8_2_B8G8R8X8)
#undef NAMED
#undef SLOT
    };
    for (const auto& slot : slots)
        EXPECT_EQ(slot.is, slot.expected) << slot.name;
    // The slots fill the record from the end of the state on, so none is missing in the table but the cache.
    const auto after_state =
        reinterpret_cast<const char*>(&ctx->memcpy) - reinterpret_cast<const char*>(ctx.get());
    EXPECT_EQ(sizeof *ctx, static_cast<size_t>(after_state) + (std::size(slots) + 1) * sizeof(void*));
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

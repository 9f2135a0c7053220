// A context's life and its setters.
#include "context/processor.h"
#include "context/slots.h"

#include <stdlib.h>

using namespace vexlor;

// Callers are compiled against these places.
constexpr size_t pointer = sizeof(void*);
static_assert(offsetof(vexlor_surface_desc, pixels) == (pointer == 8 ? 16 : 12));
static_assert(sizeof(vexlor_surface_desc) == (pointer == 8 ? 32 : 20));
static_assert(offsetof(vexlor_context, alpha_value) == 28 && offsetof(vexlor_context, alpha_ref) == 29);
static_assert(offsetof(vexlor_context, memcpy) == 32);
static_assert(offsetof(vexlor_context, cache) == 32 + 33 * pointer);
static_assert(offsetof(vexlor_context, conversions) == 32 + 34 * pointer);
static_assert(sizeof(vexlor_context) == 32 + 46 * pointer);
static_assert(offsetof(vexlor_cache, buffer) == 8 && sizeof(vexlor_cache) == 8 + 3 * pointer);

void vexlor_context_create(vexlor_context** out)
{
    auto* context = static_cast<vexlor_context*>(calloc(1, sizeof **out));
    *out = context;
    if (!context)
        return;
    install_routines(*context, 0);
    vexlor_cache_init(&context->cache);
    if (!context->cache) {
        free(context);
        *out = nullptr;
    }
}

void vexlor_context_destroy(vexlor_context* ctx)
{
    if (!ctx)
        return;
    vexlor_cache_fini(ctx->cache);
    free(ctx);
}

void vexlor_context_set_simd(vexlor_context* ctx, bool enable)
{
    install_routines(*ctx, enable ? processor_flags() : 0);
}

void vexlor_context_set_filter(vexlor_context* ctx, uint32_t filter) { ctx->filter = filter; }
void vexlor_context_set_color(vexlor_context* ctx, uint32_t color) { ctx->color = color; }
void vexlor_context_set_alpha_mode(vexlor_context* ctx, uint32_t mode) { ctx->alpha_mode = mode; }
void vexlor_context_set_alpha_value(vexlor_context* ctx, uint8_t value) { ctx->alpha_value = value; }
void vexlor_context_set_alpha_src(vexlor_context* ctx, uint32_t src) { ctx->alpha_src = src; }
void vexlor_context_set_alpha_dst_op(vexlor_context* ctx, uint32_t op) { ctx->alpha_dst_op = op; }
void vexlor_context_set_alpha_op(vexlor_context* ctx, uint32_t op) { ctx->alpha_op = op; }
void vexlor_context_set_alpha_test(vexlor_context* ctx, uint32_t test) { ctx->alpha_test = test; }
void vexlor_context_set_alpha_ref(vexlor_context* ctx, uint8_t reference) { ctx->alpha_ref = reference; }

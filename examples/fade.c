/* A fade: one picture goes over into another, by a blend with a global alpha. Six moments of it, side by side.
 *
 * Each blend starts from the first picture. Blending a weight into what is on the screen again and again would fade
 * too, but never arrive: results are cut off, not rounded, and stop a step short. */
#include "scene.h"

int main(void)
{
    enum { W = 640, H = 360, MOMENTS = 6 };
    vexlor_surface_desc from, to;
    vexlor_context* ctx;
    uint32_t* const dusk = scene(&from, DUSK, W, H);
    uint32_t* const night = scene(&to, NIGHT, W, H);
    uint32_t result = VEXLOR_OK;
    int i, status;

    vexlor_context_create(&ctx);
    if (ctx == NULL)
        return 1;
    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx, VEXLOR_ALPHA_SRC_GLOBAL);
    for (i = 0; i < MOMENTS; ++i) {
        const int left = W * i / MOMENTS, right = W * (i + 1) / MOMENTS;
        vexlor_context_set_alpha_value(ctx,
                                       (uint8_t)(255 * i / (MOMENTS - 1))); /* 255 gives all of the source */
        result |= vexlor_copy(ctx, &to, &from, left, 0, left, 0, right - left, H);
    }

    vexlor_context_set_color(ctx, 0xFFFFFFFF); /* lines between the moments, half transparent */
    vexlor_context_set_alpha_value(ctx, 90);
    for (i = 1; i < MOMENTS; ++i)
        result |= vexlor_fill(ctx, &from, W * i / MOMENTS, 0, 1, H);

    status = save("fade.ppm", &from);
    vexlor_context_destroy(ctx);
    free(dusk);
    free(night);
    return status || result != VEXLOR_OK;
}

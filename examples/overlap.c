/* Source and destination on one surface, overlapping. A plain copy moves such a rectangle right, in any direction. A
 * blend cannot: it would read pixels that it has blended already, and is refused with result 7, VEXLOR_OVERLAP. The
 * way out is a copy beside.
 *
 * The picture: the upper half has scrolled to the left by plain copies, and what left came in again on the right. The
 * lower half was blended over itself, moved, half a dozen times, and leaves a trail. */
#include "scene.h"

int main(void)
{
    enum { W = 640, H = 360, HALF = H / 2, STEP = 12 };
    vexlor_surface_desc screen, beside;
    vexlor_context* ctx;
    uint32_t* const pixels = scene(&screen, DUSK, W, H);
    uint32_t* const memory = (uint32_t*)malloc(W * HALF * 4);
    uint32_t result = VEXLOR_OK;
    int i, status;

    vexlor_context_create(&ctx);
    if (ctx == NULL || memory == NULL)
        return 1;
    vexlor_surface_desc_init(&beside, W, HALF, W * 4, memory, VEXLOR_FMT_B8G8R8A8);

    for (i = 0; i < 10; ++i) { /* scroll; the columns that leave wait beside */
        result |= vexlor_copy(ctx, &screen, &beside, 0, 0, 0, 0, STEP, HALF);
        result |= vexlor_copy(ctx, &screen, &screen, STEP, 0, 0, 0, W - STEP, HALF);
        result |= vexlor_copy(ctx, &beside, &screen, 0, 0, W - STEP, 0, STEP, HALF);
    }

    for (i = 0; i < 6; ++i) {
        vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
        vexlor_context_set_alpha_value(ctx, 128);
        if (vexlor_copy(ctx, &screen, &screen, STEP, HALF, 0, HALF, W - STEP, HALF) != VEXLOR_OVERLAP)
            return 1;

        vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_NONE);
        result |= vexlor_copy(ctx, &screen, &beside, 0, HALF, 0, 0, W, HALF);
        vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
        result |= vexlor_copy(ctx, &beside, &screen, STEP, 0, 0, HALF, W - STEP, HALF);
    }

    status = save("overlap.ppm", &screen);
    vexlor_context_destroy(ctx);
    free(memory);
    free(pixels);
    return status || result != VEXLOR_OK;
}

/* A routine of your own in a context's slot. The entries check, walk the rows and call whatever the slot holds; here
 * the blend by pixel alpha becomes an addition of light, which the library does not have. The signature is the slot's:
 * count pixels of one row, and where the alpha byte sits. Put the old routine back, or set SIMD anew, to undo it. */
#include "scene.h"

/* dst + src * alpha, each channel at most 255. */
static void add_light(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift)
{
    uint32_t i, at;
    for (i = 0; i < count; ++i) {
        const uint32_t alpha = src[i] >> shift & 0xFF, old = dst[i];
        uint32_t sum = old & 0xFFu << shift;
        for (at = 0; at < 32; at += 8)
            if (at != shift) {
                const uint32_t channel = (old >> at & 0xFF) + (src[i] >> at & 0xFF) * alpha / 255;
                sum |= (channel < 255 ? channel : 255) << at;
            }
        dst[i] = sum;
    }
}

int main(void)
{
    enum { SIZE = 120, LAMPS = 9 };
    static uint32_t glow[SIZE * SIZE];
    static const uint32_t colors[3] = {0x00FF9A40, 0x0060A0FF, 0x00FF5070};
    vexlor_surface_desc screen, lamp;
    vexlor_context* ctx;
    uint32_t* const pixels = scene(&screen, NIGHT, 640, 360);
    uint32_t result = VEXLOR_OK;
    int i, n, status;

    vexlor_context_create(&ctx);
    if (ctx == NULL)
        return 1;
    vexlor_surface_desc_init(&lamp, SIZE, SIZE, SIZE * 4, glow, VEXLOR_FMT_B8G8R8A8);
    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx, VEXLOR_ALPHA_SRC_PIXEL);
    for (n = 0; n < 2 * LAMPS; ++n) { /* nine lamps over the lake, and their light in the water */
        const int k = n % LAMPS, water = n / LAMPS, x = k * 65, y = 190 + (k - 4) * (k - 4) * 2;
        for (i = 0; i < SIZE * SIZE; ++i) {
            const int dx = 2 * (i % SIZE) - SIZE, dy = (2 * (i / SIZE) - SIZE) * (water ? 1 : 2);
            const int d = (dx * dx * (water ? 6 : 2) + dy * dy / (water ? 1 : 2)) * 256 / (SIZE * SIZE);
            const int near = d < 256 ? 256 - d : 0;
            const uint32_t alpha = (uint32_t)(near * near / 260 * near / 256 * (water ? 2 : 4) / 4);
            glow[i] = colors[k % 3] | (alpha < 255 ? alpha : 255) << 24;
        }
        ctx->copy_blend_over_src_8888 = add_light;
        result |= vexlor_copy(ctx, &lamp, &screen, 0, 0, x, water ? 240 : y - SIZE / 2, SIZE, SIZE);
    }

    status = save("own_routine.ppm", &screen);
    vexlor_context_destroy(ctx);
    free(pixels);
    return status || result != VEXLOR_OK;
}

/* Sprites with an alpha channel, blended over a picture: the right mode, and what the wrong one looks like.
 *
 * Above: straight colours blended as straight, and premultiplied ones as premultiplied: they look alike. Below: each
 * taken for the other. Straight colours taken for premultiplied shine too bright and wrap around; premultiplied ones
 * taken for straight get a dark rim, because their colours are multiplied by alpha twice. */
#include "scene.h"

enum { SIZE = 150 };

/* A glass ball: light from the upper left, transparent within, soft at the edge. */
static uint32_t ball(int x, int y, int premultiplied)
{
    const int dx = 2 * x - SIZE + 1, dy = 2 * y - SIZE + 1, d = (dx * dx + dy * dy) * 256 / (SIZE * SIZE);
    const int lx = dx + 50, ly = dy + 60, light = 256 - (lx * lx + ly * ly) * 256 / (SIZE * SIZE / 4);
    uint32_t color = mix_pixel(0xFF2A80E0, 0xFF10306A, d > 256 ? 256 : d), alpha, i, pixel = 0;
    if (light > 0)
        color = mix_pixel(color, 0xFFFFFFFF, light);
    alpha = d >= 250 ? 0 : d >= 226 ? (uint32_t)((250 - d) * 10) : (uint32_t)(110 + d / 2);
    if (light > 0 && alpha < 255)
        alpha = (uint32_t)mix((int)alpha, 255, light);
    for (i = 0; i < 24; i += 8)
        pixel |= (premultiplied ? (color >> i & 0xFF) * alpha / 255 : color >> i & 0xFF) << i;
    return pixel | alpha << 24;
}

int main(void)
{
    static uint32_t sprites[2][SIZE * SIZE];
    vexlor_surface_desc screen, sprite[2];
    vexlor_context* ctx;
    uint32_t* const pixels = scene(&screen, DAY, 640, 360);
    int i, x, y, status;

    vexlor_context_create(&ctx);
    if (ctx == NULL)
        return 1;
    for (i = 0; i < 2; ++i) {
        for (y = 0; y < SIZE; ++y)
            for (x = 0; x < SIZE; ++x)
                sprites[i][y * SIZE + x] = ball(x, y, i);
        vexlor_surface_desc_init(&sprite[i], SIZE, SIZE, SIZE * 4, sprites[i], VEXLOR_FMT_B8G8R8A8);
    }

    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_src(ctx, VEXLOR_ALPHA_SRC_PIXEL);
    vexlor_context_set_alpha_dst_op(ctx, VEXLOR_ALPHA_DST_ONE);
    for (i = 0; i < 4; ++i) {
        const int which = i % 2, wrong = i / 2;
        vexlor_context_set_alpha_mode(ctx,
                                      which != wrong ? VEXLOR_ALPHA_PREMULTIPLIED : VEXLOR_ALPHA_STRAIGHT);
        if (vexlor_copy(ctx, &sprite[which], &screen, 0, 0, 130 + 230 * which, 20 + 170 * wrong, SIZE,
                        SIZE) != VEXLOR_OK)
            return 1;
    }
    status = save("sprite.ppm", &screen);
    vexlor_context_destroy(ctx);
    free(pixels);
    return status;
}

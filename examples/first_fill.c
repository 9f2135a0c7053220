/* A first picture: fills alone draw a town at night. An opaque fill writes the colour; a blended one mixes it in by
 * the context's alpha value. The colour is a pixel of the surface's format, here 0xAARRGGBB. */
#include "scene.h"

static void box(vexlor_context* ctx, const vexlor_surface_desc* s, uint32_t color, int x, int y, int w, int h)
{
    /* Fills are not checked against the surface, and not clipped: that is the caller's part. */
    vexlor_surface_clip(s, &x, &y, &w, &h);
    if (w > 0 && h > 0) {
        vexlor_context_set_color(ctx, color);
        vexlor_fill(ctx, s, x, y, w, h);
    }
}

int main(void)
{
    enum { W = 640, H = 360 };
    vexlor_surface_desc screen;
    vexlor_context* ctx;
    uint32_t* const pixels = (uint32_t*)malloc(W * H * 4);
    int i, x, y, row, status;

    vexlor_context_create(&ctx);
    if (ctx == NULL || pixels == NULL)
        return 1;
    vexlor_surface_desc_init(&screen, W, H, W * 4, pixels, VEXLOR_FMT_B8G8R8X8);

    for (i = 0; i < 30; ++i) /* sky */
        box(ctx, &screen, mix_pixel(0xFF0B1026, 0xFF7A3B5E, i * 256 / 30), 0, i * 12, W, 12);
    for (row = 0; row < 3; ++row)
        for (x = -20, i = 0; x < W; ++i) { /* houses, the nearer the darker, with lit windows */
            const int w = 34 + noise((uint32_t)(i + 100 * row)) % 40,
                      h = 190 - 45 * row + noise((uint32_t)(i * 3 + row)) % 70;
            int wx, wy;
            box(ctx, &screen, mix_pixel(0xFF4A2E55, 0xFF0A0C18, row * 128), x, H - h, w, h);
            for (wy = H - h + 8; wy < H - 6; wy += 12)
                for (wx = x + 6; wx + 8 < x + w; wx += 11)
                    if (noise((uint32_t)(wx * 31 + wy * 17 + row)) < 50 + 20 * row)
                        box(ctx, &screen, mix_pixel(0xFFFFD27A, 0xFF6B4A58, (2 - row) * 100), wx, wy, 5, 7);
            x += w + 2;
        }

    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND); /* mist, and a frame of smoked glass */
    vexlor_context_set_alpha_value(ctx, 10);
    for (y = 200; y < H; y += 8)
        box(ctx, &screen, 0xFFB7A6D9, 0, y, W, H - y);
    vexlor_context_set_alpha_value(ctx, 140);
    box(ctx, &screen, 0xFF101018, 0, 0, W, 24);
    box(ctx, &screen, 0xFF101018, 0, H - 24, W, 24);

    status = save("first_fill.ppm", &screen);
    vexlor_context_destroy(ctx);
    free(pixels);
    return status;
}

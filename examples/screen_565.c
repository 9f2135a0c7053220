/* A screen of 16-bit pixels. No entry turns 32-bit pixels into 565, so pictures are packed once, when they are loaded;
 * from then on everything is copied, blended and scaled as 565. The blend's weights have a scale of their own: 32 is
 * all of the source for red and blue, 64 for green, and larger ones wrap around. Use 0 to 31. */
#include "scene.h"

enum { W = 640, H = 360 };

static void load(uint16_t* out, int time) /* with ordered dither, which hides the 32 steps of a channel */
{
    static const int matrix[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    int x, y;
    for (y = 0; y < H; ++y)
        for (x = 0; x < W; ++x) {
            const uint32_t p = landscape(time, x, y, W, H);
            const int d = matrix[y % 4][x % 4];
            const int r = (int)(p >> 16 & 0xFF) + d / 2, g = (int)(p >> 8 & 0xFF) + d / 4,
                      b = (int)(p & 0xFF) + d / 2;
            out[y * W + x] = (uint16_t)((r > 255 ? 31 : r >> 3) << 11 | (g > 255 ? 63 : g >> 2) << 5 |
                                        (b > 255 ? 31 : b >> 3));
        }
}

int main(void)
{
    static uint16_t day[W * H], night[W * H];
    static uint32_t shown[W * H];
    vexlor_surface_desc sun, moon, screen;
    vexlor_context* ctx;
    uint32_t result = VEXLOR_OK;
    int i;

    vexlor_context_create(&ctx);
    if (ctx == NULL)
        return 1;
    load(day, DAY);
    load(night, NIGHT);
    vexlor_surface_desc_init(&sun, W, H, W * 2, day, VEXLOR_FMT_565);
    vexlor_surface_desc_init(&moon, W, H, W * 2, night, VEXLOR_FMT_565);

    /* A small picture in the picture, framed. */
    vexlor_context_set_color(ctx, 0xFFFF);
    result |= vexlor_fill(ctx, &sun, 19, 19, 202, 115);
    result |= vexlor_scale(ctx, &moon, &sun, 0, 0, W, H, 20, 20, 200, 113);

    /* Night falls from left to right, in 32 steps. Green goes half as far as red and blue: the night is a green one. */
    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
    for (i = 0; i < 32; ++i) {
        vexlor_context_set_alpha_value(ctx, (uint8_t)i);
        result |= vexlor_copy(ctx, &moon, &sun, W * i / 32, 140, W * i / 32, 140, W / 32, H - 140);
    }

    for (i = 0; i < W * H; ++i) { /* for the file */
        const uint32_t p = day[i], r = p >> 11, g = p >> 5 & 63, b = p & 31;
        shown[i] = (r << 3 | r >> 2) << 16 | (g << 2 | g >> 4) << 8 | (b << 3 | b >> 2);
    }
    vexlor_surface_desc_init(&screen, W, H, W * 4, shown, VEXLOR_FMT_B8G8R8X8);
    vexlor_context_destroy(ctx);
    return save("screen_565.ppm", &screen) || result != VEXLOR_OK;
}

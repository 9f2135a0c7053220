/* Conversions that the entries refuse, by the row routines that they are made of. No entry draws RGB into a YUV
 * surface, or YUV of one byte order into the other: vexlor_copy returns VEXLOR_NOT_CONVERTIBLE. Row routines go there;
 * you walk the rows.
 *
 * The picture: RGB, the same after a way through YUV 4:2:2, and twelve times their difference. Two pixels share one
 * colour there, so that fine vertical stripes bleed: those above are 1, 2 and 4 pixels wide. */
#include "scene.h"

int main(void)
{
    enum { W = 212, H = 360 };
    static uint32_t pixels[H][3 * W + 4];
    static uint8_t luma_first[W * 2], chroma_first[W * 2];
    vexlor_surface_desc screen, yuv;
    vexlor_context* ctx;
    int x, y, c;

    vexlor_context_create(&ctx);
    if (ctx == NULL)
        return 1;
    vexlor_surface_desc_init(&screen, 3 * W + 4, H, sizeof pixels[0], pixels, VEXLOR_FMT_B8G8R8X8);
    vexlor_surface_desc_init(&yuv, W, 1, sizeof luma_first, luma_first, VEXLOR_FMT_Y8V8Y8U8);
    if (vexlor_copy(ctx, &screen, &yuv, 0, 0, 0, 0, W, 1) != VEXLOR_NOT_CONVERTIBLE)
        return 1;
    vexlor_context_destroy(ctx);

    for (y = 0; y < H; ++y) {
        uint32_t *const before = pixels[y], *const after = before + W + 2, *const difference = after + W + 2;
        for (x = 0; x < W; ++x) {
            const int wide = y < 30 ? 1 : y < 60 ? 2 : 4;
            before[x] = y < 90 ? ((x + 1) / wide % 2 ? 0xFFE02020 : 0xFF2040E0)
                               : landscape(DAY, x, y - 90, W, H - 90);
        }
        /* There: RGB into Y0 V Y1 U. */
        vexlor_1d_B8G8R8X8_2_Y8V8Y8U8(before, luma_first, W);
        /* Across: to U Y0 V Y1, by way of 32-bit pixels, as no routine goes straight. */
        vexlor_1d_Y8V8Y8U8_2_B8G8R8X8(luma_first, after, W);
        vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(after, chroma_first, W);
        /* And back. */
        vexlor_1d_U8Y8V8Y8_2_B8G8R8X8(chroma_first, after, W);

        for (x = 0; x < W; ++x)
            for (c = 0; c < 24; c += 8) {
                const int gap = 12 * abs((int)(before[x] >> c & 0xFF) - (int)(after[x] >> c & 0xFF));
                difference[x] |= (uint32_t)(gap < 255 ? gap : 255) << c;
            }
    }
    return save("row_routines.ppm", &screen);
}

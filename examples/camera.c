/* A camera's frame on a screen of another size and ratio: one call scales YUV 4:2:2 and makes RGB of it. The picture
 * keeps its ratio, between bars. Beside it, for the eye, a part of the same frame four times as large. */
#include "scene.h"

/* Stands in for a camera: 352 x 288 pixels, bytes U Y0 V Y1, by the row routine that goes that way. */
static uint8_t* capture(vexlor_surface_desc* frame)
{
    vexlor_surface_desc world;
    uint32_t* const rgb = scene(&world, DUSK, 352, 288);
    uint8_t* const bytes = (uint8_t*)malloc(352 * 288 * 2);
    int y;
    if (bytes == NULL)
        exit(1);
    for (y = 0; y < 288; ++y)
        vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(rgb + y * 352, bytes + y * 352 * 2, 352);
    vexlor_surface_desc_init(frame, 352, 288, 352 * 2, bytes, VEXLOR_FMT_U8Y8V8Y8);
    free(rgb);
    return bytes;
}

int main(void)
{
    enum { W = 640, H = 360, FIT = H * 352 / 288 };
    vexlor_surface_desc camera, screen;
    vexlor_context* ctx;
    uint8_t* const frame = capture(&camera);
    uint32_t* const pixels = (uint32_t*)malloc(W * H * 4);
    uint32_t result;
    int status;

    vexlor_context_create(&ctx);
    if (ctx == NULL || pixels == NULL)
        return 1;
    vexlor_surface_desc_init(&screen, W, H, W * 4, pixels, VEXLOR_FMT_B8G8R8X8);
    vexlor_context_set_color(ctx, 0xFF15151C);
    result = vexlor_fill(ctx, &screen, 0, 0, W, H);
    vexlor_context_set_filter(ctx, VEXLOR_FILTER_MEAN);
    result |= vexlor_scale(ctx, &camera, &screen, 0, 0, 352, 288, 0, 0, FIT, H);

    /* The sun, nearest sample against Catmull-Rom. A fresh context: the row cache remembers an earlier scale's
     * number of rows, and would lag behind. Both source origins are even, as pairs of pixels ask. */
    vexlor_context_destroy(ctx);
    vexlor_context_create(&ctx);
    if (ctx == NULL)
        return 1;
    result |= vexlor_scale(ctx, &camera, &screen, 168, 66, 46, 43, FIT + 8, 4, 184, 172);
    vexlor_context_set_filter(ctx, VEXLOR_FILTER_CATROM);
    result |= vexlor_scale(ctx, &camera, &screen, 168, 66, 46, 43, FIT + 8, 184, 184, 172);

    status = save("camera.ppm", &screen);
    vexlor_context_destroy(ctx);
    free(pixels);
    free(frame);
    return status || result != VEXLOR_OK;
}

/* Draws one small picture as a C program does, through the shared library, and looks at every pixel of it. */
#include "vexlor.h"
#include <stdio.h>

int main(void)
{
    /* Two rows of Y0 V Y1 U: black, white; twice one orange. */
    uint8_t frame[2][4] = {{16, 128, 235, 128}, {128, 192, 128, 64}};
    uint32_t pixels[2][4];
    const uint32_t expected[2][4] = {{0xFF000000u, 0xFFFFFFFFu, 0x11223344u, 0x11223344u},
                                     {0xFFE96701u, 0xFFE96701u, 0x48312929u, 0x48312929u}};
    vexlor_surface_desc camera, screen;
    vexlor_context* ctx;
    uint32_t result, filter;
    int i, wrong = 0;

    vexlor_context_create(&ctx);
    if (ctx == NULL)
        return 1;
    vexlor_surface_desc_init(&camera, 2, 2, sizeof frame[0], frame, VEXLOR_FMT_Y8V8Y8U8);
    vexlor_surface_desc_init(&screen, 4, 2, sizeof pixels[0], pixels, VEXLOR_FMT_B8G8R8A8);
    result = VEXLOR_OK;
    for (filter = 0; filter < 3; ++filter) { /* what is drawn over below */
        vexlor_context_set_filter(ctx, filter);
        result |= vexlor_scale(ctx, &camera, &screen, 0, 0, 2, 2, 0, 0, 4, 2);
    }
    vexlor_context_set_color(ctx, 0x11223344u);
    result |= vexlor_fill(ctx, &screen, 0, 0, 4, 2);
    result |= vexlor_copy(ctx, &camera, &screen, 0, 0, 0, 0, 2, 2);
    vexlor_context_set_color(ctx, 0x80402010u);
    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
    vexlor_context_set_alpha_value(ctx, 128);
    result |= vexlor_fill(ctx, &screen, 2, 1, 2, 1);
    vexlor_context_destroy(ctx);

    for (i = 0; i < 8; ++i)
        if (pixels[i / 4][i % 4] != expected[i / 4][i % 4]) {
            printf("pixel %d, %d is %08lX\n", i % 4, i / 4, (unsigned long)pixels[i / 4][i % 4]);
            wrong = 1;
        }
    return result != VEXLOR_OK || wrong;
}

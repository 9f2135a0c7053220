/* What the examples share: a generated landscape, so that there is something to draw with, and a way to keep the
 * result. Integers only: the same bytes on every machine. */
#ifndef SCENE_H
#define SCENE_H

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <vexlor.h>

enum { DAY, DUSK, NIGHT };

static inline int mix(int a, int b, int weight) { return a + (b - a) * weight / 256; } /* weight: 0 to 256 */
static inline uint32_t mix_pixel(uint32_t a, uint32_t b, int weight)
{
    uint32_t mixed = 0;
    int shift;
    for (shift = 0; shift < 32; shift += 8)
        mixed |= (uint32_t)mix((int)(a >> shift & 0xFF), (int)(b >> shift & 0xFF), weight) << shift;
    return mixed;
}
static inline int noise(uint32_t n) /* 0 to 255 */
{
    n = (n ^ n >> 15) * 0x2C1B3C6Du;
    n = (n ^ n >> 12) * 0x297A2D39u;
    return (int)(n >> 15 & 0xFF);
}
static inline int ridge(int x, int layer) /* height of a mountain range at x, 0 to some 400 */
{
    int height = 0, size;
    for (size = 128; size >= 4; size /= 2) {
        int at = x / size, t = x % size * 256 / size;
        t = t * t / 256 * (768 - 2 * t) / 256;
        height += mix(noise((uint32_t)(at + layer * 977 + size)),
                      noise((uint32_t)(at + 1 + layer * 977 + size)), t) *
                  size / 160;
    }
    return height;
}

/* A pixel of a lake between mountains, as 0xFFRRGGBB: a B8G8R8A8 pixel. */
static inline uint32_t landscape(int time, int x, int y, int width, int height)
{
    static const uint32_t tops[3] = {0xFF2F6FB8, 0xFF1F2858, 0xFF050816},
                          lows[3] = {0xFFCFE6F2, 0xFFF59A52, 0xFF1C2C4E};
    static const uint32_t hazes[3] = {0xFF9DBDCF, 0xFFB8687A, 0xFF22304C},
                          nears[3] = {0xFF1F3D2B, 0xFF1A1428, 0xFF060A12};
    static const uint32_t discs[3] = {0xFFFFFBE8, 0xFFFFE9B0, 0xFFF2F4FF};
    int shore = height * 7 / 10, row = y < shore ? y : 2 * shore - y + noise((uint32_t)y) % 3, layer;
    int dx = x - width * (time == DUSK ? 54 : 68) / 100, dy = row - height * (time == DUSK ? 30 : 18) / 100;
    int radius = height / 14, distance = dx * dx + dy * dy;
    uint32_t pixel = mix_pixel(tops[time], lows[time], row < 0 ? 0 : row * 256 / shore);

    if (time == NIGHT && noise((uint32_t)(x * 7919 + row * 104729)) > 254 && row < shore / 2)
        pixel = 0xFFC8D0E8;
    if (distance < radius * radius)
        pixel = discs[time];
    else if (distance < 36 * radius * radius)
        pixel =
            mix_pixel(pixel, discs[time], 110 - 110 * (distance - radius * radius) / (36 * radius * radius));
    for (layer = 0; layer < 4; ++layer) {
        int crest = shore - ridge((x * 640 / width) + 300 * layer, layer) * height / 360 * (4 - layer) / 5;
        if (row > crest)
            pixel = mix_pixel(hazes[time], nears[time], layer * 85);
    }
    return y < shore ? pixel : mix_pixel(pixel, nears[time], 70 + (y - shore) * 120 / (height - shore));
}

/* Memory for width x height pixels of 4 bytes; described as a B8G8R8A8 surface. The landscape is drawn into it. */
static inline uint32_t* scene(vexlor_surface_desc* surface, int time, int width, int height)
{
    uint32_t* const pixels = (uint32_t*)malloc((size_t)width * (size_t)height * 4);
    int x, y;
    if (pixels == NULL)
        exit(1);
    for (y = 0; y < height; ++y)
        for (x = 0; x < width; ++x)
            pixels[y * width + x] = landscape(time, x, y, width, height);
    vexlor_surface_desc_init(surface, width, height, (uint32_t)width * 4, pixels, VEXLOR_FMT_B8G8R8A8);
    return pixels;
}

/* Writes a B8G8R8A8 or B8G8R8X8 surface as a PPM file. Returns a program's exit status. */
static inline int save(const char* name, const vexlor_surface_desc* s)
{
    FILE* const file = fopen(name, "wb");
    int x, y;
    if (file == NULL)
        return 1;
    fprintf(file, "P6\n%d %d\n255\n", s->width, s->height);
    for (y = 0; y < s->height; ++y)
        for (x = 0; x < s->width; ++x) {
            const uint8_t* const p = s->pixels + (size_t)y * s->stride + (size_t)x * 4;
            fputc(p[2], file);
            fputc(p[1], file);
            fputc(p[0], file);
        }
    return fclose(file) != 0;
}

#endif

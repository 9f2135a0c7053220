// Surface descriptors: their life, equality and clipping.
#include "base.h"

#include <stdlib.h>

using namespace vexlor;

vexlor_surface_desc* vexlor_surface_desc_create(vexlor_surface_desc** out)
{
    *out = static_cast<vexlor_surface_desc*>(calloc(1, sizeof **out));
    return *out;
}

void vexlor_surface_desc_destroy(vexlor_surface_desc* desc) { free(desc); }

void vexlor_surface_desc_init(vexlor_surface_desc* desc, int32_t width, int32_t height, uint32_t stride,
                              void* pixels, uint32_t format)
{
    *desc = {width, height, stride, static_cast<u8*>(pixels), format};
}

int32_t vexlor_surface_equals(const vexlor_surface_desc* a, const vexlor_surface_desc* b)
{
    return a == b || (a->pixels == b->pixels && a->width == b->width && a->height == b->height &&
                      a->stride == b->stride && a->format == b->format);
}

namespace {

// One axis of the clip. Edges are inclusive and the arithmetic wraps as 32-bit numbers do.
void clip_axis(i32& start, i32& length, i32 limit)
{
    const i32 end = wrapping_add(wrapping_add(start, length), -1);
    const i32 last = wrapping_add(limit, -1);
    const i32 new_start = start >= 0 ? start : 0;
    const i32 new_end = end < last ? end : last;
    length = wrapping_add(static_cast<i32>(static_cast<u32>(new_end) - static_cast<u32>(new_start)), 1);
    start = new_start;
}

} // namespace

void vexlor_surface_clip(const vexlor_surface_desc* surface, int32_t* x, int32_t* y, int32_t* w, int32_t* h)
{
    clip_axis(*x, *w, surface->width);
    clip_axis(*y, *h, surface->height);
}

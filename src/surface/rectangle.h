// Rectangles of a surface: the checks that the entry points share.
#pragma once

#include "base.h"

namespace vexlor {
namespace {

struct Rect {
    i32 x, y, w, h;
};

// The check that callers know: the sums are plain 32-bit additions and wrap.
inline bool is_inside(const Rect& r, const vexlor_surface_desc& surface)
{
    return r.x >= 0 && r.y >= 0 && r.w > 0 && r.h > 0 && wrapping_add(r.x, r.w) <= surface.width &&
           wrapping_add(r.y, r.h) <= surface.height;
}

// A rectangle whose sums wrapped has passed is_inside and lies outside all the same. It keeps the result code
// that it earns otherwise, and draws nothing.
inline bool has_pixels_inside(const Rect& r, const vexlor_surface_desc& surface)
{
    return i64{r.x} + r.w <= surface.width && i64{r.y} + r.h <= surface.height;
}

// Half open: rectangles that only touch do not overlap.
inline bool overlap(const Rect& a, const vexlor_surface_desc& a_surface, const Rect& b,
                    const vexlor_surface_desc& b_surface)
{
    return vexlor_surface_equals(&a_surface, &b_surface) && b.x < wrapping_add(a.x, a.w) &&
           a.x < wrapping_add(b.x, b.w) && b.y < wrapping_add(a.y, a.h) && a.y < wrapping_add(b.y, b.h);
}

// Whether two runs of bytes have none in common.
inline bool are_apart(const u8* a, u64 a_bytes, const u8* b, u64 b_bytes)
{
    const u64 first = reinterpret_cast<uintptr_t>(a), second = reinterpret_cast<uintptr_t>(b);
    return first < second ? second - first >= a_bytes : first - second >= b_bytes;
}

} // namespace
} // namespace vexlor

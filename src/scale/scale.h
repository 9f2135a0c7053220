// One scale call, as the drivers see it.
#pragma once

#include "surface/formats.h"
#include "surface/rectangle.h"

namespace vexlor {
namespace {

struct Scale {
    vexlor_context& ctx;
    const vexlor_surface_desc& src;
    const vexlor_surface_desc& dst;
    Rect from, to;

    bool equivalent() const { return vexlor_fmt_is_equiv(src.format, dst.format); }
    bool convertible() const { return vexlor_surface_is_convertible(&src, from.w, from.h, &dst, to.w, to.h); }
    // Rectangles that are empty, or whose sums wrapped, keep their result code and draw nothing; so do pixels
    // of two sizes.
    bool has_pixels() const
    {
        return from.w > 0 && from.h > 0 && to.w > 0 && to.h > 0 && has_pixels_inside(from, src) &&
               has_pixels_inside(to, dst) && !differ_in_size_alone(src.format, dst.format);
    }
};

// 16.16, truncated. Source lengths from 32768 on may exceed it: the step is then the largest, which stays
// inside.
constexpr i32 step_of(i32 from, i32 to)
{
    const i64 step = (i64{from} << 16) / to;
    return step > INT32_MAX ? INT32_MAX : static_cast<i32>(step);
}

// Source row of a destination row in unfiltered scaling, from half a step on.
inline i64 nearest_row(const Scale& s, i32 ystep, i32 dst_row)
{
    return s.from.y + (((ystep >> 1) + i64{dst_row} * ystep) >> 16);
}

} // namespace
} // namespace vexlor

// Which formats can become which, and at which widths.
#include "surface/formats.h"

using namespace vexlor;

namespace {

struct Conversion {
    u32 from, to;
    i32 from_divisor, to_divisor; // widths must be multiples of these
};

constexpr Conversion s_vexlor_surf_conversions[] = {
    {VEXLOR_FMT_Y8V8Y8U8, VEXLOR_FMT_A8R8G8B8, 2, 1}, {VEXLOR_FMT_Y8V8Y8U8, VEXLOR_FMT_X8R8G8B8, 2, 1},
    {VEXLOR_FMT_Y8V8Y8U8, VEXLOR_FMT_B8G8R8A8, 2, 1}, {VEXLOR_FMT_Y8V8Y8U8, VEXLOR_FMT_B8G8R8X8, 2, 1},
    {VEXLOR_FMT_U8Y8V8Y8, VEXLOR_FMT_A8R8G8B8, 2, 1}, {VEXLOR_FMT_U8Y8V8Y8, VEXLOR_FMT_X8R8G8B8, 2, 1},
    {VEXLOR_FMT_U8Y8V8Y8, VEXLOR_FMT_B8G8R8A8, 2, 1}, {VEXLOR_FMT_U8Y8V8Y8, VEXLOR_FMT_B8G8R8X8, 2, 1},
};

} // namespace

bool vexlor_surface_is_convertible(const vexlor_surface_desc* src, int32_t src_width, int32_t,
                                   const vexlor_surface_desc* dst, int32_t dst_width, int32_t)
{
    if (vexlor_fmt_is_equiv(src->format, dst->format))
        return true;
    for (const Conversion& row : s_vexlor_surf_conversions)
        if (row.from == src->format && row.to == dst->format && src_width % row.from_divisor == 0 &&
            dst_width % row.to_divisor == 0)
            return true;
    return false;
}

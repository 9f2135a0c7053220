// YUV pairs that become pixels, in rows that touch in both surfaces: the library's own integer routines, which treat all
// pairs alike, convert them as one.
#pragma once

#include "surface/rectangle.h"

namespace vexlor {
namespace {

// False when they are no such rows.
inline bool convert_touching_rows(const u8* src, u32 src_stride, u8* dst, u32 dst_stride, i32 w, i32 rows,
                                  vexlor_convert_fn convert)
{
    const bool own = convert == vexlor_1d_Y8V8Y8U8_2_X8R8G8B8 || convert == vexlor_1d_Y8V8Y8U8_2_B8G8R8X8 ||
                     convert == vexlor_1d_U8Y8V8Y8_2_X8R8G8B8 || convert == vexlor_1d_U8Y8V8Y8_2_B8G8R8X8;
    const u64 width = static_cast<u32>(w), pixels = width * static_cast<u32>(rows);
    if (!own || w <= 0 || w % 2 != 0 || rows <= 0 || pixels > INT32_MAX || src_stride != width * 2 ||
        dst_stride != width * 4 || !are_apart(src, pixels * 2, dst, pixels * 4))
        return false;
    convert(src, dst, static_cast<i32>(pixels));
    return true;
}

} // namespace
} // namespace vexlor

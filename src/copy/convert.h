// YUV pairs that become pixels. Where rows touch in both surfaces, the library's own integer routines, which treat all pairs
// alike, convert them as one.
#pragma once

#include "surface/rectangle.h"

namespace vexlor {
namespace {

inline bool treats_pairs_alike(vexlor_convert_fn convert)
{
    return convert == vexlor_1d_Y8V8Y8U8_2_X8R8G8B8 || convert == vexlor_1d_Y8V8Y8U8_2_B8G8R8X8 ||
           convert == vexlor_1d_U8Y8V8Y8_2_X8R8G8B8 || convert == vexlor_1d_U8Y8V8Y8_2_B8G8R8X8;
}

// Of an even width: no other is converted.
inline void convert_rows(const u8* src, u32 src_stride, u8* dst, u32 dst_stride, i32 w, i32 rows,
                         vexlor_convert_fn convert)
{
    const u64 width = static_cast<u32>(w), pixels = width * static_cast<u32>(rows);
    const bool touch = src_stride == width * 2 && dst_stride == width * 4;
    if (touch && rows > 0 && pixels <= INT32_MAX && treats_pairs_alike(convert) &&
        are_apart(src, pixels * 2, dst, pixels * 4))
        return convert(src, dst, static_cast<i32>(pixels));
    for (i32 i = 0; i < rows; ++i, src = moved(src, src_stride), dst = moved(dst, dst_stride))
        convert(src, dst, w);
}

} // namespace
} // namespace vexlor

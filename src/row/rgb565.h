// 565 pixels as two groups of fields with headroom between them: red and blue, and green.
#pragma once

#include "base.h"

namespace vexlor {
namespace {

constexpr u32 red_blue = 0xF81F;
constexpr u32 green = 0x07E0;

// a moves toward b. The shifts are those of the fields' own widths, 5 and 6, though weights run to 256:
// beyond 32 and 64 the difference is scaled up and wraps inside the masks.
constexpr u32 lerp_565(u32 a, u32 b, u32 w)
{
    const u32 rb = ((b & red_blue) - (a & red_blue)) * w >> 5;
    const u32 g = ((b & green) - (a & green)) * w >> 6;
    return ((rb + (a & red_blue)) & red_blue) | ((g + (a & green)) & green);
}

// s over d, the source multiplied by its alpha already. Masked once, after the subtraction.
constexpr u32 premultiplied_565(u32 s, u32 d, u32 w)
{
    const u32 rb = (s & red_blue) + (d & red_blue) - ((d & red_blue) * w >> 5);
    const u32 g = (s & green) + (d & green) - ((d & green) * w >> 6);
    return (rb & red_blue) | (g & green);
}

} // namespace
} // namespace vexlor

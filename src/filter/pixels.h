// The two kinds of pixel that filters know: how one averages, moves towards another, and becomes colour
// components.
#pragma once

#include "row/over.h"
#include "row/rgb565.h"

namespace vexlor {
namespace {

struct Pixel8888 {
    using Word = u32;
    static constexpr u32 channels = 4;

    // 127/256 stands in for a half: every mean loses a little brightness.
    static constexpr u32 mean(u32 a, u32 b)
    {
        const u32 low = ((a & lanes) + (b & lanes)) * 127 >> 8 & lanes;
        const u32 high = ((a >> 8 & lanes) + (b >> 8 & lanes)) * 127 >> 8 & lanes;
        return high << 8 | low;
    }
    static constexpr u32 lerp(u32 a, u32 b, u32 w) { return blend<Straight>(b, a, w); }

    static void unpack(u32 pixel, float* out) { vexlor_color4_unpack_8888(pixel, out); }
    static u32 pack(const float* in) { return vexlor_color4_pack_8888(in); }
};

struct Pixel565 {
    using Word = u16;
    static constexpr u32 channels = 3;

    // 15/32 and 31/64 stand in for halves.
    static constexpr u32 mean(u32 a, u32 b)
    {
        const u32 rb = ((a & red_blue) + (b & red_blue)) * 15 >> 5 & red_blue;
        const u32 g = ((a & green) + (b & green)) * 31 >> 6 & green;
        return rb | g;
    }
    static constexpr u32 lerp(u32 a, u32 b, u32 w) { return lerp_565(a, b, w); }

    static void unpack(u32 pixel, float* out) { vexlor_color3_unpack_565(static_cast<u16>(pixel), out); }
    static u32 pack(const float* in) { return vexlor_color3_pack_565(in); }
};

} // namespace
} // namespace vexlor

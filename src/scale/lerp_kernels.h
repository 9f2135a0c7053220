// Interpolation rows, for one instruction set. The 32-bit ones are the blends of copied rows with the destination's alpha
// shift apart.
#pragma once

#include "row/over.h"
#include "row/over565.h"

namespace vexlor {
namespace {

// Straight and Premultiplied rows of the rules but Opaque have one shift for both.
template <class Mix, class Alpha> void lerp(u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift)
{
    const u32 alpha_shift = shift_count(__is_same(Alpha, Opaque) ? dst_shift : src_shift);
    over<Mix>(Row{src}, dst, count, PixelAlpha{shift_count(src_shift)}, Alpha{alpha_shift});
}

inline void lerp_565_row(u16* dst, const u16* src, u32 count, u32 shift)
{
    over_565<Lerp565>(src, dst, count, PixelAlpha{shift_count(shift)});
}

inline void lerp_pre_565_row(u16* dst, const u16* src, u32 count, u32 shift)
{
    over_565<Premultiplied565>(src, dst, count, PixelAlpha{shift_count(shift)});
}

} // namespace
} // namespace vexlor

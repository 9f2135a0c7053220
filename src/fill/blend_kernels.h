// Rows that blend one colour over 32-bit pixels, for one instruction set.
#pragma once

#include "row/over.h"

namespace vexlor {
namespace {

inline void fill_blend_over_8888(uint32_t color, uint32_t* row, uint32_t count, uint32_t weight,
                                 uint32_t alpha_shift)
{
    over<Straight>(Solid{color}, row, count, Constant{weight}, Blended{shift_count(alpha_shift)});
}

inline void fill_blend_over_aone_8888(uint32_t color, uint32_t* row, uint32_t count, uint32_t weight,
                                      uint32_t alpha_shift)
{
    over<Straight>(Solid{color}, row, count, Constant{weight}, Opaque{shift_count(alpha_shift)});
}

// The weight arrives raised and is raised once more: a global alpha of 255 blends at 257.
inline void fill_blend_over_arepl_8888(uint32_t color, uint32_t* row, uint32_t count, uint32_t weight,
                                       uint32_t alpha_shift)
{
    over<Straight>(Solid{color}, row, count, Constant{factor(weight)},
                   ClearedThenOred{shift_count(alpha_shift), weight});
}

} // namespace
} // namespace vexlor

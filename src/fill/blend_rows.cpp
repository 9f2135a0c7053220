// Rows that blend one colour over 32-bit pixels. What they do stands in blend_kernels.h.
#include "isa/kernels.h"

using namespace vexlor;

// clang-format off
void vexlor_1d_fill_blend_over_8888      (u32 color, u32* row, u32 count, u32 weight, u32 alpha_shift) { kernels().fill_blend_over_8888(color, row, count, weight, alpha_shift); }
void vexlor_1d_fill_blend_over_aone_8888 (u32 color, u32* row, u32 count, u32 weight, u32 alpha_shift) { kernels().fill_blend_over_aone_8888(color, row, count, weight, alpha_shift); }
void vexlor_1d_fill_blend_over_arepl_8888(u32 color, u32* row, u32 count, u32 weight, u32 alpha_shift) { kernels().fill_blend_over_arepl_8888(color, row, count, weight, alpha_shift); }
// clang-format on

// Rows of YUV 4:2:2 pairs blended by one factor over 32-bit RGB pixels or over pairs of their own layout. What they do
// stands in row/yuv_kernels.h.
#include "isa/kernels.h"

using namespace vexlor;

// clang-format off
void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8           (const void* src, void* dst, int32_t count, uint32_t g) { kernels().copy_blend_over_gbl_Y8V8Y8U8(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8(const void* src, void* dst, int32_t count, uint32_t g) { kernels().copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8(const void* src, void* dst, int32_t count, uint32_t g) { kernels().copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8           (const void* src, void* dst, int32_t count, uint32_t g) { kernels().copy_blend_over_gbl_U8Y8V8Y8(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8(const void* src, void* dst, int32_t count, uint32_t g) { kernels().copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8(const void* src, void* dst, int32_t count, uint32_t g) { kernels().copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8(src, dst, count, g); }
// clang-format on

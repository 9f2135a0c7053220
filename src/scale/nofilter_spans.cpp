// Spans of unfiltered scaling: one destination row from the source units that a 16.16 position steps through. What they do
// stands in span_kernels.h and span_yuv_kernels.h.
#include "isa/kernels.h"

using namespace vexlor;

// clang-format off
void vexlor_1d_scale_opaque_nofilt_32                    (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_opaque_nofilt_32(src, dst, format, count, x, step); }
void vexlor_1d_scale_opaque_nofilt_aone_8888             (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_opaque_nofilt_aone_8888(src, dst, format, count, x, step); }
void vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8   (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8(src, dst, format, count, x, step); }
void vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8   (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8(src, dst, format, count, x, step); }
void vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8   (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8(src, dst, format, count, x, step); }
void vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8   (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8(src, dst, format, count, x, step); }
void vexlor_1d_scale_blend_over_src_nofilt_8888          (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_blend_over_src_nofilt_8888(src, dst, format, count, x, step); }
void vexlor_1d_scale_blend_over_src_nofilt_8888_pre      (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_blend_over_src_nofilt_8888_pre(src, dst, format, count, x, step); }
void vexlor_1d_scale_blend_over_src_nofilt_arepl_8888    (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_blend_over_src_nofilt_arepl_8888(src, dst, format, count, x, step); }
void vexlor_1d_scale_blend_over_src_nofilt_arepl_8888_pre(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_blend_over_src_nofilt_arepl_8888_pre(src, dst, format, count, x, step); }
void vexlor_1d_scale_blend_over_src_nofilt_aone_8888     (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_blend_over_src_nofilt_aone_8888(src, dst, format, count, x, step); }
void vexlor_1d_scale_blend_over_src_nofilt_aone_8888_pre (const void* src, void* dst, u32 format, u32 count, i32 x, i32 step) { kernels().scale_blend_over_src_nofilt_aone_8888_pre(src, dst, format, count, x, step); }
// clang-format on

// Rows of 32-bit pixels blended over others, by the source pixel's alpha or by one factor; 565 rows by one factor; and
// the two rows that copy without blending. What they do stands in blend_kernels.h.
#include "isa/kernels.h"

using namespace vexlor;

// clang-format off
void vexlor_1d_copy_blend_over_src_8888           (const u32* src, u32* dst, u32 count, u32 shift)        { kernels().copy_blend_over_src_8888(src, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_aone_8888      (const u32* src, u32* dst, u32 count, u32 shift)        { kernels().copy_blend_over_src_aone_8888(src, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_arepl_8888     (const u32* src, u32* dst, u32 count, u32 shift)        { kernels().copy_blend_over_src_arepl_8888(src, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_pre_8888       (const u32* src, u32* dst, u32 count, u32 shift)        { kernels().copy_blend_over_src_pre_8888(src, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_pre_aone_8888  (const u32* src, u32* dst, u32 count, u32 shift)        { kernels().copy_blend_over_src_pre_aone_8888(src, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_pre_arepl_8888 (const u32* src, u32* dst, u32 count, u32 shift)        { kernels().copy_blend_over_src_pre_arepl_8888(src, dst, count, shift); }
void vexlor_1d_copy_blend_over_gbl_8888           (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { kernels().copy_blend_over_gbl_8888(src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_aone_8888      (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { kernels().copy_blend_over_gbl_aone_8888(src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_arepl_8888     (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { kernels().copy_blend_over_gbl_arepl_8888(src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_pre_8888       (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { kernels().copy_blend_over_gbl_pre_8888(src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_pre_aone_8888  (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { kernels().copy_blend_over_gbl_pre_aone_8888(src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_pre_arepl_8888 (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { kernels().copy_blend_over_gbl_pre_arepl_8888(src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_565            (const u16* src, u16* dst, u32 count, u32 g)            { kernels().copy_blend_over_gbl_565(src, dst, count, g); }
void vexlor_1d_copy_opaque_aone_8888              (const u32* src, u32* dst, u32 count, u32 shift)        { kernels().copy_opaque_aone_8888(src, dst, count, shift); }
// clang-format on

void vexlor_1d_copy_test_8888(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t test,
                              uint32_t reference, uint32_t shift)
{
    kernels().copy_test_8888(src, dst, count, test, reference, shift);
}

// Interpolation rows: a finished row of source pixels moves destination pixels towards it by its own alpha. What they do
// stands in lerp_kernels.h.
#include "isa/kernels.h"
#include "row/over.h"

using namespace vexlor;

// clang-format off
void vexlor_1d_lerp_8888          (u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift) { kernels().lerp_8888(dst, src, count, src_shift, dst_shift); }
void vexlor_1d_lerp_pre_8888      (u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift) { kernels().lerp_pre_8888(dst, src, count, src_shift, dst_shift); }
void vexlor_1d_lerp_arepl_8888    (u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift) { kernels().lerp_arepl_8888(dst, src, count, src_shift, dst_shift); }
void vexlor_1d_lerp_pre_arepl_8888(u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift) { kernels().lerp_pre_arepl_8888(dst, src, count, src_shift, dst_shift); }
void vexlor_1d_lerp_aone_8888     (u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift) { kernels().lerp_aone_8888(dst, src, count, src_shift, dst_shift); }
void vexlor_1d_lerp_pre_aone_8888 (u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift) { kernels().lerp_pre_aone_8888(dst, src, count, src_shift, dst_shift); }
void vexlor_1d_lerp_565    (u16* dst, const u16* src, u32 count, u32 shift) { kernels().lerp_565(dst, src, count, shift); }
void vexlor_1d_lerp_pre_565(u16* dst, const u16* src, u32 count, u32 shift) { kernels().lerp_pre_565(dst, src, count, shift); }
// clang-format on

vexlor_lerp_8888_fn vexlor_choose_1d_lerp_8888(const vexlor_context* ctx)
{
    static constexpr vexlor_lerp_8888_fn rows[3][2] = {
        // alpha_mode 0               alpha_mode 1                      alpha_dst_op
        {vexlor_1d_lerp_8888, vexlor_1d_lerp_pre_8888},             // 0
        {vexlor_1d_lerp_arepl_8888, vexlor_1d_lerp_pre_arepl_8888}, // 1
        {vexlor_1d_lerp_aone_8888, vexlor_1d_lerp_pre_aone_8888},   // 2
    };
    return indexes_blend_tables(*ctx) ? rows[ctx->alpha_dst_op][ctx->alpha_mode] : nullptr;
}

vexlor_lerp_565_fn vexlor_choose_1d_lerp_565(const vexlor_context* ctx)
{
    switch (ctx->alpha_mode) {
    case VEXLOR_ALPHA_STRAIGHT: return vexlor_1d_lerp_565;
    case VEXLOR_ALPHA_PREMULTIPLIED: return vexlor_1d_lerp_pre_565;
    default: return nullptr;
    }
}

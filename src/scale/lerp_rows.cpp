// Interpolation rows: a finished row of source pixels moves destination pixels towards it by its own alpha.
// The 32-bit ones are the blends of copied rows with the destination's alpha shift apart.
#include "row/over.h"
#include "row/rgb565.h"

using namespace vexlor;

namespace {

template <class Mix, class Alpha>
void lerp(u32* dst, const u32* src, u32 count, u32 src_shift, u32 alpha_shift)
{
    over<Mix>(Row{src}, dst, count, PixelAlpha{shift_count(src_shift)}, Alpha{shift_count(alpha_shift)});
}

void lerp_565_row(u16* dst, const u16* src, u32 count, u32 shift, auto mix)
{
    const PixelAlpha weight{shift_count(shift)};
    for (u32 i = 0; i < count; ++i) {
        const u32 s = load<u16>(src + i);
        store(dst + i, static_cast<u16>(mix(s, u32{load<u16>(dst + i)}, weight(s))));
    }
}

} // namespace

// clang-format off
void vexlor_1d_lerp_8888          (u32* dst, const u32* src, u32 count, u32 src_shift, u32)           { lerp<Straight, Blended>      (dst, src, count, src_shift, src_shift); }
void vexlor_1d_lerp_pre_8888      (u32* dst, const u32* src, u32 count, u32 src_shift, u32)           { lerp<Premultiplied, Blended> (dst, src, count, src_shift, src_shift); }
void vexlor_1d_lerp_arepl_8888    (u32* dst, const u32* src, u32 count, u32 src_shift, u32)           { lerp<Straight, Replaced>     (dst, src, count, src_shift, src_shift); }
void vexlor_1d_lerp_pre_arepl_8888(u32* dst, const u32* src, u32 count, u32 src_shift, u32)           { lerp<Premultiplied, Replaced>(dst, src, count, src_shift, src_shift); }
void vexlor_1d_lerp_aone_8888     (u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift) { lerp<Straight, Opaque>       (dst, src, count, src_shift, dst_shift); }
void vexlor_1d_lerp_pre_aone_8888 (u32* dst, const u32* src, u32 count, u32 src_shift, u32 dst_shift) { lerp<Premultiplied, Opaque>  (dst, src, count, src_shift, dst_shift); }
// clang-format on

void vexlor_1d_lerp_565(uint16_t* dst, const uint16_t* src, uint32_t count, uint32_t shift)
{
    lerp_565_row(dst, src, count, shift, [](u32 s, u32 d, u32 w) { return lerp_565(d, s, w); });
}

void vexlor_1d_lerp_pre_565(uint16_t* dst, const uint16_t* src, uint32_t count, uint32_t shift)
{
    lerp_565_row(dst, src, count, shift, [](u32 s, u32 d, u32 w) { return premultiplied_565(s, d, w); });
}

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

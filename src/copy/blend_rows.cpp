// Rows of 32-bit pixels blended over others, by the source pixel's alpha or by one factor; 565 rows by one
// factor; and the two rows that copy without blending.
#include "row/over.h"
#include "row/rgb565.h"

using namespace vexlor;

namespace {

template <class Mix, class Alpha> void src(const u32* s, u32* d, u32 n, u32 a)
{
    over<Mix>(Row{s}, d, n, PixelAlpha{shift_count(a)}, Alpha{shift_count(a)});
}

template <class Mix> void gbl_plain(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{g}, Blended{shift_count(a)});
}
// g arrives raised and is raised here once more: 255 blends at 257, and callers' pixels depend on it.
template <class Mix> void gbl_aone(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{factor(g)}, Opaque{shift_count(a)});
}
template <class Mix> void gbl_arepl(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{factor(g)}, ClearedThenOred{shift_count(a), g});
}

void copy_where(const u32* s, u32* d, u32 n, u32 shift, auto passes)
{
    for (u32 i = 0; i < n; ++i) {
        const u32 pixel = load<u32>(s + i);
        if (passes(pixel >> shift & 0xFF))
            store(d + i, pixel);
    }
}

} // namespace

// clang-format off
void vexlor_1d_copy_blend_over_src_8888          (const u32* src_row, u32* dst, u32 count, u32 shift) { src<Straight, Blended>      (src_row, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_aone_8888     (const u32* src_row, u32* dst, u32 count, u32 shift) { src<Straight, Opaque>       (src_row, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_arepl_8888    (const u32* src_row, u32* dst, u32 count, u32 shift) { src<Straight, Replaced>     (src_row, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_pre_8888      (const u32* src_row, u32* dst, u32 count, u32 shift) { src<Premultiplied, Blended> (src_row, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_pre_aone_8888 (const u32* src_row, u32* dst, u32 count, u32 shift) { src<Premultiplied, Opaque>  (src_row, dst, count, shift); }
void vexlor_1d_copy_blend_over_src_pre_arepl_8888(const u32* src_row, u32* dst, u32 count, u32 shift) { src<Premultiplied, Replaced>(src_row, dst, count, shift); }

void vexlor_1d_copy_blend_over_gbl_8888          (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { gbl_plain<Straight>     (src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_aone_8888     (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { gbl_aone<Straight>      (src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_arepl_8888    (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { gbl_arepl<Straight>     (src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_pre_8888      (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { gbl_plain<Premultiplied>(src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_pre_aone_8888 (const u32* src, u32* dst, u32 count, u32 g, u32 shift) { gbl_aone<Premultiplied> (src, dst, count, g, shift); }
void vexlor_1d_copy_blend_over_gbl_pre_arepl_8888(const u32* src, u32* dst, u32 count, u32 g, u32 shift) { gbl_arepl<Premultiplied>(src, dst, count, g, shift); }
// clang-format on

// Shifts of 5 and 6 with a factor of up to 256: differences beyond weight 32 and 64 wrap inside the masks.
void vexlor_1d_copy_blend_over_gbl_565(const uint16_t* src, uint16_t* dst, uint32_t count, uint32_t g)
{
    for (u32 i = 0; i < count; ++i)
        store(dst + i, static_cast<u16>(lerp_565(load<u16>(dst + i), load<u16>(src + i), g)));
}

// Each pixel is read before it is written, from pixel 0 up: overlapping rows of one surface come here.
void vexlor_1d_copy_opaque_aone_8888(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift)
{
    const u32 alpha = 0xFFu << shift_count(shift);
    for (u32 i = 0; i < count; ++i)
        store(dst + i, load<u32>(src + i) | alpha);
}

void vexlor_1d_copy_test_8888(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t test,
                              uint32_t reference, uint32_t shift)
{
    const u32 at = shift_count(shift);
    switch (test) {
    case VEXLOR_ALPHA_TEST_LESS: copy_where(src, dst, count, at, [=](u32 a) { return a < reference; }); break;
    case VEXLOR_ALPHA_TEST_LESS_EQUAL:
        copy_where(src, dst, count, at, [=](u32 a) { return a <= reference; });
        break;
    case VEXLOR_ALPHA_TEST_EQUAL:
        copy_where(src, dst, count, at, [=](u32 a) { return a == reference; });
        break;
    case VEXLOR_ALPHA_TEST_GREATER_EQUAL:
        copy_where(src, dst, count, at, [=](u32 a) { return a >= reference; });
        break;
    case VEXLOR_ALPHA_TEST_GREATER:
        copy_where(src, dst, count, at, [=](u32 a) { return a > reference; });
        break;
    case VEXLOR_ALPHA_TEST_NOT_EQUAL:
        copy_where(src, dst, count, at, [=](u32 a) { return a != reference; });
        break;
    default: break;
    }
}

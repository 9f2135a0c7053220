// Rows of 32-bit pixels blended by vectors. Straight colours come out as in the portable rows, and by the same kernels.
// Premultiplied ones do not, and go four at a time: a lane of its own has nothing to borrow from, so bytes 2 and 3 of pixels in the
// vector body are those of the plain rule s + d - (d * f >> 8), while pixels before the first 16-byte
// boundary and the last 0 to 3 keep the borrow.
#include "copy/blend_kernels.h"
#include "isa/kernels.h"
#include "row/lanes_sse2.h"

using namespace vexlor;

namespace {

// Single pixels up to a 16-byte boundary of the destination, which rows off by less than a pixel never reach; then four at
// a time; then the rest. Single pixels are the portable row's.
void over_aligned(const u32* src, u32* dst, u32 count, auto weight, auto portable)
{
    const auto behind = reinterpret_cast<uintptr_t>(dst) % 16; // a boundary
    const auto to_boundary = static_cast<u32>((16 - behind) / 4 % 4);
    const u32 head = behind % 4 != 0 || to_boundary > count ? count : to_boundary;
    const u32 body = (count - head) & ~3u;
    portable(src, dst, head);
    for (u32 i = head; i < head + body; i += 4) {
        const Octet s = load_pixels(src + i);
        store_aligned(dst + i, blend<Premultiplied>(s, load_aligned(dst + i), weight(s)));
    }
    portable(src + head + body, dst + head + body, count - head - body);
}

} // namespace

void vexlor_1d_copy_blend_over_src_8888_sse2(const uint32_t* src, uint32_t* dst, uint32_t count,
                                             uint32_t shift)
{
    const Kernels* const wider = wider_kernels();
    (wider ? wider->copy_blend_over_src_8888 : src_row<Straight, Blended>)(src, dst, count, shift);
}

void vexlor_1d_copy_blend_over_src_pre_8888_sse2(const uint32_t* src, uint32_t* dst, uint32_t count,
                                                 uint32_t shift)
{
    over_aligned(
        src, dst, count, [=](Octet s) { return pixel_factors(s, shift_count(shift)); },
        [=](const u32* s, u32* d, u32 n) { kernels().copy_blend_over_src_pre_8888(s, d, n, shift); });
}

void vexlor_1d_copy_blend_over_gbl_8888_sse2(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g,
                                             uint32_t shift)
{
    const Kernels* const wider = wider_kernels();
    (wider ? wider->copy_blend_over_gbl_8888 : gbl_plain<Straight>)(src, dst, count, g, shift);
}

void vexlor_1d_copy_blend_over_gbl_pre_8888_sse2(const uint32_t* src, uint32_t* dst, uint32_t count,
                                                 uint32_t g, uint32_t shift)
{
    over_aligned(
        src, dst, count, [=](Octet) { return octet(g); },
        [=](const u32* s, u32* d, u32 n) { kernels().copy_blend_over_gbl_pre_8888(s, d, n, g, shift); });
}

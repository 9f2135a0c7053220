// Rows of 32-bit pixels blended by vectors. Straight colours come out as in the portable rows, and by the same kernels.
// Premultiplied ones do not, and go four at a time: a lane of its own has nothing to borrow from, so bytes 2 and 3 of pixels in the
// vector body are those of the plain rule s + d - (d * f >> 8), while pixels before the first 16-byte
// boundary and the last 0 to 3 keep the borrow.
#include "copy/blend_kernels.h"
#include "isa/kernels.h"
#include "row/lanes_sse2.h"

using namespace vexlor;

namespace {

struct PixelAlphas : PixelAlpha {
    using PixelAlpha::operator();
    Octet operator()(Octet s) const { return pixel_factors(s, shift); }
};
struct Constants : Constant {
    using Constant::operator();
    Octet operator()(Octet) const { return octet(f); }
};

// Single pixels up to a 16-byte boundary of the destination, which rows off by less than a pixel never reach;
// then four at a time; then the rest.
void over_aligned(const u32* src, u32* dst, u32 count, auto weight)
{
    const auto one = [&](u32 i) {
        const u32 s = load<u32>(src + i);
        store(dst + i, blend<Premultiplied>(s, load<u32>(dst + i), weight(s)));
    };
    u32 i = 0;
    for (; i < count && reinterpret_cast<uintptr_t>(dst + i) % 16 != 0; ++i)
        one(i);
    for (; count - i >= 4; i += 4) {
        const Octet s = load_pixels(src + i);
        store_aligned(dst + i, blend<Premultiplied>(s, load_aligned(dst + i), weight(s)));
    }
    for (; i < count; ++i)
        one(i);
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
    over_aligned(src, dst, count, PixelAlphas{{shift_count(shift)}});
}

void vexlor_1d_copy_blend_over_gbl_8888_sse2(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g,
                                             uint32_t shift)
{
    const Kernels* const wider = wider_kernels();
    (wider ? wider->copy_blend_over_gbl_8888 : gbl_plain<Straight>)(src, dst, count, g, shift);
}

void vexlor_1d_copy_blend_over_gbl_pre_8888_sse2(const uint32_t* src, uint32_t* dst, uint32_t count,
                                                 uint32_t g, uint32_t)
{
    over_aligned(src, dst, count, Constants{{g}});
}

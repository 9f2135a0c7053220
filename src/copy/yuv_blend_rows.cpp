// Rows of YUV 4:2:2 pairs blended by one factor over 32-bit RGB pixels or over pairs of their own layout. The
// blend itself is always that of 32-bit pixels; a YUV destination goes through RGB and back.
#include "row/over.h"
#include "row/yuv.h"

using namespace vexlor;

namespace {

Pixels blend_pixels(Pixels s, Pixels d, u32 g)
{
    return {blend<Straight>(s.left, d.left, g), blend<Straight>(s.right, d.right, g)};
}

template <class Yuv, class Rgb> void over_rgb(const void* src, void* dst, i32 count, u32 g)
{
    for (i32 i = 0; i < whole_pairs(count); ++i) {
        const Pixels s = decode<Yuv, Rgb>(load<u32>(pair_at(src, i)));
        store_pixels(dst, i, blend_pixels(s, load_pixels(dst, i), g));
    }
}

template <class Yuv> void over_yuv(const void* src, void* dst, i32 count, u32 g)
{
    using Rgb = X8R8G8B8; // either order gives the same bytes
    for (i32 i = 0; i < whole_pairs(count); ++i) {
        const Pixels s = decode<Yuv, Rgb>(load<u32>(pair_at(src, i)));
        const Pixels d = decode<Yuv, Rgb>(load<u32>(pair_at(dst, i)));
        store(pair_at(dst, i), encode<Rgb, Yuv>(blend_pixels(s, d, g)));
    }
}

} // namespace

// clang-format off
void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8           (const void* src, void* dst, int32_t count, uint32_t g) { over_yuv<Y8V8Y8U8>(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8(const void* src, void* dst, int32_t count, uint32_t g) { over_rgb<Y8V8Y8U8, X8R8G8B8>(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8(const void* src, void* dst, int32_t count, uint32_t g) { over_rgb<Y8V8Y8U8, B8G8R8X8>(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8           (const void* src, void* dst, int32_t count, uint32_t g) { over_yuv<U8Y8V8Y8>(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8(const void* src, void* dst, int32_t count, uint32_t g) { over_rgb<U8Y8V8Y8, X8R8G8B8>(src, dst, count, g); }
void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8(const void* src, void* dst, int32_t count, uint32_t g) { over_rgb<U8Y8V8Y8, B8G8R8X8>(src, dst, count, g); }
// clang-format on

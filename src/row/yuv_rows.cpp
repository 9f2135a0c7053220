// Rows of YUV 4:2:2 pairs to and from 32-bit RGB pixels: a layout on either side, and one loop each way.
#include "row/yuv.h"

using namespace vexlor;

namespace {

template <class Yuv, class Rgb> void decode_row(const void* src, void* dst, i32 count)
{
    for (i32 i = 0; i < whole_pairs(count); ++i)
        store_pixels(dst, i, decode<Yuv, Rgb>(load<u32>(pair_at(src, i))));
}

template <class Rgb, class Yuv> void encode_row(const void* src, void* dst, i32 count)
{
    for (i32 i = 0; i < whole_pairs(count); ++i)
        store(pair_at(dst, i), encode<Rgb, Yuv>(load_pixels(src, i)));
}

} // namespace

// clang-format off
void vexlor_1d_Y8V8Y8U8_2_X8R8G8B8(const void* src, void* dst, int32_t count) { decode_row<Y8V8Y8U8, X8R8G8B8>(src, dst, count); }
void vexlor_1d_Y8V8Y8U8_2_B8G8R8X8(const void* src, void* dst, int32_t count) { decode_row<Y8V8Y8U8, B8G8R8X8>(src, dst, count); }
void vexlor_1d_U8Y8V8Y8_2_X8R8G8B8(const void* src, void* dst, int32_t count) { decode_row<U8Y8V8Y8, X8R8G8B8>(src, dst, count); }
void vexlor_1d_U8Y8V8Y8_2_B8G8R8X8(const void* src, void* dst, int32_t count) { decode_row<U8Y8V8Y8, B8G8R8X8>(src, dst, count); }
void vexlor_1d_X8R8G8B8_2_Y8V8Y8U8(const void* src, void* dst, int32_t count) { encode_row<X8R8G8B8, Y8V8Y8U8>(src, dst, count); }
void vexlor_1d_B8G8R8X8_2_Y8V8Y8U8(const void* src, void* dst, int32_t count) { encode_row<B8G8R8X8, Y8V8Y8U8>(src, dst, count); }
void vexlor_1d_X8R8G8B8_2_U8Y8V8Y8(const void* src, void* dst, int32_t count) { encode_row<X8R8G8B8, U8Y8V8Y8>(src, dst, count); }
void vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(const void* src, void* dst, int32_t count) { encode_row<B8G8R8X8, U8Y8V8Y8>(src, dst, count); }
// clang-format on

void vexlor_1d_passthrough(const void* src, void* dst, int32_t count)
{
    for (i32 i = 0; i < count; ++i)
        store(pair_at(dst, i), load<u32>(pair_at(src, i)));
}

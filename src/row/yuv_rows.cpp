// Rows of YUV 4:2:2 pairs to and from 32-bit RGB pixels. What they do stands in yuv_kernels.h.
#include "isa/kernels.h"
#include "row/yuv.h"

using namespace vexlor;

// clang-format off
void vexlor_1d_Y8V8Y8U8_2_X8R8G8B8(const void* src, void* dst, int32_t count) { kernels().Y8V8Y8U8_2_X8R8G8B8(src, dst, count); }
void vexlor_1d_Y8V8Y8U8_2_B8G8R8X8(const void* src, void* dst, int32_t count) { kernels().Y8V8Y8U8_2_B8G8R8X8(src, dst, count); }
void vexlor_1d_U8Y8V8Y8_2_X8R8G8B8(const void* src, void* dst, int32_t count) { kernels().U8Y8V8Y8_2_X8R8G8B8(src, dst, count); }
void vexlor_1d_U8Y8V8Y8_2_B8G8R8X8(const void* src, void* dst, int32_t count) { kernels().U8Y8V8Y8_2_B8G8R8X8(src, dst, count); }
void vexlor_1d_X8R8G8B8_2_Y8V8Y8U8(const void* src, void* dst, int32_t count) { kernels().X8R8G8B8_2_Y8V8Y8U8(src, dst, count); }
void vexlor_1d_B8G8R8X8_2_Y8V8Y8U8(const void* src, void* dst, int32_t count) { kernels().B8G8R8X8_2_Y8V8Y8U8(src, dst, count); }
void vexlor_1d_X8R8G8B8_2_U8Y8V8Y8(const void* src, void* dst, int32_t count) { kernels().X8R8G8B8_2_U8Y8V8Y8(src, dst, count); }
void vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(const void* src, void* dst, int32_t count) { kernels().B8G8R8X8_2_U8Y8V8Y8(src, dst, count); }
// clang-format on

void vexlor_1d_passthrough(const void* src, void* dst, int32_t count)
{
    for (i32 i = 0; i < count; ++i)
        store(pair_at(dst, i), load<u32>(pair_at(src, i)));
}

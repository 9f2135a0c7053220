// YUV 4:2:2 to X8R8G8B8 in single precision. Blocks of two pairs differ from the integer rows by at most one per channel,
// and carry an X byte of 0. The widest set's kernel serves; what it does stands in yuv_single.h.
#include "isa/kernels.h"
#include "row/yuv_single.h"

using namespace vexlor;

alignas(16) const float VEXLOR_YUV_2_RGB_SSE2_CONSTS[7][4] = {
    {16.0F, 16.0F, 16.0F, 16.0F},         // off Y
    {128.0F, 128.0F, 128.0F, 128.0F},     // off U and V
    {1.164F, 1.164F, 1.164F, 1.164F},     // Y
    {2.018F, 2.018F, 2.018F, 2.018F},     // U in B
    {1.596F, 1.596F, 1.596F, 1.596F},     // V in R
    {-0.391F, -0.391F, -0.391F, -0.391F}, // U in G
    {-0.813F, -0.813F, -0.813F, -0.813F}, // V in G
};

void vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2(const void* src, void* dst, int32_t count)
{
    const Kernels* const wider = wider_kernels();
    (wider ? wider->Y8V8Y8U8_2_X8R8G8B8_single : decode_row_single<Y8V8Y8U8>)(src, dst, count);
}

void vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2(const void* src, void* dst, int32_t count)
{
    const Kernels* const wider = wider_kernels();
    (wider ? wider->U8Y8V8Y8_2_X8R8G8B8_single : decode_row_single<U8Y8V8Y8>)(src, dst, count);
}

// Writers: store a finished row of 32-bit pixels.
#include "base.h"

using namespace vexlor;

void vexlor_writer_arepl_8888(uint32_t* dst, const uint32_t* row, uint32_t count, uint32_t, uint32_t)
{
    for (u32 i = 0; i < count; ++i)
        store(dst + i, load<u32>(row + i));
}

void vexlor_writer_aone_8888(uint32_t* dst, const uint32_t* row, uint32_t count, uint32_t, uint32_t dst_shift)
{
    const u32 alpha = 0xFFu << (dst_shift & 31);
    for (u32 i = 0; i < count; ++i)
        store(dst + i, load<u32>(row + i) | alpha);
}

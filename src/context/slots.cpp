// The slot tables, in slot order: the portable routines, and what the instruction sets put in their place.
#include "context/slots.h"

#include "context/processor.h"

using namespace vexlor;

namespace {

void install_portable(vexlor_context& c)
{
    c.memcpy = vexlor_memcpy_x86;
    c.memcpy_stream = vexlor_memcpy_x86;
    c.memmove = vexlor_memmove;
    c.memmove_stream = vexlor_memmove;
    c.memset = vexlor_memset;
    c.fill_blend_over_8888 = vexlor_1d_fill_blend_over_8888;
    c.fill_blend_over_aone_8888 = vexlor_1d_fill_blend_over_aone_8888;
    c.fill_blend_over_arepl_8888 = vexlor_1d_fill_blend_over_arepl_8888;
    c.copy_opaque_aone_8888 = vexlor_1d_copy_opaque_aone_8888;
    c.copy_blend_over_src_8888 = vexlor_1d_copy_blend_over_src_8888;
    c.copy_blend_over_src_aone_8888 = vexlor_1d_copy_blend_over_src_aone_8888;
    c.copy_blend_over_src_arepl_8888 = vexlor_1d_copy_blend_over_src_arepl_8888;
    c.copy_blend_over_gbl_8888 = vexlor_1d_copy_blend_over_gbl_8888;
    c.copy_blend_over_gbl_aone_8888 = vexlor_1d_copy_blend_over_gbl_aone_8888;
    c.copy_blend_over_gbl_arepl_8888 = vexlor_1d_copy_blend_over_gbl_arepl_8888;
    c.copy_blend_over_src_pre_8888 = vexlor_1d_copy_blend_over_src_pre_8888;
    c.copy_blend_over_src_pre_aone_8888 = vexlor_1d_copy_blend_over_src_pre_aone_8888;
    c.copy_blend_over_src_pre_arepl_8888 = vexlor_1d_copy_blend_over_src_pre_arepl_8888;
    c.copy_blend_over_gbl_pre_8888 = vexlor_1d_copy_blend_over_gbl_pre_8888;
    c.copy_blend_over_gbl_pre_aone_8888 = vexlor_1d_copy_blend_over_gbl_pre_aone_8888;
    c.copy_blend_over_gbl_pre_arepl_8888 = vexlor_1d_copy_blend_over_gbl_pre_arepl_8888;
    c.copy_blend_over_gbl_565 = vexlor_1d_copy_blend_over_gbl_565;
    c.Y8V8Y8U8_2_X8R8G8B8 = vexlor_1d_Y8V8Y8U8_2_X8R8G8B8;
    c.Y8V8Y8U8_2_B8G8R8X8 = vexlor_1d_Y8V8Y8U8_2_B8G8R8X8;
    c.U8Y8V8Y8_2_X8R8G8B8 = vexlor_1d_U8Y8V8Y8_2_X8R8G8B8;
    c.U8Y8V8Y8_2_B8G8R8X8 = vexlor_1d_U8Y8V8Y8_2_B8G8R8X8;
    c.copy_blend_over_gbl_Y8V8Y8U8 = vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8;
    c.copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8 = vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8;
    c.copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8 = vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8;
    c.copy_blend_over_gbl_U8Y8V8Y8 = vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8;
    c.copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8 = vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8;
    c.copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8 = vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8;
    c.copy_test_8888 = vexlor_1d_copy_test_8888;

    // Pairs of output and input converter.
    c.conversions[0] = vexlor_1d_X8R8G8B8_2_Y8V8Y8U8;
    c.conversions[1] = vexlor_1d_Y8V8Y8U8_2_X8R8G8B8;
    c.conversions[2] = vexlor_1d_X8R8G8B8_2_U8Y8V8Y8;
    c.conversions[3] = vexlor_1d_U8Y8V8Y8_2_X8R8G8B8;
    c.conversions[4] = vexlor_1d_passthrough;
    c.conversions[5] = vexlor_1d_Y8V8Y8U8_2_X8R8G8B8;
    c.conversions[6] = vexlor_1d_passthrough;
    c.conversions[7] = vexlor_1d_Y8V8Y8U8_2_B8G8R8X8;
    c.conversions[8] = vexlor_1d_passthrough;
    c.conversions[9] = vexlor_1d_U8Y8V8Y8_2_X8R8G8B8;
    c.conversions[10] = vexlor_1d_passthrough;
    c.conversions[11] = vexlor_1d_U8Y8V8Y8_2_B8G8R8X8;
}

void install_sse(vexlor_context& c)
{
    c.memcpy = vexlor_memcpy16_sse;
    c.memcpy_stream = vexlor_memcpy_stream_sse;
    c.memset = vexlor_memset_stream_sse;
}

// The premultiplied rows of SSE2 have other bytes than the portable ones and sit in no slot.
void install_sse2(vexlor_context& c)
{
    c.copy_blend_over_src_8888 = vexlor_1d_copy_blend_over_src_8888_sse2;
    c.copy_blend_over_gbl_8888 = vexlor_1d_copy_blend_over_gbl_8888_sse2;
    c.Y8V8Y8U8_2_X8R8G8B8 = vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2;
    c.U8Y8V8Y8_2_X8R8G8B8 = vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2;
    c.conversions[1] = vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2;
    c.conversions[3] = vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2;
    c.conversions[5] = vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2;
    c.conversions[9] = vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2;
}

} // namespace

// Neither flag requires the other.
void vexlor::install_routines(vexlor_context& context, u32 flags)
{
    install_portable(context);
    if (flags & flag_sse)
        install_sse(context);
    if (flags & flag_sse2)
        install_sse2(context);
}

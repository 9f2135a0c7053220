// Pixels as single-precision components, 0 to 1, most significant field first.
#include "row/rounding.h"

using namespace vexlor;

namespace {

constexpr u32 bits(float value) { return __builtin_bit_cast(u32, value); }

} // namespace

const float VEXLOR_FXPT_inv63 = 1.0F / 63;
const float VEXLOR_FXPT_inv31 = 1.0F / 31;
const float VEXLOR_FXPT_inv255 = 1.0F / 255;
const float VEXLOR_FXPT_63 = 63;
const float VEXLOR_FXPT_31 = 31;
const float VEXLOR_FXPT_255 = 255;
static_assert(bits(1.0F / 63) == 0x3C820821 && bits(1.0F / 31) == 0x3D042108 &&
              bits(1.0F / 255) == 0x3B808081);

void vexlor_color4_unpack_8888(uint32_t pixel, float out[4])
{
    for (u32 i = 0; i < 4; ++i)
        out[i] = unpacked(pixel >> (24 - 8 * i) & 0xFF, VEXLOR_FXPT_inv255);
}

void vexlor_color3_unpack_565(uint16_t pixel, float out[3])
{
    out[0] = unpacked(u32{pixel} >> 11, VEXLOR_FXPT_inv31);
    out[1] = unpacked(u32{pixel} >> 5 & 63, VEXLOR_FXPT_inv63);
    out[2] = unpacked(u32{pixel} & 31, VEXLOR_FXPT_inv31);
}

uint32_t vexlor_color4_pack_8888(const float in[4])
{
    return packed(in[0], VEXLOR_FXPT_255) << 24 | packed(in[1], VEXLOR_FXPT_255) << 16 |
           packed(in[2], VEXLOR_FXPT_255) << 8 | packed(in[3], VEXLOR_FXPT_255);
}

uint32_t vexlor_color3_pack_565(const float in[3])
{
    return packed(in[0], VEXLOR_FXPT_31) << 11 | packed(in[1], VEXLOR_FXPT_63) << 5 |
           packed(in[2], VEXLOR_FXPT_31);
}

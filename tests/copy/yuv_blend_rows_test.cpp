// Rows of YUV 4:2:2 blended over YUV or RGB by a global alpha.
#include "support/model_yuv.h"
#include "support/rows.h"

namespace {

using namespace model;

constexpr RowCase yuv_rows[] = {
    {call<vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8>, blend_to_yuv<Y8V8Y8U8>, yuv_to_yuv},
    {call<vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8>, blend_to_yuv<U8Y8V8Y8>, yuv_to_yuv},
    {call<vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8>, blend_to_rgb<Y8V8Y8U8, X8R8G8B8>, yuv_to_rgb},
    {call<vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8>, blend_to_rgb<Y8V8Y8U8, B8G8R8X8>, yuv_to_rgb},
    {call<vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8>, blend_to_rgb<U8Y8V8Y8, X8R8G8B8>, yuv_to_rgb},
    {call<vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8>, blend_to_rgb<U8Y8V8Y8, B8G8R8X8>, yuv_to_rgb},
};

} // namespace

TEST(YuvBlendRows, EqualTheModel) { check_rows(yuv_rows); }

TEST(YuvBlendRows, EqualTheModelForManyPairsAndWeights)
{
    Random random(3);
    sweep_rows(yuv_rows, 129, [&](uint32_t step, uint32_t i, uint8_t* s, uint8_t* d, RowArgs& args) {
        args.g = 2 * step;
        if (i % 256 == 0) { // a run of units that follow one another
            random.fill(s, 256 * 4);
            random.fill(d, 256 * 4);
        }
    });
}

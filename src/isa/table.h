// The table of one instruction set: included by the file of each, and compiled with its flags.
#pragma once

#include "copy/blend_kernels.h"
#include "fill/blend_kernels.h"
#include "filter/gauss_kernels.h"
#include "filter/halve_kernels.h"
#include "filter/linear_kernels.h"
#include "filter/mean_linear_kernels.h"
#include "filter/single_row_kernels.h"
#include "isa/kernels.h"
#include "row/memory_kernels.h"
#include "row/yuv_kernels.h"
#include "row/yuv_single.h"
#include "scale/lerp_kernels.h"
#include "scale/span_565_kernels.h"
#include "scale/span_yuv_kernels.h"

namespace vexlor {
namespace {

constexpr Kernels table = {
    .set_words = set_words,
    .copy_words = copy_words,
    .stream_row = stream_row,
    .stream_opaque_row = stream_opaque_row,
    .end_streaming = end_streaming,
    .fill_blend_over_8888 = fill_blend_over_8888,
    .fill_blend_over_aone_8888 = fill_blend_over_aone_8888,
    .fill_blend_over_arepl_8888 = fill_blend_over_arepl_8888,
    .copy_opaque_aone_8888 = copy_opaque_aone_8888,
    .copy_blend_over_src_8888 = src_row<Straight, Blended>,
    .copy_blend_over_src_aone_8888 = src_row<Straight, Opaque>,
    .copy_blend_over_src_arepl_8888 = src_row<Straight, Replaced>,
    .copy_blend_over_src_pre_8888 = src_row<Premultiplied, Blended>,
    .copy_blend_over_src_pre_aone_8888 = src_row<Premultiplied, Opaque>,
    .copy_blend_over_src_pre_arepl_8888 = src_row<Premultiplied, Replaced>,
    .copy_blend_over_gbl_8888 = gbl_plain<Straight>,
    .copy_blend_over_gbl_aone_8888 = gbl_aone<Straight>,
    .copy_blend_over_gbl_arepl_8888 = gbl_arepl<Straight>,
    .copy_blend_over_gbl_pre_8888 = gbl_plain<Premultiplied>,
    .copy_blend_over_gbl_pre_aone_8888 = gbl_aone<Premultiplied>,
    .copy_blend_over_gbl_pre_arepl_8888 = gbl_arepl<Premultiplied>,
    .copy_blend_over_gbl_565 = copy_blend_over_gbl_565,
    .copy_test_8888 = copy_test_8888,
    .copy_blend_over_gbl_Y8V8Y8U8 = yuv_over_yuv_by<Y8V8Y8U8>,
    .copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8 = yuv_over_rgb_by<Y8V8Y8U8, X8R8G8B8>,
    .copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8 = yuv_over_rgb_by<Y8V8Y8U8, B8G8R8X8>,
    .copy_blend_over_gbl_U8Y8V8Y8 = yuv_over_yuv_by<U8Y8V8Y8>,
    .copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8 = yuv_over_rgb_by<U8Y8V8Y8, X8R8G8B8>,
    .copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8 = yuv_over_rgb_by<U8Y8V8Y8, B8G8R8X8>,
    .Y8V8Y8U8_2_X8R8G8B8 = decode_rows<Y8V8Y8U8, X8R8G8B8>,
    .Y8V8Y8U8_2_B8G8R8X8 = decode_rows<Y8V8Y8U8, B8G8R8X8>,
    .U8Y8V8Y8_2_X8R8G8B8 = decode_rows<U8Y8V8Y8, X8R8G8B8>,
    .U8Y8V8Y8_2_B8G8R8X8 = decode_rows<U8Y8V8Y8, B8G8R8X8>,
    .X8R8G8B8_2_Y8V8Y8U8 = encode_row<X8R8G8B8, Y8V8Y8U8>,
    .B8G8R8X8_2_Y8V8Y8U8 = encode_row<B8G8R8X8, Y8V8Y8U8>,
    .X8R8G8B8_2_U8Y8V8Y8 = encode_row<X8R8G8B8, U8Y8V8Y8>,
    .B8G8R8X8_2_U8Y8V8Y8 = encode_row<B8G8R8X8, U8Y8V8Y8>,
    .Y8V8Y8U8_2_X8R8G8B8_single = decode_row_single<Y8V8Y8U8>,
    .U8Y8V8Y8_2_X8R8G8B8_single = decode_row_single<U8Y8V8Y8>,
    .scale_opaque_nofilt_32 = scale_opaque_nofilt_32,
    .scale_opaque_nofilt_32_rows = scale_opaque_nofilt_32_rows,
    .scale_opaque_nofilt_aone_8888 = scale_opaque_nofilt_aone_8888,
    .scale_opaque_nofilt_565 = scale_opaque_nofilt_565,
    .scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8 = scale_opaque_nofilt_yuv<Y8V8Y8U8, X8R8G8B8>,
    .scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8 = scale_opaque_nofilt_yuv<Y8V8Y8U8, B8G8R8X8>,
    .scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8 = scale_opaque_nofilt_yuv<U8Y8V8Y8, X8R8G8B8>,
    .scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8 = scale_opaque_nofilt_yuv<U8Y8V8Y8, B8G8R8X8>,
    .scale_blend_over_src_nofilt_8888 = scale_blend_over_src_nofilt<Straight, Blended>,
    .scale_blend_over_src_nofilt_8888_pre = scale_blend_over_src_nofilt<Premultiplied, Blended>,
    .scale_blend_over_src_nofilt_arepl_8888 = scale_blend_over_src_nofilt<Straight, Replaced>,
    .scale_blend_over_src_nofilt_arepl_8888_pre = scale_blend_over_src_nofilt<Premultiplied, Replaced>,
    .scale_blend_over_src_nofilt_aone_8888 = scale_blend_over_src_nofilt<Straight, Opaque>,
    .scale_blend_over_src_nofilt_aone_8888_pre = scale_blend_over_src_nofilt<Premultiplied, Opaque>,
    .lerp_8888 = lerp<Straight, Blended>,
    .lerp_pre_8888 = lerp<Premultiplied, Blended>,
    .lerp_arepl_8888 = lerp<Straight, Replaced>,
    .lerp_pre_arepl_8888 = lerp<Premultiplied, Replaced>,
    .lerp_aone_8888 = lerp<Straight, Opaque>,
    .lerp_pre_aone_8888 = lerp<Premultiplied, Opaque>,
    .lerp_565 = lerp_565_row,
    .lerp_pre_565 = lerp_pre_565_row,
    .mean_across_8888 = mix_across<Pixel8888, Mean>,
    .linear_across_8888 = linear_across_8888,
    .mean_across_565 = mix_across<Pixel565, Mean>,
    .linear_across_565 = linear_across_565,
    .mean_down_8888 = mix_down<Pixel8888, Mean>,
    .linear_down_8888 = mix_down<Pixel8888, Linear>,
    .mean_down_565 = mix_down<Pixel565, Mean>,
    .linear_down_565 = mix_down<Pixel565, Linear>,
    .prepare_linear_8888 = prepare_linear_8888,
    .linear_across_for_linear_8888 = linear_across_for_linear_8888,
    .linear_down_of_linear_8888 = linear_down_of_linear_8888,
    .halve_8888 = halve_8888,
    .halve_565 = halve_565,
    .double_row_8888 = double_row_8888,
    .halve_row_8888 = halve_row_8888,
    .colour_bytes = colour_bytes,
    .gauss_across_8888 = across<Pixel8888, Gauss>,
    .gauss_across_for_gauss_8888 = gauss_across_for_gauss_8888,
    .catrom_across_8888 = across<Pixel8888, CatRom>,
    .gauss_across_565 = across<Pixel565, Gauss>,
    .catrom_across_565 = across<Pixel565, CatRom>,
    .gauss_down_8888 = down<Pixel8888, Gauss>,
    .gauss_down_of_gauss_8888 = gauss_down_of_gauss_8888,
    .catrom_down_8888 = down<Pixel8888, CatRom>,
    .gauss_down_565 = down<Pixel565, Gauss>,
    .catrom_down_565 = down<Pixel565, CatRom>,
};

} // namespace
} // namespace vexlor

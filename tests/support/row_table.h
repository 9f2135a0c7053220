// Every exported routine that takes rows, with its model.
#pragma once

#include "model_yuv.h"
#include "row_case.h"

// clang-format off
namespace row_table {

using K = vexlor::Kernels;
using namespace model;
using enum Alpha;
using enum Kernel;

inline constexpr AnyRow all[] = {
    units<Kind::fill, fill_32, vexlor_1d_fill_blend_over_8888, fill<blended>, &K::fill_blend_over_8888>,
    units<Kind::fill, fill_32, vexlor_1d_fill_blend_over_aone_8888, fill<one>, &K::fill_blend_over_aone_8888>,
    units<Kind::fill, fill_32, vexlor_1d_fill_blend_over_arepl_8888, fill<replaced>, &K::fill_blend_over_arepl_8888>,
    units<Kind::other, pixel_32, vexlor_1d_copy_opaque_aone_8888, opaque_aone, &K::copy_opaque_aone_8888>,
    units<Kind::other, pixel_32, vexlor_1d_copy_test_8888, alpha_test, &K::copy_test_8888>,
    units<Kind::src, pixel_32, vexlor_1d_copy_blend_over_src_8888, src<straight, blended>, &K::copy_blend_over_src_8888>,
    units<Kind::src, pixel_32, vexlor_1d_copy_blend_over_src_aone_8888, src<straight, one>, &K::copy_blend_over_src_aone_8888>,
    units<Kind::src, pixel_32, vexlor_1d_copy_blend_over_src_arepl_8888, src<straight, replaced>, &K::copy_blend_over_src_arepl_8888>,
    units<Kind::src, pixel_32, vexlor_1d_copy_blend_over_src_pre_8888, src<premultiplied, blended>, &K::copy_blend_over_src_pre_8888>,
    units<Kind::src, pixel_32, vexlor_1d_copy_blend_over_src_pre_aone_8888, src<premultiplied, one>, &K::copy_blend_over_src_pre_aone_8888>,
    units<Kind::src, pixel_32, vexlor_1d_copy_blend_over_src_pre_arepl_8888, src<premultiplied, replaced>, &K::copy_blend_over_src_pre_arepl_8888>,
    units<Kind::gbl, pixel_32, vexlor_1d_copy_blend_over_gbl_8888, gbl<straight, blended>, &K::copy_blend_over_gbl_8888>,
    units<Kind::gbl, pixel_32, vexlor_1d_copy_blend_over_gbl_aone_8888, gbl<straight, one>, &K::copy_blend_over_gbl_aone_8888>,
    units<Kind::gbl, pixel_32, vexlor_1d_copy_blend_over_gbl_arepl_8888, gbl<straight, replaced>, &K::copy_blend_over_gbl_arepl_8888>,
    units<Kind::gbl, pixel_32, vexlor_1d_copy_blend_over_gbl_pre_8888, gbl<premultiplied, blended>, &K::copy_blend_over_gbl_pre_8888>,
    units<Kind::gbl, pixel_32, vexlor_1d_copy_blend_over_gbl_pre_aone_8888, gbl<premultiplied, one>, &K::copy_blend_over_gbl_pre_aone_8888>,
    units<Kind::gbl, pixel_32, vexlor_1d_copy_blend_over_gbl_pre_arepl_8888, gbl<premultiplied, replaced>, &K::copy_blend_over_gbl_pre_arepl_8888>,
    units<Kind::gbl_565, pixel_16, vexlor_1d_copy_blend_over_gbl_565, gbl_565, &K::copy_blend_over_gbl_565>,
    units<Kind::blend_yuv, yuv_to_yuv, vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8, blend_to_yuv<Y8V8Y8U8>, &K::copy_blend_over_gbl_Y8V8Y8U8>,
    units<Kind::blend_yuv, yuv_to_rgb, vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8, blend_to_rgb<Y8V8Y8U8, X8R8G8B8>, &K::copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8>,
    units<Kind::blend_yuv, yuv_to_rgb, vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8, blend_to_rgb<Y8V8Y8U8, B8G8R8X8>, &K::copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8>,
    units<Kind::blend_yuv, yuv_to_yuv, vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8, blend_to_yuv<U8Y8V8Y8>, &K::copy_blend_over_gbl_U8Y8V8Y8>,
    units<Kind::blend_yuv, yuv_to_rgb, vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8, blend_to_rgb<U8Y8V8Y8, X8R8G8B8>, &K::copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8>,
    units<Kind::blend_yuv, yuv_to_rgb, vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8, blend_to_rgb<U8Y8V8Y8, B8G8R8X8>, &K::copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8>,
    units<Kind::decode, yuv_to_rgb, vexlor_1d_Y8V8Y8U8_2_X8R8G8B8, decode<Y8V8Y8U8, X8R8G8B8>, &K::Y8V8Y8U8_2_X8R8G8B8>,
    units<Kind::encode, rgb_to_yuv, vexlor_1d_X8R8G8B8_2_Y8V8Y8U8, encode<X8R8G8B8, Y8V8Y8U8>, &K::X8R8G8B8_2_Y8V8Y8U8>,
    units<Kind::decode, yuv_to_rgb, vexlor_1d_Y8V8Y8U8_2_B8G8R8X8, decode<Y8V8Y8U8, B8G8R8X8>, &K::Y8V8Y8U8_2_B8G8R8X8>,
    units<Kind::encode, rgb_to_yuv, vexlor_1d_B8G8R8X8_2_Y8V8Y8U8, encode<B8G8R8X8, Y8V8Y8U8>, &K::B8G8R8X8_2_Y8V8Y8U8>,
    units<Kind::decode, yuv_to_rgb, vexlor_1d_U8Y8V8Y8_2_X8R8G8B8, decode<U8Y8V8Y8, X8R8G8B8>, &K::U8Y8V8Y8_2_X8R8G8B8>,
    units<Kind::encode, rgb_to_yuv, vexlor_1d_X8R8G8B8_2_U8Y8V8Y8, encode<X8R8G8B8, U8Y8V8Y8>, &K::X8R8G8B8_2_U8Y8V8Y8>,
    units<Kind::decode, yuv_to_rgb, vexlor_1d_U8Y8V8Y8_2_B8G8R8X8, decode<U8Y8V8Y8, B8G8R8X8>, &K::U8Y8V8Y8_2_B8G8R8X8>,
    units<Kind::encode, rgb_to_yuv, vexlor_1d_B8G8R8X8_2_U8Y8V8Y8, encode<B8G8R8X8, U8Y8V8Y8>, &K::B8G8R8X8_2_U8Y8V8Y8>,
    units<Kind::other, word_32, vexlor_1d_passthrough, copy_unit>,
    units<Kind::src, pixel_32, vexlor_1d_lerp_8888, lerp<straight, blended>, &K::lerp_8888>,
    units<Kind::src, pixel_32, vexlor_1d_lerp_aone_8888, lerp<straight, one>, &K::lerp_aone_8888>,
    units<Kind::src, pixel_32, vexlor_1d_lerp_arepl_8888, lerp<straight, replaced>, &K::lerp_arepl_8888>,
    units<Kind::src, pixel_32, vexlor_1d_lerp_pre_8888, lerp<premultiplied, blended>, &K::lerp_pre_8888>,
    units<Kind::src, pixel_32, vexlor_1d_lerp_pre_aone_8888, lerp<premultiplied, one>, &K::lerp_pre_aone_8888>,
    units<Kind::src, pixel_32, vexlor_1d_lerp_pre_arepl_8888, lerp<premultiplied, replaced>, &K::lerp_pre_arepl_8888>,
    units<Kind::lerp_565, pixel_16, vexlor_1d_lerp_565, lerp_565, &K::lerp_565>,
    units<Kind::lerp_565, pixel_16, vexlor_1d_lerp_pre_565, lerp_pre_565, &K::lerp_pre_565>,
    units<Kind::other, pixel_32, vexlor_writer_arepl_8888, copy_unit>,
    units<Kind::other, pixel_32, vexlor_writer_aone_8888, write_aone>,

    blocks<Kind::src, pixel_32, vexlor_1d_copy_blend_over_src_8888_sse2, src<straight, blended>, src<straight, blended>>,
    blocks<Kind::gbl, pixel_32, vexlor_1d_copy_blend_over_gbl_8888_sse2, gbl<straight, blended>, gbl<straight, blended>>,
    blocks<Kind::src, pixel_32, vexlor_1d_copy_blend_over_src_pre_8888_sse2, src<premultiplied, blended>, src<without_borrow, blended>>,
    blocks<Kind::gbl, pixel_32, vexlor_1d_copy_blend_over_gbl_pre_8888_sse2, gbl<premultiplied, blended>, gbl<without_borrow, blended>>,
    blocks<Kind::decode, yuv_to_rgb, vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2, decode<Y8V8Y8U8, X8R8G8B8>, decode_floats<Y8V8Y8U8>, &K::Y8V8Y8U8_2_X8R8G8B8_single>,
    blocks<Kind::decode, yuv_to_rgb, vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2, decode<U8Y8V8Y8, X8R8G8B8>, decode_floats<U8Y8V8Y8>, &K::U8Y8V8Y8_2_X8R8G8B8_single>,

    span<vexlor_1d_scale_opaque_nofilt_32, &K::scale_opaque_nofilt_32, copy_unit>,
    span<vexlor_1d_scale_opaque_nofilt_aone_8888, &K::scale_opaque_nofilt_aone_8888, opaque_aone>,
    span<vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8, &K::scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8, decode<Y8V8Y8U8, X8R8G8B8>, 2>,
    span<vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8, &K::scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8, decode<Y8V8Y8U8, B8G8R8X8>, 2>,
    span<vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8, &K::scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8, decode<U8Y8V8Y8, X8R8G8B8>, 2>,
    span<vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8, &K::scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8, decode<U8Y8V8Y8, B8G8R8X8>, 2>,
    span<vexlor_1d_scale_blend_over_src_nofilt_8888, &K::scale_blend_over_src_nofilt_8888, src<straight, blended>>,
    span<vexlor_1d_scale_blend_over_src_nofilt_8888_pre, &K::scale_blend_over_src_nofilt_8888_pre, src<premultiplied, blended>>,
    span<vexlor_1d_scale_blend_over_src_nofilt_arepl_8888, &K::scale_blend_over_src_nofilt_arepl_8888, src<straight, replaced>>,
    span<vexlor_1d_scale_blend_over_src_nofilt_arepl_8888_pre, &K::scale_blend_over_src_nofilt_arepl_8888_pre, src<premultiplied, replaced>>,
    span<vexlor_1d_scale_blend_over_src_nofilt_aone_8888, &K::scale_blend_over_src_nofilt_aone_8888, src<straight, one>>,
    span<vexlor_1d_scale_blend_over_src_nofilt_aone_8888_pre, &K::scale_blend_over_src_nofilt_aone_8888_pre, src<premultiplied, one>>,

    filter_row<vexlor_filter_xmean_ymean_8888, mean, mean, 4>,
    filter_row<vexlor_filter_xmean_ylinear_8888, mean, linear, 4>,
    filter_row<vexlor_filter_xlinear_ymean_8888, linear, mean, 4>,
    filter_row<vexlor_filter_xlinear_ylinear_8888, linear, linear, 4>,
    filter_row<vexlor_filter_xgauss_ygauss_8888, gauss, gauss, 4>,
    filter_row<vexlor_filter_xgauss_ycatrom_8888, gauss, catrom, 4>,
    filter_row<vexlor_filter_xcatrom_ygauss_8888, catrom, gauss, 4>,
    filter_row<vexlor_filter_xcatrom_ycatrom_8888, catrom, catrom, 4>,
    filter_row<vexlor_filter_xmean_ymean_565, mean, mean, 2>,
    filter_row<vexlor_filter_xmean_ylinear_565, mean, linear, 2>,
    filter_row<vexlor_filter_xlinear_ymean_565, linear, mean, 2>,
    filter_row<vexlor_filter_xlinear_ylinear_565, linear, linear, 2>,
    filter_row<vexlor_filter_xgauss_ygauss_565, gauss, gauss, 2>,
    filter_row<vexlor_filter_xgauss_ycatrom_565, gauss, catrom, 2>,
    filter_row<vexlor_filter_xcatrom_ygauss_565, catrom, gauss, 2>,
    filter_row<vexlor_filter_xcatrom_ycatrom_565, catrom, catrom, 2>,

    memory_row<vexlor_memcpy_x86, run_words, word_bytes, word_bytes>,
    memory_row<vexlor_memmove, run_exact, exact_bytes, exact_bytes>,
    memory_row<vexlor_memset, run_set, no_bytes, even_bytes>,
    memory_row<vexlor_memcpy, run_aligned, exact_bytes, exact_bytes>,
    memory_row<vexlor_memcpy16_sse, run_by_length<64, run_words, run_copied_blocks>, by_length<64, word_bytes, block_bytes>, by_length<64, word_bytes, block_bytes>>,
    memory_row<vexlor_memcpy_stream_sse, run_by_length<128, run_words, run_exact>, by_length<128, word_bytes, exact_bytes>, by_length<128, word_bytes, exact_bytes>>,
    memory_row<vexlor_memset_stream_sse, run_by_length<128, run_set, run_set_blocks>, no_bytes, by_length<128, even_bytes, exact_bytes>>,

    {Kind::other, false, true, call_set_words, run_units<set_unit, fill_32>, src_of<fill_32>, dst_of<fill_32>},
    {Kind::other, false, true, call_copy_words, run_units<copy_unit, pixel_32>, src_of<pixel_32>, dst_of<pixel_32>},
    {Kind::other, false, true, call_nearest_565, run_span<copy_half, 1, 2>, span_bytes<1, 2>, dst_of<pixel_16>},
    {Kind::other, false, true, call_stream, run_exact, exact_bytes, exact_bytes, 4 * 130 + 3},
    {Kind::other, false, true, call_stream_opaque, run_units<opaque_aone, pixel_32>, src_of<pixel_32>, dst_of<pixel_32>},
};

} // namespace row_table
// clang-format on

// Row routines compiled once per instruction set, and the choice of the set that this processor runs best.
//
// The exported routines are ordinary functions that go through the table of the best set. Tables are constant.
#pragma once

#include "filter/passes.h"

namespace vexlor {

struct Kernels {
    void (*set_words)(void* dst, u32 value, size_t words);
    void (*copy_words)(void* dst, const void* src, size_t words); // which overlap nowhere
    // Rows past the caches, which overlap nowhere. The end follows the last one, before anyone else looks.
    void (*stream_row)(void* dst, const void* src, size_t bytes);
    void (*stream_opaque_row)(void* dst, const void* src, size_t bytes, u32 shift);
    void (*end_streaming)();

    vexlor_fill_blend_fn fill_blend_over_8888;
    vexlor_fill_blend_fn fill_blend_over_aone_8888;
    vexlor_fill_blend_fn fill_blend_over_arepl_8888;

    vexlor_copy_src_fn copy_opaque_aone_8888;
    vexlor_copy_src_fn copy_blend_over_src_8888;
    vexlor_copy_src_fn copy_blend_over_src_aone_8888;
    vexlor_copy_src_fn copy_blend_over_src_arepl_8888;
    vexlor_copy_src_fn copy_blend_over_src_pre_8888;
    vexlor_copy_src_fn copy_blend_over_src_pre_aone_8888;
    vexlor_copy_src_fn copy_blend_over_src_pre_arepl_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_aone_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_arepl_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_pre_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_pre_aone_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_pre_arepl_8888;
    vexlor_copy_gbl_565_fn copy_blend_over_gbl_565;
    vexlor_copy_test_fn copy_test_8888;

    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_Y8V8Y8U8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_U8Y8V8Y8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8;

    vexlor_convert_fn Y8V8Y8U8_2_X8R8G8B8;
    vexlor_convert_fn Y8V8Y8U8_2_B8G8R8X8;
    vexlor_convert_fn U8Y8V8Y8_2_X8R8G8B8;
    vexlor_convert_fn U8Y8V8Y8_2_B8G8R8X8;
    vexlor_convert_fn X8R8G8B8_2_Y8V8Y8U8;
    vexlor_convert_fn B8G8R8X8_2_Y8V8Y8U8;
    vexlor_convert_fn X8R8G8B8_2_U8Y8V8Y8;
    vexlor_convert_fn B8G8R8X8_2_U8Y8V8Y8;

    vexlor_convert_fn Y8V8Y8U8_2_X8R8G8B8_single; // null without SSE2
    vexlor_convert_fn U8Y8V8Y8_2_X8R8G8B8_single;

    vexlor_scale_span_fn scale_opaque_nofilt_32;
    void (*scale_opaque_nofilt_32_rows)(const void* src, void* dst, u32 stride, u32 rows, u32 count, i32 x,
                                        i32 step);
    vexlor_scale_span_fn scale_opaque_nofilt_aone_8888;
    vexlor_scale_span_fn scale_opaque_nofilt_565;
    vexlor_scale_span_fn scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8;
    vexlor_scale_span_fn scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8;
    vexlor_scale_span_fn scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8;
    vexlor_scale_span_fn scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8;
    vexlor_scale_span_fn scale_blend_over_src_nofilt_8888;
    vexlor_scale_span_fn scale_blend_over_src_nofilt_8888_pre;
    vexlor_scale_span_fn scale_blend_over_src_nofilt_arepl_8888;
    vexlor_scale_span_fn scale_blend_over_src_nofilt_arepl_8888_pre;
    vexlor_scale_span_fn scale_blend_over_src_nofilt_aone_8888;
    vexlor_scale_span_fn scale_blend_over_src_nofilt_aone_8888_pre;

    vexlor_lerp_8888_fn lerp_8888;
    vexlor_lerp_8888_fn lerp_pre_8888;
    vexlor_lerp_8888_fn lerp_arepl_8888;
    vexlor_lerp_8888_fn lerp_pre_arepl_8888;
    vexlor_lerp_8888_fn lerp_aone_8888;
    vexlor_lerp_8888_fn lerp_pre_aone_8888;
    vexlor_lerp_565_fn lerp_565;
    vexlor_lerp_565_fn lerp_pre_565;

    AcrossFn mean_across_8888;
    AcrossFn linear_across_8888;
    AcrossFn mean_across_565;
    AcrossFn linear_across_565;
    DownFn mean_down_8888;
    DownFn linear_down_8888;
    DownFn mean_down_565;
    DownFn linear_down_565;
    // Linear in both directions.
    PrepareFn prepare_linear_8888;
    AcrossFn linear_across_for_linear_8888;
    DownFn linear_down_of_linear_8888;
    BothFn halve_8888;
    BothFn halve_565;
    BothFn double_row_8888;
    BothFn halve_row_8888;

    // Null where the filters themselves serve.
    u32 colour_bytes; // of a value of the passes below
    AcrossFn gauss_across_8888;
    AcrossFn gauss_across_for_gauss_8888;
    AcrossFn catrom_across_8888;
    AcrossFn gauss_across_565;
    AcrossFn catrom_across_565;
    DownFn gauss_down_8888;
    DownFn gauss_down_of_gauss_8888;
    DownFn catrom_down_8888;
    DownFn gauss_down_565;
    DownFn catrom_down_565;
};

enum class Set { baseline, avx2, avx512 };

// The table of a set; null when it was not built or this processor cannot run it.
const Kernels* kernels_of(Set set);

// The table of the best set, and null where that is the baseline.
const Kernels& kernels();
const Kernels* wider_kernels();

// Defined by the file of each set.
extern const Kernels baseline_kernels;
extern const Kernels avx2_kernels;
extern const Kernels avx512_kernels;

} // namespace vexlor

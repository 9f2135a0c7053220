// Box and linear filters: two taps in each of two rows, in integers. One loop serves both kernels in both directions.
#include "filter/mean_linear.h"

using namespace vexlor;

namespace {

// The box of 32-bit pixels alone tests its lower right tap by itself; all others take both lower taps or
// neither.
template <class Pixel, class X, class Y> constexpr bool lower_taps_fall_back_apart = false;
template <> constexpr bool lower_taps_fall_back_apart<Pixel8888, Mean, Mean> = true;

template <class Pixel, class X, class Y>
void resample(const u8* last, const u8* row, const u8* row_end, const vexlor_filter_params& p, void* out)
{
    using Word = typename Pixel::Word;
    const uintptr_t down = bytes_of(Y::rows_below(p), p.stride);
    const uintptr_t start = address(row) + down;
    const uintptr_t end = address(row_end) + down;
    const u32 wy = fraction_weight(p.ypos);
    i64 position = 0;
    for (u32 i = 0; i < p.count; ++i, position += p.xstep) {
        const auto [left, right] = taps_at<Pixel, X>(start, end, position, p);
        const u32 wx = fraction_weight(static_cast<u32>(position));

        u32 result = mix_taps<Pixel, X>({left, right}, wx);
        if (has_row_below(left, p.stride, last)) {
            const bool apart =
                lower_taps_fall_back_apart<Pixel, X, Y> && !has_row_below(right, p.stride, last);
            const uintptr_t lower_right = apart ? right : right + p.stride;
            const u32 lower = mix_taps<Pixel, X>({left + p.stride, lower_right}, wx);
            result = Y::template mix<Pixel>(result, lower, wy);
        } else if (Y::needs_lower_row) {
            result = Y::template mix<Pixel>(result, result, wy);
        }
        store(static_cast<Word*>(out) + i, static_cast<Word>(result));
    }
}

} // namespace

// clang-format off
using Byte = const uint8_t*;
using Params = const vexlor_filter_params*;
void vexlor_filter_xmean_ymean_8888    (Byte, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel8888, Mean, Mean>    (last, row, row_end, *params, out); }
void vexlor_filter_xmean_ylinear_8888  (Byte, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel8888, Mean, Linear>  (last, row, row_end, *params, out); }
void vexlor_filter_xlinear_ymean_8888  (Byte, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel8888, Linear, Mean>  (last, row, row_end, *params, out); }
void vexlor_filter_xlinear_ylinear_8888(Byte, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel8888, Linear, Linear>(last, row, row_end, *params, out); }
void vexlor_filter_xmean_ymean_565     (Byte, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel565, Mean, Mean>     (last, row, row_end, *params, out); }
void vexlor_filter_xmean_ylinear_565   (Byte, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel565, Mean, Linear>   (last, row, row_end, *params, out); }
void vexlor_filter_xlinear_ymean_565   (Byte, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel565, Linear, Mean>   (last, row, row_end, *params, out); }
void vexlor_filter_xlinear_ylinear_565 (Byte, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel565, Linear, Linear> (last, row, row_end, *params, out); }
// clang-format on

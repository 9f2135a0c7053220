// Box and linear filters: two taps in each of two rows, in integers. A kernel says where its taps are and how
// they mix; one loop serves both kernels in both directions.
#include "filter/pixels.h"
#include "filter/position.h"

using namespace vexlor;

namespace {

struct Mean {
    static i64 first_tap(i64 position, const vexlor_filter_params& p) { return centre(position, p.xhalf); }
    static constexpr bool clamps_first_tap = true;
    // The upper row is the one half a step below the current position, rounded down to rows.
    static i32 rows_below(const vexlor_filter_params& p) { return p.yhalf_rows; }
    // Without a lower row, the upper one is averaged with itself: the mean's loss applies all the same.
    static constexpr bool needs_lower_row = true;

    template <class Pixel> static u32 mix(u32 a, u32 b, u32) { return Pixel::mean(a, b); }
};

struct Linear {
    static i64 first_tap(i64 position, const vexlor_filter_params&) { return position >> 16; }
    // A left tap behind the row's end, as direct callers may ask for, is read where it is.
    static constexpr bool clamps_first_tap = false;
    static i32 rows_below(const vexlor_filter_params&) { return 0; }
    static constexpr bool needs_lower_row = false;

    template <class Pixel> static u32 mix(u32 a, u32 b, u32 w) { return Pixel::lerp(a, b, w); }
};

// The box of 32-bit pixels alone tests its lower right tap by itself; all others take both lower taps or
// neither.
template <class Pixel, class X, class Y> constexpr bool lower_taps_fall_back_apart = false;
template <> constexpr bool lower_taps_fall_back_apart<Pixel8888, Mean, Mean> = true;

// Whether the tap one row below a place is not behind the last one. The sum of address and stride might wrap.
bool reaches_below(uintptr_t at, u32 stride, const u8* last)
{
    return at <= address(last) && address(last) - at >= stride;
}

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
        uintptr_t left = start + bytes_of(X::first_tap(position, p), sizeof(Word));
        if (X::clamps_first_tap && left > end)
            left = end;
        const uintptr_t right = left + sizeof(Word) > end ? end : left + sizeof(Word);
        const u32 wx = fraction_weight(static_cast<u32>(position));
        const auto pixel = [](uintptr_t at) -> u32 { return load<Word>(reinterpret_cast<const void*>(at)); };
        const auto across = [&](uintptr_t a, uintptr_t b) {
            return X::template mix<Pixel>(pixel(a), pixel(b), wx);
        };

        u32 result = across(left, right);
        if (reaches_below(left, p.stride, last)) {
            const bool apart =
                lower_taps_fall_back_apart<Pixel, X, Y> && !reaches_below(right, p.stride, last);
            const uintptr_t lower_right = apart ? right : right + p.stride;
            result = Y::template mix<Pixel>(result, across(left + p.stride, lower_right), wy);
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

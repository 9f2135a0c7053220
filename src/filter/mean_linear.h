// The box and linear kernels: where their taps are and how they mix.
#pragma once

#include "filter/pixels.h"
#include "filter/position.h"

namespace vexlor {
namespace {

struct Mean {
    static i64 first_tap(i64 position, const vexlor_filter_params& p) { return centre(position, p.xhalf); }
    static constexpr bool clamps_first_tap = true, weighs = false;
    // The upper row is the one half a step below the current position, rounded down to rows.
    static i32 rows_below(const vexlor_filter_params& p) { return p.yhalf_rows; }
    // Without a lower row, the upper one is averaged with itself: the mean's loss applies all the same.
    static constexpr bool needs_lower_row = true;
    static bool mixes(const vexlor_filter_params&) { return true; }

    // Of a pixel, or of a vector of them.
    template <class Pixel> static auto mix(auto a, auto b, auto) { return Pixel::mean(a, b); }
};

struct Linear {
    static i64 first_tap(i64 position, const vexlor_filter_params&) { return position >> 16; }
    // A left tap behind the row's end, as direct callers may ask for, is read where it is.
    static constexpr bool clamps_first_tap = false, weighs = true;
    static i32 rows_below(const vexlor_filter_params&) { return 0; }
    static constexpr bool needs_lower_row = false;
    // The weight 0 leaves the upper row as it is.
    static bool mixes(const vexlor_filter_params& p) { return fraction_weight(p.ypos) != 0; }

    template <class Pixel> static auto mix(auto a, auto b, auto w) { return Pixel::lerp(a, b, w); }
};

// The addresses of a pixel's two taps in a row.
struct Taps {
    uintptr_t left, right;
};
template <class Pixel, class X>
inline Taps taps_at(uintptr_t start, uintptr_t end, i64 position, const vexlor_filter_params& p)
{
    constexpr u32 bytes = sizeof(typename Pixel::Word);
    uintptr_t left = start + bytes_of(X::first_tap(position, p), bytes);
    if (X::clamps_first_tap && left > end)
        left = end;
    return {left, left + bytes > end ? end : left + bytes};
}

// Whether the tap one row below a place is not behind the last one. The sum of address and stride might wrap.
inline bool has_row_below(uintptr_t at, u32 stride, const u8* last)
{
    return at <= address(last) && address(last) - at >= stride;
}

template <class Pixel, class X> inline u32 mix_taps(Taps taps, u32 weight)
{
    const auto pixel = [](uintptr_t at) -> u32 {
        return load<typename Pixel::Word>(reinterpret_cast<const void*>(at));
    };
    return X::template mix<Pixel>(pixel(taps.left), pixel(taps.right), weight);
}

} // namespace
} // namespace vexlor

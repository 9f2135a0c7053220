// The Gaussian and Catmull-Rom kernels: their taps, their weights, and the rows that they read.
#pragma once

#include "filter/passes.h"
#include "filter/pixels.h"
#include "filter/position.h"
#include "row/rounding.h"

namespace vexlor {
namespace {

// Sums of products of singles, in double, in a fixed order; the caller stores the result as a single.
struct Gauss {
    static constexpr u32 taps = 3;
    static i32 first_row(const vexlor_filter_params& p) { return p.ycentre_rows - 1; }

    struct Weights {};
    static Weights weights(u32) { return {}; }
    static float mix(const float* q, Weights)
    {
        const double outer =
            through_memory(0.25 * static_cast<double>(q[0]) + 0.5 * static_cast<double>(q[1]));
        return single(outer + 0.25 * static_cast<double>(q[2]));
    }

    // What a pass knows of a column: its centre, and the weights of its taps.
    struct Column {
        i32 centre;
        static bool is_on_pixel() { return false; }
        static double weight(u32 tap) { return tap == 1 ? 0.5 : 0.25; }
    };
    static Column column(u32, i64 at) { return {static_cast<i32>(at)}; }
};

struct CatRom {
    static constexpr u32 taps = 4;
    static i32 first_row(const vexlor_filter_params& p) { return p.yhalf_rows - 1; }

    struct Weights {
        float w[taps];
    };
    // From the fraction of a position. The full fraction 0xFFFF is a phase of 1.
    static Weights weights(u32 position)
    {
        constexpr float per_fraction = 1.0F / 65535;
        static_assert(__builtin_bit_cast(u32, per_fraction) == 0x37800080);
        const double t = static_cast<double>(single((position & 0xFFFF) * static_cast<double>(per_fraction)));
        const auto r = through_memory<double>;
        const double tt = r(t * t);
        return {single(r(r(r(2 - t) * t) - 1) * t), single(r(r(r(3 * t) - 5) * tt) + 2),
                single(r(r(r(4 - r(3 * t)) * t) + 1) * t), single(r(t - 1) * tt)};
    }
    static float mix(const float* q, const Weights& k)
    {
        double sum = static_cast<double>(k.w[0]) * static_cast<double>(q[0]);
        for (u32 i = 1; i < taps; ++i)
            sum = through_memory(sum + static_cast<double>(k.w[i]) * static_cast<double>(q[i]));
        const float c = single(0.5 * sum);
        return c > 0 ? c < 1 ? c : 1 : 0; // what is no number becomes 0
    }

    // Weights are halved here and not where they are summed up: nothing is rounded differently.
    struct Column {
        double weights[taps];
        i32 centre;
        bool on_pixel;
        bool is_on_pixel() const { return on_pixel; }
        double weight(u32 tap) const { return weights[tap]; }
    };
    static Column column(u32 position, i64 at)
    {
        const Weights k = weights(position);
        const auto half = [&](u32 tap) { return 0.5 * static_cast<double>(k.w[tap]); };
        return {{half(0), half(1), half(2), half(3)}, static_cast<i32>(at), (position & 0xFFFF) == 0};
    }
};

// The Gaussian centres on a point one sixteenth of a pixel further when both axes are Gaussian.
template <class X, class Y> constexpr i32 vexlor_filter_params::*column_offset = &vexlor_filter_params::xhalf;
template <> constexpr i32 vexlor_filter_params::*column_offset<Gauss, Gauss> = &vexlor_filter_params::xcentre;

// When the first row lies above the rectangle and is replaced, the rows below follow the replacement.
constexpr bool rows_follow_replaced_first = true;

// The rows of the vertical kernel. Those outside the rectangle become substitutes of one whole stride, from
// the rectangle's first pixel on or up to its last: taps in them may fall on pixels beside the rectangle.
template <class Pixel, class Y>
inline void find_rows(const FilterPlace& place, const vexlor_filter_params& p, TapRow* rows)
{
    // Wider than an address: rows above and below a surface at either end of memory must not wrap.
    const auto at = [](const u8* byte) { return static_cast<i64>(address(byte)); };
    constexpr i64 pixel = sizeof(typename Pixel::Word);
    const i64 stride = p.stride;
    const i64 length = at(place.row_end) - at(place.row);
    const i64 start = at(place.row) + Y::first_row(p) * stride;
    const bool above = start + length < at(place.first);
    const i64 origin = above && rows_follow_replaced_first ? at(place.first) : start;
    for (u32 j = 0; j < Y::taps; ++j) {
        i64 row_start = origin + j * stride;
        i64 row_last = row_start + length;
        if (above && j == 0)
            row_last = at(place.first) + stride - pixel;
        if (row_start > at(place.last)) {
            row_start = at(place.last) + pixel - stride;
            row_last = at(place.last);
        }
        rows[j] = {static_cast<uintptr_t>(row_start), static_cast<uintptr_t>(row_last)};
    }
}

} // namespace
} // namespace vexlor

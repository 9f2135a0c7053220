// Rows to twice their width by the linear filter, and both passes at once for a 32-bit row that mixes with no other: that, or
// half the width by the box.
#pragma once

#include "filter/halve_kernels.h"
#include "filter/mean_linear_kernels.h"
#include "row/stepped.h"
#include "row/zip.h"

namespace vexlor {
namespace {

// Where columns stand on a pixel and half way to the next in turn. False when they do not, or a vector is too long. What
// it makes is biased when told so.
template <u32 Bias = 0>
inline bool double_across_8888([[maybe_unused]] TapRow source, [[maybe_unused]] const vexlor_filter_params& p,
                               [[maybe_unused]] void* out)
{
#if defined(__AVX2__)
    using Lanes = PixelVector<Pixel8888, vector_bytes>;
    using Pixels = Lanes::Pixels;
    const auto* const row = reinterpret_cast<const u32*>(source.start);
    const u32 number = p.count / 2;
    const i64 end = static_cast<i64>((source.end - source.start) / 4), begin = i64{number} - Lanes::count;
    if (p.xstep != 0x8000 || p.count % 2 != 0 || begin < 0 || end < begin || end - begin >= Lanes::count)
        return false;
    const auto half_way = byte_weights<Pixels>(fraction_weight(0x8000));
    const Target target{static_cast<u32*>(out), p.count >= Stepped::far_from};
    const auto put = [=](u32 i, Pixels left, Pixels right) {
        const Twice<Pixels> pixels = zip_units(left, mix_biased_bytes(right, left, half_way));
        const Twice<Pixels> made{pixels.low ^ (bias ^ Bias), pixels.high ^ (bias ^ Bias)};
        target.twice(Whole<vector_bytes>{}, static_cast<i32>(i), made);
    };
    for (u32 i = 0; i < begin; i += Lanes::count) {
        const auto left = load<Pixels>(row + i) ^ bias;
        put(i, left, moved_up(left, load<u32>(row + i + Lanes::count) ^ bias));
    }
    // Right taps behind the end find the last pixel. Left ones are read where they are.
    const auto left = load<Pixels>(row + begin) ^ bias;
    const Pixels next = lane_numbers<Pixels>() + 1, last = Pixels{} + static_cast<u32>(end - begin);
    put(static_cast<u32>(begin), left, pick(left, next < last ? next : last));
    return true;
#else
    return false;
#endif
}

inline void linear_across_8888(TapRow row, const vexlor_filter_params& p, const void* columns, void* values)
{
    if (!double_across_8888(row, p, values))
        mix_across<Pixel8888, Linear>(row, p, columns, values);
}

// Returns the columns that it made: those before the row's end.
inline u32 double_across_565([[maybe_unused]] TapRow source, [[maybe_unused]] const vexlor_filter_params& p,
                             [[maybe_unused]] u16* values)
{
#if defined(__AVX2__)
    using Lanes = PixelVector<Pixel565, vector_bytes>;
    using Pixels = Lanes::Pixels;
    const auto row = source_row<u16>(source);
    const i64 pairs = p.count / 2, inside = pairs < row.last ? pairs : row.last; // with the pixel behind them
    if (p.xstep != 0x8000 || inside < Lanes::count)
        return 0;
    const auto number = static_cast<u32>(inside), last = number - Lanes::count;
    const auto half_way = Lanes::every(fraction_weight(0x8000));
    const auto put = [half_way, row, values](u32 i) {
        const auto left = load<Pixels>(row.at(i)), right = load<Pixels>(row.at(i + 1));
        const Twice<Pixels> pixels = zip_units(left, Lanes::lerp(left, right, half_way));
        store(values + size_t{2} * i, pixels.low);
        store(values + size_t{2} * i + Lanes::count, pixels.high);
    };
    for (u32 i = 0; i < last; i += Lanes::count)
        put(i);
    put(last);
    return 2 * number;
#else
    return 0;
#endif
}

inline void linear_across_565(TapRow row, const vexlor_filter_params& p, const void* columns, void* values)
{
    auto* const pixels = static_cast<u16*>(values);
    if (const u32 made = double_across_565(row, p, pixels))
        mix_columns<Pixel565, Linear>(row, p, made, pixels);
    else
        mix_across<Pixel565, Linear>(row, p, columns, values);
}

inline bool double_row_8888(const TapRow* rows, const vexlor_filter_params& p, void* out)
{
    return rows[0] == rows[1] && double_across_8888(rows[0], p, out);
}

} // namespace
} // namespace vexlor

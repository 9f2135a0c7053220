// Both passes of the 32-bit linear filter at once, for a row that is made twice as wide and mixes with no row below.
#pragma once

#include "filter/mean_linear.h"
#include "filter/passes.h"
#include "filter/pixel_vectors.h"
#include "row/zip.h"

namespace vexlor {
namespace {

inline bool double_8888([[maybe_unused]] const TapRow* rows, [[maybe_unused]] const vexlor_filter_params& p,
                        [[maybe_unused]] void* out)
{
#if defined(__AVX2__)
    using Lanes = PixelVector<Pixel8888, vector_bytes>;
    using Pixels = Lanes::Pixels;
    const auto* const row = reinterpret_cast<const u32*>(rows[0].start);
    const u32 number = p.count / 2;
    const i64 end = static_cast<i64>((rows[0].end - rows[0].start) / 4), begin = i64{number} - Lanes::count;
    if (p.xstep != 0x8000 || p.count % 2 != 0 || begin < 0 || end < begin || end - begin >= Lanes::count ||
        !(rows[0] == rows[1]))
        return false;
    const auto half_way = Lanes::every_byte(fraction_weight(0x8000));
    const auto put = [=](u32 i, Pixels left, Pixels right) {
        const Twice<Pixels> pixels = zip_units(left, Lanes::lerp(left, right, half_way));
        store(static_cast<u32*>(out) + size_t{2} * i, pixels.low);
        store(static_cast<u32*>(out) + size_t{2} * i + Lanes::count, pixels.high);
    };
    for (u32 i = 0; i < begin; i += Lanes::count)
        put(i, load<Pixels>(row + i), load<Pixels>(row + i + 1));
    // Right taps behind the end find the last pixel. Left ones are read where they are.
    const auto left = load<Pixels>(row + begin);
    const Pixels next = lane_numbers<Pixels>() + 1, last = Pixels{} + static_cast<u32>(end - begin);
    put(static_cast<u32>(begin), left, pick(left, next < last ? next : last));
    return true;
#else
    return false;
#endif
}

} // namespace
} // namespace vexlor

// Passes of the box and linear filters, for one instruction set. A row of values is a row of pixels.
#pragma once

#include "filter/mean_linear.h"
#include "filter/passes.h"

namespace vexlor {
namespace {

template <class Pixel, class X>
void mix_across(TapRow row, const vexlor_filter_params& p, const void*, void* values)
{
    using Word = typename Pixel::Word;
    i64 position = 0;
    for (u32 i = 0; i < p.count; ++i, position += p.xstep) {
        const Taps taps = taps_at<Pixel, X>(row.start, row.end, position, p);
        store(static_cast<Word*>(values) + i,
              static_cast<Word>(mix_taps<Pixel, X>(taps, fraction_weight(static_cast<u32>(position)))));
    }
}

template <class Pixel, class Y>
void mix_down(const void* const* values, const vexlor_filter_params& p, void* out)
{
    using Word = typename Pixel::Word;
    const auto *upper = static_cast<const Word*>(values[0]), *lower = static_cast<const Word*>(values[1]);
    const u32 weight = fraction_weight(p.ypos);
    for (u32 i = 0; i < p.count; ++i)
        store(static_cast<Word*>(out) + i,
              static_cast<Word>(Y::template mix<Pixel>(upper[i], lower[i], weight)));
}

} // namespace
} // namespace vexlor

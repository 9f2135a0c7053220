// Passes of the box and linear filters, for one instruction set. A row of values is a row of pixels.
#pragma once

#include "filter/mean_linear.h"
#include "filter/passes.h"
#include "filter/taps.h"

#include <string.h>

namespace vexlor {
namespace {

#if defined(__SSE2__)

// Of a vector of columns: 0, 2..256 in both halves of 32 bits.
template <class U32> inline U32 weights_of(U32 positions)
{
    const U32 f = positions >> 8 & 0xFF;
    const U32 raised = f - reinterpret_cast<U32>(f != 0);
    return raised | raised << 16;
}
template <u32 Bytes> inline auto weights_of(const Columns& columns, u32 i, Pixel8888)
{
    return weights_of(columns.positions<typename Vector<Bytes>::U32>(i));
}
template <u32 Bytes> inline auto weights_of(const Columns& columns, u32 i, Pixel565)
{
    using U32 = typename Vector<Bytes>::U32;
    return low_halves(weights_of(columns.positions<U32>(i)),
                      weights_of(columns.positions<U32>(i + lane_count<U32>)));
}

// Mixes whole vectors up to column `count`, and beyond it when they do not end there.
template <class Pixel, class X, u32 Bytes>
void mix_taps_of(const auto& taps, const Columns& columns, u32 count, typename Pixel::Word* values)
{
    using Lanes = PixelVector<Pixel, Bytes>;
    for (u32 i = 0; i < count; i += Lanes::count) {
        const auto [left, right] = taps(i);
        store(values + i, X::template mix<Lanes>(left, right, weights_of<Bytes>(columns, i, Pixel{})));
    }
}

// Returns the columns that it made.
template <class Pixel, class X>
u32 mix_across_vectors(TapRow row, const vexlor_filter_params& p, typename Pixel::Word* values)
{
    using Word = typename Pixel::Word;
    const SourceRow<Word> source{reinterpret_cast<const u8*>(row.start),
                                 static_cast<i64>((row.end - row.start) / sizeof(Word))};
    const Columns columns{p.xstep, X::first_tap(0, p), source.last};
    if (p.xstep < 0 || p.xstep >= 0x8000000) // positions of a vector would wrap
        return 0;
#if defined(__AVX2__)
    // A linear left tap that is behind the end is read where it is.
    const u32 count = X::clamps_first_tap ? p.count : columns.inside(p.count);
    const auto mix = [&](const auto& taps) {
        mix_taps_of<Pixel, X, vector_bytes>(taps, columns, count, values);
    };
    switch (reach_of(p.xstep)) {
    case Reach::one: mix(PickedTaps<Pixel, Reach::one>(source, columns)); break;
    case Reach::two: mix(PickedTaps<Pixel, Reach::two>(source, columns)); break;
    case Reach::any: mix(PickedTaps<Pixel, Reach::any>(source, columns)); break;
    }
    return count;
#else
    const Columns of_right_taps{columns.step, columns.first + 1, columns.last};
    const u32 inside = of_right_taps.inside(p.count);
    const u32 count = inside - inside % PixelVector<Pixel, 16>::count;
    mix_taps_of<Pixel, X, 16>(LoadedTaps<Pixel>(source, columns), columns, count, values);
    return count;
#endif
}

#endif

template <class Pixel, class X>
void mix_across(TapRow row, const vexlor_filter_params& p, const void*, void* values)
{
    using Word = typename Pixel::Word;
    auto* const out = static_cast<Word*>(values);
    u32 i = 0;
#if defined(__SSE2__)
    i = mix_across_vectors<Pixel, X>(row, p, out);
#endif
    for (i64 position = i64{i} * p.xstep; i < p.count; ++i, position += p.xstep) {
        const Taps taps = taps_at<Pixel, X>(row.start, row.end, position, p);
        const u32 weight = fraction_weight(static_cast<u32>(position));
        out[i] = static_cast<Word>(mix_taps<Pixel, X>(taps, weight));
    }
}

// Rows of values are longer than count, and vectors may read beyond it. The last vector of pixels ends at count.
template <class Pixel, class Y>
void mix_down(const void* const* values, const vexlor_filter_params& p, void* out)
{
    using Word = typename Pixel::Word;
    const auto *upper = static_cast<const Word*>(values[0]), *lower = static_cast<const Word*>(values[1]);
    auto* const pixels = static_cast<Word*>(out);
    const u32 weight = fraction_weight(p.ypos);
    if (!Y::needs_lower_row && upper == lower) {
        memcpy(out, upper, size_t{p.count} * sizeof(Word));
        return;
    }
    u32 i = 0;
    if constexpr (vector_bytes != 0) {
        using Lanes = PixelVector<Pixel, vector_bytes>;
        using V = typename Lanes::Pixels;
        const V weights = Lanes::every(weight);
        const auto mix = [&](u32 at) {
            store(pixels + at, Y::template mix<Lanes>(load<V>(upper + at), load<V>(lower + at), weights));
        };
        for (; p.count - i >= Lanes::count; i += Lanes::count)
            mix(i);
        if (i != 0 && i < p.count) {
            mix(p.count - Lanes::count);
            return;
        }
    }
    for (; i < p.count; ++i)
        store(pixels + i, static_cast<Word>(Y::template mix<Pixel>(u32{upper[i]}, u32{lower[i]}, weight)));
}

} // namespace
} // namespace vexlor

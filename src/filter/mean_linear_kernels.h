// Passes of the box and linear filters, for one instruction set. A row of values is a row of pixels.
#pragma once

#include "filter/columns.h"
#include "filter/taps.h"
#include "row/copy_row.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

// Mixes whole vectors up to column `count`, and beyond it when they do not end there.
template <class Pixel, class X, u32 Bytes>
void mix_vectors(const auto& taps, Columns<Pixel> columns, u32 count, typename Pixel::Word* values)
{
    using Lanes = PixelVector<Pixel, Bytes>;
    const auto weights = [=](u32 i) {
        if constexpr (X::weighs)
            return load<typename Lanes::Pixels>(columns.weights + i);
        else
            return i; // of no use to a mean
    };
    for (u32 i = 0; i < count; i += Lanes::count) {
        const auto [left, right] = taps(i);
        store(values + i, X::template mix<Lanes>(left, right, weights(i)));
    }
}

// How many columns have their tap at `first` or behind it not behind the last pixel.
inline u32 columns_inside(i64 first, i64 last, const vexlor_filter_params& p)
{
    if (first > last || p.xstep <= 0)
        return first > last ? 0 : p.count;
    const i64 room = (last + 1 - first) << 16; // for positions
    if ((i64{p.count} - 1) * p.xstep < room)   // nearly always: spares rows a division
        return p.count;
    return static_cast<u32>((room + p.xstep - 1) / p.xstep);
}

// Returns the columns that it made.
template <class Pixel, class X>
u32 mix_across_vectors(TapRow row, const vexlor_filter_params& p, const Columns<Pixel>& columns,
                       typename Pixel::Word* values)
{
    using Word = typename Pixel::Word;
    const auto source = source_row<Word>(row);
#if defined(__AVX2__)
    // A linear left tap that is behind the end is read where it is.
    const u32 count = X::clamps_first_tap ? p.count : columns_inside(0, source.last, p);
    const auto mix = [&](const auto& taps) {
        mix_vectors<Pixel, X, vector_bytes>(taps, columns, count, values);
    };
    switch (reach_of(p.xstep)) {
    case Reach::one: mix(PickedTaps<Pixel, Reach::one>(source, columns.left)); break;
    case Reach::two: mix(PickedTaps<Pixel, Reach::two>(source, columns.left)); break;
    case Reach::exactly_two: mix(PickedTaps<Pixel, Reach::exactly_two>(source, columns.left)); break;
    case Reach::any: mix(PickedTaps<Pixel, Reach::any>(source, columns.left)); break;
    }
    return count;
#else
    const u32 inside = columns_inside(X::first_tap(0, p) + 1, source.last, p);
    const u32 count = inside - inside % PixelVector<Pixel, 16>::count;
    mix_vectors<Pixel, X, 16>(LoadedTaps<Pixel>(source, columns.left), columns, count, values);
    return count;
#endif
}

#endif

// Columns from i on, one by one.
template <class Pixel, class X>
[[gnu::always_inline]] inline void mix_columns(TapRow row, const vexlor_filter_params& p, u32 i, auto* values)
{
    for (i64 position = i64{i} * p.xstep; i < p.count; ++i, position += p.xstep) {
        const Taps taps = taps_at<Pixel, X>(row.start, row.end, position, p);
        const u32 weight = fraction_weight(static_cast<u32>(position));
        values[i] = static_cast<typename Pixel::Word>(mix_taps<Pixel, X>(taps, weight));
    }
}

template <class Pixel, class X>
void mix_across(TapRow row, const vexlor_filter_params& p, [[maybe_unused]] const void* columns, void* values)
{
    using Word = typename Pixel::Word;
    auto* const out = static_cast<Word*>(values);
    u32 i = 0;
#if defined(__SSE2__)
    i = mix_across_vectors<Pixel, X>(row, p, Columns<Pixel>(p, const_cast<void*>(columns)), out);
#endif
    mix_columns<Pixel, X>(row, p, i, out);
}

// Rows of values are longer than count, and vectors may read beyond it. The last vector of pixels ends at count. Returns
// how many pixels it made: none of rows shorter than a vector.
template <class Y, class Lanes>
u32 mix_down_vectors(const auto* upper, const auto* lower, u32 count, auto* out, auto weights)
{
    using Pixels = typename Lanes::Pixels;
    const auto mix = [=](u32 i) {
        store(out + i, Y::template mix<Lanes>(load<Pixels>(upper + i), load<Pixels>(lower + i), weights));
    };
    if (count < Lanes::count)
        return 0;
    for (u32 i = 0; i < count - Lanes::count; i += Lanes::count)
        mix(i);
    mix(count - Lanes::count);
    return count;
}

template <class Pixel, class Y>
void mix_down(const void* const* values, const vexlor_filter_params& p, void* out)
{
    using Word = typename Pixel::Word;
    const auto *upper = static_cast<const Word*>(values[0]), *lower = static_cast<const Word*>(values[1]);
    auto* const pixels = static_cast<Word*>(out);
    const u32 count = p.count, weight = fraction_weight(p.ypos);
    if (!Y::needs_lower_row && upper == lower)
        return copy_row(out, upper, size_t{count} * sizeof(Word));
    u32 i = 0;
    if constexpr (vector_bytes != 0) {
        using Lanes = PixelVector<Pixel, vector_bytes>;
        if constexpr (Y::weighs && requires { Lanes::every_byte(weight); })
            if (weight > 0 && weight < 256)
                i = mix_down_vectors<Y, Lanes>(upper, lower, count, pixels, Lanes::every_byte(weight));
        if (i == 0)
            i = mix_down_vectors<Y, Lanes>(upper, lower, count, pixels, Lanes::every(weight));
    }
    for (; i < count; ++i)
        store(pixels + i, static_cast<Word>(Y::template mix<Pixel>(u32{upper[i]}, u32{lower[i]}, weight)));
}

} // namespace
} // namespace vexlor

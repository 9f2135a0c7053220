// Passes of the Gaussian and Catmull-Rom filters, for one instruction set, in double precision. A value is a colour of
// singles, as the filters store it: rows of them are half as long as rows of doubles, and stay in nearer caches.
#pragma once

#include "filter/column_walk.h"
#include "filter/field_vectors.h"
#include "filter/gauss_catrom.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

// The sum of the taps by their weights, in their order.
template <class Kernel, class Values> inline Values mixed(const Values (&weights)[Kernel::taps], auto tap)
{
    Values sum = weights[0] * Values::at(tap(0));
    for (u32 j = 1; j < Kernel::taps; ++j)
        sum = plus_product(sum, weights[j], Values::at(tap(j)));
    return sum;
}

// For one colour at a time, or several.
template <class Kernel, class Values> struct Weights {
    Values of_taps[Kernel::taps];
    explicit Weights(const typename Kernel::Column& column)
    {
        for (u32 j = 0; j < Kernel::taps; ++j)
            of_taps[j] = Values::all(column.weight(j));
    }
    // The taps of a column lie side by side, and the next column's one pixel further.
    auto mixed_across(const double* taps) const
    {
        const auto sum = mixed<Kernel>(of_taps, [&](u32 j) { return taps + j * components; }).rounded();
        return __is_same(Kernel, CatRom) ? clamped(sum) : sum;
    }
};

// Columns that take from two vectors in turn.
inline void put_in_turn(auto a, auto b, float* values)
{
    if constexpr (sizeof a == 32) {
        put_in_turn(_mm256_castps256_ps128(a), _mm256_castps256_ps128(b), values);
        put_in_turn(_mm256_extractf128_ps(a, 1), _mm256_extractf128_ps(b, 1), values + 2 * components);
    } else {
        _mm_storeu_ps(values, a);
        _mm_storeu_ps(values + components, b);
    }
}

template <class Pixel, class X>
void colours_across(TapRow row, const vexlor_filter_params& p, const void* columns, void* values)
{
    alignas(64) double colours[block_room * components];
    auto* const out = static_cast<float*>(values);
    const auto* const column = static_cast<const typename X::Column*>(columns);
    const RowPixels<Pixel> pixels(row);
    const auto unpack = [&](i64 place, u32 number) {
        pixels.for_each(
            place, number, [&](u32 i, u32 pixel) { Fields<Pixel>::unpack(pixel, colours + i * components); },
            [&](u32 i, const void* pair) { Fields<Pixel>::unpack_pair(pair, colours + i * components); });
    };
    // Twice as wide: columns stand on a pixel and half way to the next in turn, all those with the same weights.
    if (__is_same(X, CatRom) && p.xstep == 0x8000) {
        const Weights<X, Colours> half_way(X::column(0x8000, 0));
        constexpr u32 made = colours_at_once;
        for (u32 begin = 0; begin < p.count; begin += block_columns) {
            const u32 end = p.count - begin < block_columns ? p.count : begin + block_columns;
            unpack(i64{column[begin].centre} - 1, (end - begin + 1) / 2 + 2 + made);
            const double* taps = colours;
            float* value = out + begin * components;
            for (u32 i = begin; i < end;
                 i += 2 * made, taps += made * components, value += size_t{2} * made * components)
                put_in_turn(Colours::at(taps + components).rounded(), half_way.mixed_across(taps), value);
        }
        return;
    }
    for_columns<X>(column, 0, p.count, unpack, [&](u32 i, u32 index) {
        const double* const taps = colours + index * components;
        if (column[i].is_on_pixel())
            _mm_storeu_ps(out + i * components, Colour::at(taps + components).rounded());
        else
            _mm_storeu_ps(out + i * components, Weights<X, Colour>(column[i]).mixed_across(taps));
    });
}

template <class Pixel, class Y>
void colours_down(const void* const* values, const vexlor_filter_params& p, void* out)
{
    const auto at = [&](u32 row, u32 i) { return static_cast<const float*>(values[row]) + i * components; };
    const typename Y::Column row = Y::column(p.ypos, 0);
    if (row.is_on_pixel())
        return pack_row<Pixel>(p.count, out,
                               [&](u32 first) { return Fields<Pixel>::cut_off(load<Floats>(at(1, first))); });
    const Weights<Y, Colours> weights(row);
    pack_row<Pixel>(p.count, out, [&](u32 first) {
        const Floats sums = floats_at(first, [&](u32 i) {
            return mixed<Y>(weights.of_taps, [&](u32 j) { return at(j, i); }).rounded();
        });
        return Fields<Pixel>::cut_off(__is_same(Y, CatRom) && !Fields<Pixel>::pack_clamps ? clamped(sums)
                                                                                          : sums);
    });
}

template <class Pixel, class Kernel> constexpr AcrossFn across = colours_across<Pixel, Kernel>;
template <class Pixel, class Kernel> constexpr DownFn down = colours_down<Pixel, Kernel>;

#else

// Without vectors of doubles the filters do it alone.
template <class Pixel, class Kernel> constexpr AcrossFn across = nullptr;
template <class Pixel, class Kernel> constexpr DownFn down = nullptr;

#endif

} // namespace
} // namespace vexlor

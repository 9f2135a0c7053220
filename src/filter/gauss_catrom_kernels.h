// Passes of the Gaussian and Catmull-Rom filters, for one instruction set, in double precision: a value is a colour.
#pragma once

#include "filter/colour_vectors.h"
#include "filter/column_walk.h"
#include "filter/gauss_catrom.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

// The sum of the taps by their weights, in their order.
template <class Kernel> inline Colour mixed(const Colour (&weights)[Kernel::taps], auto tap)
{
    Colour sum = weights[0] * Colour::at(tap(0));
    for (u32 j = 1; j < Kernel::taps; ++j)
        sum = plus_product(sum, weights[j], Colour::at(tap(j)));
    return sum;
}

template <class Kernel> struct Weights {
    Colour of_taps[Kernel::taps];
    explicit Weights(const typename Kernel::Column& column)
    {
        for (u32 j = 0; j < Kernel::taps; ++j)
            of_taps[j] = Colour::all(column.weight(j));
    }
    // The taps of a column lie side by side.
    void mix_across(const double* taps, double* out) const
    {
        const __m128 sum = mixed<Kernel>(of_taps, [&](u32 j) { return taps + j * components; }).rounded();
        Colour::widened(__is_same(Kernel, CatRom) ? clamped(sum) : sum).to(out);
    }
};

template <class Pixel, class X>
void colours_across(TapRow row, const vexlor_filter_params& p, const void* columns, void* values)
{
    alignas(32) double colours[block_room * components];
    auto* const out = static_cast<double*>(values);
    const auto* const column = static_cast<const typename X::Column*>(columns);
    const RowPixels<Pixel> pixels(row);
    const auto unpack = [&](i64 place, u32 number) {
        pixels.for_each(
            place, number, [&](u32 i, u32 pixel) { Fields<Pixel>::unpack(pixel, colours + i * components); },
            [&](u32 i, const void* pair) { Fields<Pixel>::unpack_pair(pair, colours + i * components); });
    };
    // Twice as wide: columns stand on a pixel and half way to the next in turn, all those with the same weights.
    if (__is_same(X, CatRom) && p.xstep == 0x8000) {
        const Weights<X> half_way(X::column(0x8000, 0));
        for (u32 begin = 0; begin < p.count; begin += block_columns) {
            const u32 end = p.count - begin < block_columns ? p.count : begin + block_columns;
            unpack(i64{column[begin].centre} - 1, (end - begin + 1) / 2 + 3);
            const double* taps = colours;
            double* value = out + uintptr_t{begin} * components;
            for (u32 i = begin; i < end; i += 2, taps += components, value += 2 * components) {
                Colour::at(taps + components).to(value);
                half_way.mix_across(taps, value + components);
            }
        }
        return;
    }
    for_columns<X>(column, 0, p.count, unpack, [&](u32 i, u32 index) {
        const double* const taps = colours + index * components;
        if (column[i].is_on_pixel())
            Colour::at(taps + components).to(out + uintptr_t{i} * components);
        else
            Weights<X>(column[i]).mix_across(taps, out + uintptr_t{i} * components);
    });
}

template <class Pixel, class Y>
void colours_down(const void* const* values, const vexlor_filter_params& p, void* out)
{
    const auto at = [&](u32 row, u32 i) {
        return static_cast<const double*>(values[row]) + uintptr_t{i} * components;
    };
    const typename Y::Column row = Y::column(p.ypos, 0);
    if (row.is_on_pixel())
        return pack_row<Pixel>(p.count, out, [&](u32 first) {
            return Fields<Pixel>::cut_off(
                floats_at(first, [&](u32 i) { return Colour::at(at(1, i)).rounded(); }));
        });
    const Weights<Y> weights(row);
    pack_row<Pixel>(p.count, out, [&](u32 first) {
        const Floats sums = floats_at(first, [&](u32 i) {
            return mixed<Y>(weights.of_taps, [&](u32 j) { return at(j, i); }).rounded();
        });
        return Fields<Pixel>::cut_off(__is_same(Y, CatRom) ? clamped(sums) : sums);
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

// Which passes make up a filter.
#include "filter/passes.h"

#include "filter/columns.h"
#include "filter/gauss_catrom.h"
#include "isa/kernels.h"

using namespace vexlor;

namespace {

template <class Pixel, class X, class Y>
u32 find_mean_linear_rows(const FilterPlace& at, const vexlor_filter_params& p, TapRow* rows)
{
    const uintptr_t down = bytes_of(Y::rows_below(p), p.stride);
    const uintptr_t start = address(at.row) + down, end = address(at.row_end) + down;
    rows[0] = {start, end};
    rows[1] = {start, end}; // a row mixed with itself is what is left where there is none below
    const auto reaches_below = [&](u32 i) {
        return has_row_below(taps_at<Pixel, X>(start, end, i64{i} * p.xstep, p).left, p.stride, at.last);
    };

    if (p.count == 0 || end < start)
        return p.count;
    if (!Y::mixes(p))
        return 0;
    if (reaches_below(p.count - 1) && has_row_below(end, p.stride, at.last)) {
        rows[1] = {start + p.stride, end + p.stride};
        return 0;
    }
    // Steps go to the right: the pixels whose lower taps lie before the last one come first.
    u32 apart = 0;
    while (apart < p.count && reaches_below(apart))
        ++apart;
    return apart;
}

template <class X, class Y> void prepare_taps(const vexlor_filter_params& p, void* columns)
{
    i64 position = 0;
    for (u32 i = 0; i < p.count; ++i, position += p.xstep)
        static_cast<typename X::Column*>(columns)[i] =
            X::column(static_cast<u32>(position), centre(position, p.*column_offset<X, Y>));
    if (p.count % 2 != 0) // columns are mixed two by two
        static_cast<typename X::Column*>(columns)[p.count] =
            static_cast<typename X::Column*>(columns)[p.count - 1];
}

// Rows that pixels do not fill evenly are left to the filter.
template <class Pixel, class Y>
u32 find_gauss_catrom_rows(const FilterPlace& place, const vexlor_filter_params& p, TapRow* rows)
{
    find_rows<Pixel, Y>(place, p, rows);
    for (u32 j = 0; j < Y::taps; ++j)
        if (rows[j].end < rows[j].start || (rows[j].end - rows[j].start) % sizeof(typename Pixel::Word) != 0)
            return p.count;
    // On a row, the rows around it weigh nothing.
    if (__is_same(Y, CatRom) && (p.ypos & 0xFFFF) == 0)
        for (u32 j = 0; j < Y::taps; ++j)
            rows[j] = rows[1];
    return 0;
}

struct FilterPasses {
    vexlor_filter_fn filter;
    Passes passes;
};

// across and down are those of the set.
template <class Pixel, class X, class Y>
Passes mean_linear(AcrossFn across, DownFn down, BothFn both = nullptr, BothFn both_once = nullptr,
                   PrepareFn prepare = prepare_columns<Pixel, X>)
{
    return {.taps = 2,
            .value_bytes = sizeof(typename Pixel::Word),
            .column_bytes = sizeof(u32) + (X::weighs ? sizeof(typename Pixel::Word) : 0),
            .prepare = prepare,
            .find_rows = find_mean_linear_rows<Pixel, X, Y>,
            .across = across,
            .down = down,
            .both = both,
            .both_once = both_once};
}

// A value is the four components of a colour, or those that a colour is summed up from.
constexpr u32 sums_bytes = sizeof(float) * 4 * 2;

template <class Pixel, class X, class Y>
Passes gauss_catrom(AcrossFn across, DownFn down, u32 value_bytes, bool of_colours = true)
{
    if (!across)
        return {};
    return {.taps = Y::taps,
            .value_bytes = value_bytes,
            .column_bytes = sizeof(typename X::Column),
            .of_colours = of_colours,
            .prepare = prepare_taps<X, Y>,
            .find_rows = find_gauss_catrom_rows<Pixel, Y>,
            .across = across,
            .down = down};
}

} // namespace

Passes vexlor::passes_of(vexlor_filter_fn filter, const Kernels& set)
{
    // clang-format off
    const FilterPasses all[] = {
        {vexlor_filter_xmean_ymean_8888,     mean_linear<Pixel8888, Mean, Mean>(set.mean_across_8888, set.mean_down_8888, set.halve_8888, set.halve_row_8888)},
        {vexlor_filter_xmean_ylinear_8888,   mean_linear<Pixel8888, Mean, Linear>(set.mean_across_8888, set.linear_down_8888)},
        {vexlor_filter_xlinear_ymean_8888,   mean_linear<Pixel8888, Linear, Mean>(set.linear_across_8888, set.mean_down_8888)},
        {vexlor_filter_xlinear_ylinear_8888, mean_linear<Pixel8888, Linear, Linear>(set.linear_across_for_linear_8888, set.linear_down_of_linear_8888, nullptr, set.double_row_8888, set.prepare_linear_8888)},
        {vexlor_filter_xmean_ymean_565,      mean_linear<Pixel565, Mean, Mean>(set.mean_across_565, set.mean_down_565, set.halve_565)},
        {vexlor_filter_xmean_ylinear_565,    mean_linear<Pixel565, Mean, Linear>(set.mean_across_565, set.linear_down_565)},
        {vexlor_filter_xlinear_ymean_565,    mean_linear<Pixel565, Linear, Mean>(set.linear_across_565, set.mean_down_565)},
        {vexlor_filter_xlinear_ylinear_565,  mean_linear<Pixel565, Linear, Linear>(set.linear_across_565, set.linear_down_565)},
        {vexlor_filter_xgauss_ygauss_8888,   gauss_catrom<Pixel8888, Gauss, Gauss>(set.gauss_across_for_gauss_8888, set.gauss_down_of_gauss_8888, sums_bytes, false)},
        {vexlor_filter_xgauss_ycatrom_8888,  gauss_catrom<Pixel8888, Gauss, CatRom>(set.gauss_across_8888, set.catrom_down_8888, set.colour_bytes)},
        {vexlor_filter_xcatrom_ygauss_8888,  gauss_catrom<Pixel8888, CatRom, Gauss>(set.catrom_across_8888, set.gauss_down_8888, set.colour_bytes)},
        {vexlor_filter_xcatrom_ycatrom_8888, gauss_catrom<Pixel8888, CatRom, CatRom>(set.catrom_across_8888, set.catrom_down_8888, set.colour_bytes)},
        {vexlor_filter_xgauss_ygauss_565,    gauss_catrom<Pixel565, Gauss, Gauss>(set.gauss_across_565, set.gauss_down_565, set.colour_bytes)},
        {vexlor_filter_xgauss_ycatrom_565,   gauss_catrom<Pixel565, Gauss, CatRom>(set.gauss_across_565, set.catrom_down_565, set.colour_bytes)},
        {vexlor_filter_xcatrom_ygauss_565,   gauss_catrom<Pixel565, CatRom, Gauss>(set.catrom_across_565, set.gauss_down_565, set.colour_bytes)},
        {vexlor_filter_xcatrom_ycatrom_565,  gauss_catrom<Pixel565, CatRom, CatRom>(set.catrom_across_565, set.catrom_down_565, set.colour_bytes)},
    };
    // clang-format on
    for (const FilterPasses& entry : all)
        if (entry.filter == filter)
            return entry.passes;
    return {};
}

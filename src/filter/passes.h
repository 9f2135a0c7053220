// Filters in two passes: across every source row once, into a row of values, and down over such rows into pixels. What
// they make is what the filters make; a scale call that knows its rows saves the passes across that rows share.
#pragma once

#include "base.h"

namespace vexlor {

// A source row as taps read it: the addresses of its first pixel and of its last one.
struct TapRow {
    uintptr_t start, end;
    friend bool operator==(const TapRow&, const TapRow&) = default;
};

// The addresses that a filter is called with.
struct FilterPlace {
    const u8 *first, *last, *row, *row_end;
};

constexpr u32 most_taps = 4;
// Rows of values and of column data begin at multiples of this and have room for as many columns, rounded up to it, so
// that passes may work on whole vectors. What is beyond count never reaches a pixel.
constexpr u32 column_block = 64;
constexpr u64 with_whole_blocks(u32 count)
{
    return (u64{count} + column_block - 1) / column_block * column_block;
}

// Once for all rows of a scale call.
using PrepareFn = void (*)(const vexlor_filter_params& params, void* columns);
// Names the source rows, one for each tap, and returns how many pixels from the left come out otherwise: the filter makes
// those anew.
using FindRowsFn = u32 (*)(const FilterPlace& place, const vexlor_filter_params& params, TapRow* rows);
// From a source row into count columns of values.
using AcrossFn = void (*)(TapRow row, const vexlor_filter_params& params, const void* columns, void* values);
// From one row of values per tap into count pixels, and not beyond.
using DownFn = void (*)(const void* const* values, const vexlor_filter_params& params, void* out);

// Both passes at once, from the named source rows into pixels; false where that is no better.
using BothFn = bool (*)(const TapRow* rows, const vexlor_filter_params& params, void* out);

struct Passes {
    u32 taps = 0;            // source rows per destination row; 0 for filters that have no passes
    u32 value_bytes = 0;     // of a column of a row of values
    u32 column_bytes = 0;    // of what prepare leaves for each column
    bool of_colours = false; // a value is one colour; elsewhere it may be spread over those of its neighbours
    PrepareFn prepare = nullptr; // null when there is nothing to prepare
    FindRowsFn find_rows = nullptr;
    AcrossFn across = nullptr;
    DownFn down = nullptr;
    BothFn both = nullptr;      // null for never
    BothFn both_once = nullptr; // likewise, where values would serve one destination row
};

struct Kernels;

// The passes of a filter, for one instruction set.
Passes passes_of(vexlor_filter_fn filter, const Kernels& set);

} // namespace vexlor

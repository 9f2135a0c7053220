// The rows of one filtered scale call. Where source rows stay what they are, each is passed across once and its values
// serve all destination rows that lie near it; elsewhere, or without memory for that, the filter makes row by row.
#pragma once

#include "isa/kernels.h"
#include "scale/buffer.h"

namespace vexlor {
namespace {

// What becomes of source rows: they may change while the call draws, stay, or even serve one destination row at most.
enum class SourceRows { change, stay, serve_once };

class RowFilter {
public:
    RowFilter(vexlor_filter_fn whole, const vexlor_filter_params& params, SourceRows source)
        : filter(whole), passes(source == SourceRows::change ? Passes{} : passes_of(whole, kernels())),
          serve_once(source == SourceRows::serve_once), columns(with_whole_blocks(params.count)),
          memory(passes.taps == 0
                     ? 0
                     : columns * (passes.column_bytes + u64{passes.taps} * passes.value_bytes) + column_block)
    {
        if (memory && passes.prepare)
            passes.prepare(params, column_data());
    }

    void operator()(const FilterPlace& place, vexlor_filter_params& params, void* out)
    {
        u32 apart = params.count;
        if (memory)
            apart = mix(place, params, out);
        if (apart == 0)
            return;
        const u32 count = params.count;
        params.count = apart;
        filter(place.first, place.last, place.row, place.row_end, &params, out);
        params.count = count;
    }

    // For rows that have changed where they are.
    void forget()
    {
        for (TapRow& row : held)
            row = {};
    }

private:
    // Returns how many pixels are left to the filter.
    u32 mix(const FilterPlace& place, const vexlor_filter_params& params, void* out)
    {
        TapRow rows[most_taps];
        const u32 apart = passes.find_rows(place, params, rows);
        if (apart == params.count)
            return apart;
        if (serve_once && passes.both_once && passes.both_once(rows, params, out))
            return apart;
        if (passes.both && passes.both(rows, params, out))
            return apart;
        const void* values[most_taps];
        for (u32 tap = 0; tap < passes.taps; ++tap)
            values[tap] = values_of(rows, tap, params);
        passes.down(values, params, out);
        return apart;
    }

    // There are as many rows of values as taps: one of those that no tap asks for gives way.
    const void* values_of(const TapRow* rows, u32 tap, const vexlor_filter_params& params)
    {
        u32 slot = 0;
        for (u32 i = 0; i < passes.taps; ++i) {
            if (held[i] == rows[tap])
                return values_in(i);
            if (!is_asked_for(held[i], rows))
                slot = i;
        }
        passes.across(rows[tap], params, column_data(), values_in(slot));
        held[slot] = rows[tap];
        return values_in(slot);
    }
    bool is_asked_for(const TapRow& row, const TapRow* rows) const
    {
        for (u32 tap = 0; tap < passes.taps; ++tap)
            if (row == rows[tap])
                return true;
        return false;
    }

    u8* column_data() const
    {
        const auto unaligned = reinterpret_cast<uintptr_t>(memory.at());
        return memory.at((column_block - unaligned % column_block) % column_block);
    }
    u8* values_in(u32 slot) const
    {
        return moved(column_data(), static_cast<uintptr_t>(
                                        columns * (passes.column_bytes + u64{slot} * passes.value_bytes)));
    }

    vexlor_filter_fn filter;
    Passes passes;
    bool serve_once;
    u64 columns;
    Buffer memory;
    TapRow held[most_taps] = {}; // no row of a surface starts at address 0
};

} // namespace
} // namespace vexlor

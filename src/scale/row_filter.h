// The rows of one filtered scale call. Where source rows stay what they are, each is passed across once and its values
// serve all destination rows that lie near it; elsewhere, or without memory for that, the filter makes row by row.
#pragma once

#include "isa/kernels.h"
#include "scale/buffer.h"

#include <string.h>

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
        pitch = 0;
    }
    // Likewise, with the same 32-bit pixels one pitch before a row and one pitch behind it.
    void forget_around(const u8* row, u32 row_pitch)
    {
        forget();
        start = reinterpret_cast<uintptr_t>(row);
        pitch = row_pitch;
    }

private:
    static constexpr u32 pixel = 4; // where rows are shifted

    // Returns how many pixels are left to the filter.
    u32 mix(const FilterPlace& place, const vexlor_filter_params& params, void* out)
    {
        TapRow rows[most_taps];
        const u32 apart = passes.find_rows(place, params, rows);
        if (apart == params.count)
            return apart;
        for (u32 tap = 0; tap < passes.taps && pitch != 0; ++tap)
            if (rows[tap].start < start && start - rows[tap].start <= pitch && rows[tap].end < start + pitch)
                rows[tap] = {rows[tap].start + pitch, rows[tap].end + pitch};
        if (serve_once && passes.both_once && passes.both_once(rows, params, out))
            return apart;
        if (passes.both && passes.both(rows, params, out))
            return apart;
        Shifted shifted;
        const void* values[most_taps];
        for (u32 tap = 0; tap < passes.taps; ++tap)
            values[tap] = values_of(rows, tap, params, shifted);
        if (shifted.slot == most_taps)
            passes.down(values, params, out);
        else
            down_shifted(values, params, shifted, out);
        return apart;
    }

    // A row whose columns from begin to end are those of another slot's row, some columns off.
    struct Shifted {
        u32 slot = most_taps, by_slot = 0, begin = 0, end = 0;
        i64 by = 0;
    };
    [[gnu::noinline]] void down_shifted(const void* const* values, const vexlor_filter_params& params,
                                        const Shifted& shifted, void* out)
    {
        const auto down = [&](u32 begin, u32 end, bool is_shifted) {
            vexlor_filter_params part = params;
            part.count = end - begin;
            const void* taps[most_taps];
            for (u32 tap = 0; tap < passes.taps; ++tap)
                taps[tap] = is_shifted && values[tap] == at(shifted.slot, 0)
                                ? at(shifted.by_slot, begin + shifted.by)
                                : static_cast<const u8*>(values[tap]) + size_t{begin} * passes.value_bytes;
            passes.down(taps, part, static_cast<u8*>(out) + size_t{begin} * pixel);
        };
        down(0, shifted.begin, false);
        down(shifted.begin, shifted.end, true);
        down(shifted.end, params.count, false);
        held[shifted.slot] = {};
    }

    // There are as many rows of values as taps: one of those that no tap asks for gives way.
    const void* values_of(const TapRow* rows, u32 tap, const vexlor_filter_params& params, Shifted& shifted)
    {
        u32 slot = 0;
        for (u32 i = 0; i < passes.taps; ++i) {
            if (held[i] == rows[tap])
                return at(i, 0);
            if (!is_asked_for(held[i], rows))
                slot = i;
        }
        if (pitch == 0 || !shift_neighbour(rows, tap, params, slot, shifted))
            passes.across(rows[tap], params, column_data(), at(slot, 0));
        held[slot] = rows[tap]; // only now: read at once, it would wait for what was found in parts
        return at(slot, 0);
    }
    // Columns of a row from begin to end; only those of colours may begin elsewhere than at 0.
    void across(TapRow row, const vexlor_filter_params& params, u32 begin, u32 end, u32 slot)
    {
        vexlor_filter_params part = params;
        part.count = end - begin;
        passes.across(row, part, moved(column_data(), bytes_of(begin, passes.column_bytes)), at(slot, begin));
    }
    // To twice the width, the values of a row that begins one pixel before or behind another are its values, two columns
    // off, but where taps reach the rows' ends: only there they are made. Passes may write some columns more than they are
    // told to, in whole blocks.
    [[gnu::noinline]] bool shift_neighbour(const TapRow* rows, u32 tap, const vexlor_filter_params& params,
                                           u32 slot, Shifted& shifted)
    {
        constexpr u32 reach = 3, off = 2, block = 16;
        const TapRow row = rows[tap];
        const auto pixels = static_cast<i64>((row.end - row.start) / pixel) + 1;
        if (shifted.slot != most_taps || !passes.of_colours || params.xstep != 0x8000 ||
            pixels < i64{2} * block || params.count < 4 * block)
            return false;
        const auto inside = static_cast<u64>(2 * (pixels - reach));
        const u32 end =
            (inside < params.count ? static_cast<u32>(inside) - off : params.count - off) & ~(block - 1);
        for (u32 i = 0; i < passes.taps; ++i) {
            const bool before = row.start == held[i].start - pixel,
                       behind = row.start == held[i].start + pixel;
            if (i == slot || (!before && !behind) || held[i].end - held[i].start != row.end - row.start ||
                !is_asked_for(held[i], rows))
                continue;
            const u32 to = before ? 2 * off : off, from = before ? off : 2 * off;
            across(row, params, 0, to, slot);
            memcpy(at(slot, to), at(i, from), bytes_of(block - to, passes.value_bytes));
            across(row, params, end, params.count, slot);
            shifted = {slot, i, block, end, i64{from} - to};
            return true;
        }
        return false;
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
    u8* at(u32 slot, i64 column) const
    {
        return moved(column_data(), static_cast<uintptr_t>(
                                        columns * (passes.column_bytes + u64{slot} * passes.value_bytes)) +
                                        bytes_of(column, passes.value_bytes));
    }

    vexlor_filter_fn filter;
    Passes passes;
    bool serve_once;
    u64 columns;
    Buffer memory;
    TapRow held[most_taps] = {}; // no row of a surface starts at address 0
    uintptr_t start = 0;
    u32 pitch = 0; // between the copies of the row at start; 0 without any
};

} // namespace
} // namespace vexlor

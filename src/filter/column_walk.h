// Columns of a row of values in blocks, and the source pixels under their taps.
#pragma once

#include "filter/passes.h"

namespace vexlor {
namespace {

// A row as taps read it: before its begin and behind its end its ends repeat.
template <class Pixel> class RowPixels {
public:
    explicit RowPixels(TapRow row)
        : start(row.start), last(static_cast<i64>((row.end - row.start) / sizeof(Word)))
    {}
    const void* address(i64 place) const
    {
        return reinterpret_cast<const void*>(start + bytes_of(place, sizeof(Word)));
    }
    i64 number() const { return last + 1; }
    bool has(i64 place) const { return place >= 0 && place <= last; }
    u32 at(i64 place) const { return load<Word>(address(place < 0 ? 0 : place > last ? last : place)); }

    // Calls one(number, pixel) for each pixel from a place on, or several(number, address) for as many at once.
    template <u32 AtOnce> void for_each(i64 place, u32 number, auto one, auto several) const
    {
        u32 i = 0;
        for (; i < number && place + i < 0; ++i)
            one(i, load<Word>(address(0)));
        const i64 inside = last + 1 - place;
        const u32 end = inside > number ? number : inside > i ? static_cast<u32>(inside) : i;
        for (; end - i >= AtOnce; i += AtOnce)
            several(i, address(place + i));
        for (; i < end; ++i)
            one(i, load<Word>(address(place + i)));
        for (; i < number; ++i)
            one(i, load<Word>(address(last)));
    }

private:
    using Word = typename Pixel::Word;
    uintptr_t start;
    i64 last;
};

constexpr u32 block_columns = 64;
constexpr u32 block_room = block_columns * 4; // pixels; columns have at most that many taps

// Walks columns from begin to end, two by two: calls unpack(place in the row, number, index) for the pixels under the taps
// of a block of columns, then mix(column, index of its first tap among them, index of the next column's). Pixels are
// unpacked once for a block, or where columns lie far apart for each column. Behind an odd last one is another like it.
template <class Kernel>
inline void for_columns(const typename Kernel::Column* column, u32 begin, u32 count, auto unpack, auto mix)
{
    const auto first_tap = [&](u32 i) { return i64{column[i].centre} - 1; };
    for (; begin < count; begin += block_columns) {
        const u32 end = count - begin < block_columns ? count : begin + block_columns;
        const i64 from = first_tap(begin);
        const i64 span = first_tap(end - 1) - from + Kernel::taps;
        if (span > block_room) {
            for (u32 i = begin; i < end; i += 2) {
                unpack(first_tap(i), Kernel::taps, 0);
                unpack(first_tap(i + 1), Kernel::taps, Kernel::taps);
                mix(i, 0, Kernel::taps);
            }
            continue;
        }
        unpack(from, static_cast<u32>(span), 0);
        for (u32 i = begin; i < end; i += 2)
            mix(i, static_cast<size_t>(first_tap(i) - from), static_cast<size_t>(first_tap(i + 1) - from));
    }
}

} // namespace
} // namespace vexlor

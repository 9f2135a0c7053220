// A row of 32-bit units as a source that is read at every step of a 16.16 position.
#pragma once

#include "row/permute.h"

namespace vexlor {
namespace {

// A place along a row: the unit, and how many 65,536ths of one behind it. Steps go forward; 32-bit processors are spared
// the products of 64 bits.
struct Position {
    ptrdiff_t unit; // what memory holds
    u32 fraction;

    explicit Position(i64 fixed)
        : unit(static_cast<ptrdiff_t>(fixed >> 16)), fraction(static_cast<u32>(fixed & 0xFFFF))
    {}
    void advance(u32 by)
    {
        fraction += by;
        unit += fraction >> 16;
        fraction &= 0xFFFF;
    }
    // The units of a vector's lanes, counted from this one; of so many steps on, when told so.
    template <class Units> Units lanes(u32 step, u32 steps_on = 0) const
    {
        return (lane_numbers<Units>() * step + (steps_on * step + fraction)) >> 16;
    }
};

struct Stepped {
    static constexpr u32 far_from = 1024; // a row of a picture, then: rows come one by one
    const void* row;
    i64 x;
    i32 step;
    ptrdiff_t length; // units up to the last one that is read

    Stepped(const void* from, i64 start, i32 by, u32 count)
        : row(from), x(start), step(by), length(count == 0 ? 0 : place(count - 1).unit + 1)
    {}

    const u8* at(ptrdiff_t index) const { return static_cast<const u8*>(moved(row, bytes_of(index, 4))); }
    Position place(u32 i) const { return Position(x + i64{i} * step); }
    u32 operator[](u32 i) const { return load<u32>(at(place(i).unit)); }
    Stepped from(u32 i, u32 count) const { return {row, x + i64{i} * step, step, count}; }

    // A vector of units from the i-th one on, and one whose first bytes alone are units.
    template <class Units> Units pixels(u32 i) const
    {
        if constexpr (can_permute<Units>) {
            // Whole windows are read where they lie between units that are read anyway.
            constexpr ptrdiff_t count = lane_count<Units>;
            const auto by = static_cast<u32>(step);
            const Position from = place(i);
            const ptrdiff_t first = from.unit;
            const Units index = from.lanes<Units>(by);
            if (by <= 0x10000 && place(0).unit + count <= length) { // at the row's end the last window serves
                const ptrdiff_t window = first + count <= length ? first : length - count;
                return pick(load<Units>(at(window)), index + static_cast<u32>(first - window));
            }
            if (by <= 0x20000 && first + 2 * count <= length)
                return pick_of_two(load<Units>(at(first)), load<Units>(at(first + count)), index);
            if (by < 0x8000000) // no lane's position wraps
                return gather(at(first), index);
            return one_by_one<Units>(*this, i);
        } else {
            return part<sizeof(Units), Units>(i);
        }
    }
    // Backward or very far: apart from the loops of rows, whose registers it would take.
    template <class Units> [[gnu::noinline]] static Units one_by_one(Stepped source, u32 i)
    {
        return source.part<sizeof(Units), Units>(i);
    }
    template <u32 Bytes, class Units> Units part(u32 i) const { return first<Units>(i, Bytes / 4); }
    template <class Units> Units first(u32 i, u32 units) const
    {
#if defined(__AVX512BW__)
        const auto by = static_cast<u32>(step);
        const Position from = place(i);
        if (units != 0 && by <= 0x10000) {
            const auto read = static_cast<u32>(place(i + units - 1).unit - from.unit) + 1;
            return pick(load_first<4, Units>(at(from.unit), read), from.lanes<Units>(by));
        }
        if (by < 0x8000000)
            return gather_first(at(from.unit), from.lanes<Units>(by), units);
#endif
        Units v = {};
        for (u32 k = 0; k < units; ++k)
            v[k] = (*this)[i + k];
        return v;
    }
};

} // namespace
} // namespace vexlor

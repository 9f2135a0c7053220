// A row of 32-bit units as a source that is read at every step of a 16.16 position.
#pragma once

#include "row/permute.h"

namespace vexlor {
namespace {

struct Stepped {
    const void* row;
    i64 x;
    i32 step;
    i64 length; // units up to the last one that is read

    Stepped(const void* from, i32 start, i32 by, u32 count)
        : row(from), x(start), step(by), length(count == 0 ? 0 : ((x + i64{count - 1} * step) >> 16) + 1)
    {}

    const void* unit(i64 index) const { return moved(row, bytes_of(index, 4)); }
    u32 operator[](u32 i) const { return load<u32>(unit((x + i64{i} * step) >> 16)); }

    template <class Pixels> Pixels pixels(u32 i) const
    {
        constexpr u32 lanes_wide = lane_count<Pixels>;
        if constexpr (can_permute<Pixels>) {
            // Whole windows are read where they lie between units that are read anyway.
            const i64 at = x + i64{i} * step;
            const i64 first = at >> 16;
            const auto by = static_cast<u32>(step);
            const Pixels index = (static_cast<u32>(at & 0xFFFF) + lane_numbers<Pixels>() * by) >> 16;
            if (by <= 0x10000 && first + lanes_wide <= length)
                return pick(load<Pixels>(unit(first)), index);
            if (by <= 0x20000 && first + i64{2} * lanes_wide <= length)
                return pick_of_two(load<Pixels>(unit(first)), load<Pixels>(unit(first + lanes_wide)), index);
            if (by < 0x8000000) // no lane's position wraps
                return gather(unit(first), index);
        }
        return part<sizeof(Pixels), Pixels>(i);
    }
    template <u32 Bytes, class Pixels> Pixels part(u32 i) const
    {
        Pixels v = {};
        for (u32 k = 0; k < Bytes / 4; ++k)
            v[k] = (*this)[i + k];
        return v;
    }
};

} // namespace
} // namespace vexlor

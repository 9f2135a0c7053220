// What the box and linear filters know of a scale call's columns before its first row.
#pragma once

#include "filter/mean_linear.h"
#include "filter/passes.h"

namespace vexlor {
namespace {

// The index of each left tap and, for linear ones, the weight of the right tap in every 16-bit lane of a pixel.
template <class Pixel> struct Columns {
    u32* left;
    typename Pixel::Word* weights;
    Columns(const vexlor_filter_params& p, void* memory)
        : left(static_cast<u32*>(memory)),
          weights(reinterpret_cast<typename Pixel::Word*>(left + with_whole_blocks(p.count)))
    {}
};

template <class Pixel, class X> void prepare_columns(const vexlor_filter_params& p, void* memory)
{
    constexpr u32 every_lane = sizeof(typename Pixel::Word) == 4 ? 0x10001 : 1;
    const Columns<Pixel> columns(p, memory);
    i64 position = 0;
    for (u64 i = 0; i < with_whole_blocks(p.count); ++i, position += p.xstep) {
        columns.left[i] = static_cast<u32>(X::first_tap(position, p));
        if constexpr (X::weighs)
            columns.weights[i] =
                static_cast<typename Pixel::Word>(fraction_weight(static_cast<u32>(position)) * every_lane);
    }
}

} // namespace
} // namespace vexlor

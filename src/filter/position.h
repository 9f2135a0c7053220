// 16.16 positions along a row, and the addresses of the pixels at them.
#pragma once

#include "base.h"

namespace vexlor {
namespace {

constexpr i64 whole = ~i64{0xFFFF}; // mask of a position's whole part

// The source pixel at the whole part of the position plus the whole part of an offset: two truncations, not
// one.
constexpr i64 centre(i64 position, i32 offset) { return ((position & whole) + offset) >> 16; }

// Weight of a fraction: bits 8 to 15, 0 to 255, raised to 0, 2..256.
constexpr u32 fraction_weight(u32 position)
{
    const u32 f = position >> 8 & 0xFF;
    return f + (f != 0);
}

inline uintptr_t address(const void* at) { return reinterpret_cast<uintptr_t>(at); }

} // namespace
} // namespace vexlor

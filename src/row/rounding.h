// Where floating point rounds. Values that the contract stores as single precision are rounded here and
// nowhere else; between them everything is double. The x87 unit keeps results wider than their type until
// they pass through memory.
#pragma once

#include "base.h"

namespace vexlor {
namespace {

template <class Real> inline Real through_memory(Real value)
{
#if __FLT_EVAL_METHOD__ != 0
    asm volatile("" : "+m"(value));
#endif
    return value;
}
inline float single(double value) { return through_memory(static_cast<float>(through_memory(value))); }

// A field times its reciprocal: the product is exact in double and rounded once.
inline float unpacked(u32 field, float reciprocal)
{
    return single(static_cast<double>(static_cast<i32>(field)) * static_cast<double>(reciprocal));
}

// The exact product cut off toward zero, as the low half of a 64-bit integer: neither rounded nor clamped, so
// that components outside 0..1 spill into the fields beside theirs. What no 64-bit integer holds is 0.
inline u32 packed(float component, float scale)
{
    const double value = static_cast<double>(component) * static_cast<double>(scale);
    constexpr double limit = 0x1p63;
    return value > -limit && value < limit ? static_cast<u32>(static_cast<i64>(value)) : 0;
}

} // namespace
} // namespace vexlor

// Vectors whose first units alone are read and written, by masks.
#pragma once

#include "row/cover.h"

namespace vexlor {
namespace {

#if defined(__AVX512BW__)

struct Leading {
    static constexpr u32 bytes = 64; // of the register
    using U32 = Vector<bytes>::U32;
    u32 units; // at most those of a vector

    static __mmask16 mask(u32 units)
    {
        return static_cast<__mmask16>(units < 16 ? (1U << units) - 1 : 0xFFFF);
    }
    U32 load(const void* at) const
    {
        return reinterpret_cast<U32>(_mm512_maskz_loadu_epi32(mask(units), at));
    }
    // Two pixels for each unit.
    void store_twice(void* at, Twice<U32> v) const
    {
        _mm512_mask_storeu_epi32(at, mask(2 * units), reinterpret_cast<__m512i>(v.low));
        if (units > 8)
            _mm512_mask_storeu_epi32(moved(at, 64), mask(2 * units - 16), reinterpret_cast<__m512i>(v.high));
    }
};

#endif

} // namespace
} // namespace vexlor

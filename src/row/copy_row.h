// A row copied, with memmove's result.
#pragma once

#include "isa/kernels.h"

#include <string.h>

namespace vexlor {
namespace {

inline void copy_row(void* dst, const void* src, size_t bytes)
{
    // 32-bit C libraries copy short rows in vectors that are half as wide, or narrower; others know best.
    if constexpr (sizeof(void*) == 4) {
        constexpr size_t longest = 1 << 16;
        const uintptr_t ahead = reinterpret_cast<uintptr_t>(dst) - reinterpret_cast<uintptr_t>(src);
        if (bytes % 4 == 0 && bytes <= longest && ahead >= bytes && -ahead >= bytes)
            return kernels().copy_words(dst, src, bytes / 4);
    }
    memmove(dst, src, bytes);
}

} // namespace
} // namespace vexlor

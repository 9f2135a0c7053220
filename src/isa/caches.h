// When drawing pays by going past the processor's caches.
#pragma once

#include "base.h"

namespace vexlor {

// Bytes that the last cache of the processor holds; 0 where the system does not tell.
u64 last_cache();

// Whether a call that writes so many bytes, and mostly reads as many, fills the caches: what it would drive out of them is
// worth more then, and lines that are written whole need not be fetched.
inline bool fills_caches(u64 bytes)
{
    constexpr u64 many = 8'000'000; // measured
    return bytes >= many && bytes > last_cache() / 2;
}

} // namespace vexlor

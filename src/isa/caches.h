// When drawing pays by going past the processor's caches.
#pragma once

#include "base.h"

namespace vexlor {

// Bytes that the last cache of the processor holds; 0 where the system does not tell.
u64 last_cache();

// Whether a call that writes so many bytes leaves nothing in the caches that it finds there again: what it would have to
// give way for is worth more then, and lines that are written whole need not be fetched.
inline bool fills_caches(u64 bytes)
{
    constexpr u64 many = 8'000'000; // measured, where caches hold everything
    return bytes >= many && bytes > last_cache() / 2;
}

} // namespace vexlor

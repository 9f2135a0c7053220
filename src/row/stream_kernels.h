// Copies past the caches, for one instruction set.
#pragma once

#include "row/lanes.h"

#include <string.h>

namespace vexlor {
namespace {

#if defined(__SSE2__)
inline void store_past_caches(void* at, Vector<16>::U32 v)
{
    _mm_stream_si128(static_cast<__m128i*>(at), reinterpret_cast<__m128i>(v));
}
#if defined(__AVX2__)
inline void store_past_caches(void* at, Vector<32>::U32 v)
{
    _mm256_stream_si256(static_cast<__m256i*>(at), reinterpret_cast<__m256i>(v));
}
#endif
#if defined(__AVX512BW__)
inline void store_past_caches(void* at, Vector<64>::U32 v)
{
    _mm512_stream_si512(static_cast<__m512i*>(at), reinterpret_cast<__m512i>(v));
}
#endif
#endif

// Whole lines of the cache only: a line that is stored in part would be fetched after all. The caller puts a fence behind
// its last row.
inline void copy_past_caches(void* dst, const void* src, size_t bytes)
{
    size_t at = 0;
#if defined(__SSE2__)
    using Bits = Vector<vector_bytes>::U32;
    constexpr size_t line = 64;
    const size_t to_line = -reinterpret_cast<uintptr_t>(dst) % line;
    at = to_line < bytes ? to_line : bytes;
    memcpy(dst, src, at);
    for (; bytes - at >= line; at += line)
        for (size_t part = at; part < at + line; part += vector_bytes)
            store_past_caches(moved(dst, part), load<Bits>(moved(src, part)));
#endif
    memcpy(moved(dst, at), moved(src, at), bytes - at);
}

} // namespace
} // namespace vexlor

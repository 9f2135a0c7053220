// Words set and bytes copied, for one instruction set.
#pragma once

#include "row/byte_ops.h"
#include "row/cover.h"

namespace vexlor {
namespace {

// Long runs go by the string instruction: processors write whole lines of the cache by it, without reading them first.
inline void set_words(void* dst, u32 value, size_t words)
{
    constexpr size_t long_run = 2048;
    if (words >= long_run) {
        asm volatile("rep stosl" : "+D"(dst), "+c"(words) : "a"(value) : "memory");
        return;
    }
#if defined(__SSE2__)
    cover<4>(
        static_cast<u32>(words),
        [=](auto vector, u32) { return typename Vector<vector.bytes>::U32{} + value; },
        [=](auto vector, u32 i, auto made) { vector.store(moved(dst, uintptr_t{i} * 4), made); });
#else
    for (size_t i = 0; i < words; ++i)
        store(moved(dst, i * 4), value);
#endif
}

#if defined(__SSE2__)
// To a place that does not overlap the source, with stores that go past the caches.
inline void copy_streaming(void* dst, const void* src, size_t bytes)
{
    constexpr size_t line = 64;
    const size_t to_line = -reinterpret_cast<uintptr_t>(dst) % line;
    const size_t head = to_line < bytes ? to_line : bytes;
    __builtin_memcpy(dst, src, head);
    size_t at = head;
    for (; bytes - at >= line; at += line)
        for (size_t part = at; part < at + line; part += vector_bytes)
            stream(moved(dst, part), load<typename Native<vector_bytes>::Type>(moved(src, part)));
    __builtin_memcpy(moved(dst, at), moved(src, at), bytes - at);
}
#endif

// Rows that overlap no source row, past the caches where the processor has such stores.
inline void copy_rows_streaming(void* dst, u32 dst_stride, const void* src, u32 src_stride, size_t bytes,
                                u32 rows)
{
    for (u32 i = 0; i < rows; ++i, dst = moved(dst, dst_stride), src = moved(src, src_stride)) {
#if defined(__SSE2__)
        copy_streaming(dst, src, bytes);
#else
        __builtin_memcpy(dst, src, bytes);
#endif
    }
#if defined(__SSE2__)
    _mm_sfence();
#endif
}

} // namespace
} // namespace vexlor

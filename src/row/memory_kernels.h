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
        [=](auto vector, u32 i, auto made) { vector.store(moved(dst, uintptr_t{i} * 4), made); }, dst);
#else
    for (size_t i = 0; i < words; ++i)
        store(moved(dst, i * 4), value);
#endif
}

// Forwards: what is copied was often written a moment ago, its end last.
inline void copy_words(void* dst, const void* src, size_t words)
{
#if defined(__SSE2__)
    using Words = Vector<vector_bytes>::U32;
    const auto copy = [=](size_t i) { store(moved(dst, i * 4), load<Words>(moved(src, i * 4))); };
    constexpr size_t units = vector_bytes / 4;
    if (words >= units) {
        for (size_t i = 0; i < words - units; i += units)
            copy(i);
        return copy(words - units);
    }
#endif
    __builtin_memcpy(dst, src, words * 4);
}

// A row of whole units past the caches, where the processor has such stores: lines of the destination through line(vector),
// and what lies before and behind them through edge(dst, src, bytes). The rows overlap nowhere.
inline void stream_units(void* dst, const void* src, size_t bytes, [[maybe_unused]] size_t unit, auto edge,
                         [[maybe_unused]] auto line)
{
#if defined(__SSE2__)
    constexpr size_t line_bytes = 64, ahead = 2048;
    const size_t to_line = -reinterpret_cast<uintptr_t>(dst) % line_bytes;
    const size_t head = to_line < bytes && to_line % unit == 0 ? to_line : bytes;
    edge(dst, src, head);
    size_t at = head;
    for (; bytes - at >= line_bytes; at += line_bytes) {
        __builtin_prefetch(moved(src, at + ahead)); // any address will do
        for (size_t part = at; part < at + line_bytes; part += vector_bytes)
            stream(moved(dst, part), line(load<typename Native<vector_bytes>::Type>(moved(src, part))));
    }
    edge(moved(dst, at), moved(src, at), bytes - at);
#else
    edge(dst, src, bytes);
#endif
}

inline void stream_row(void* dst, const void* src, size_t bytes)
{
    stream_units(
        dst, src, bytes, 1, [](void* to, const void* from, size_t n) { __builtin_memcpy(to, from, n); },
        [](auto vector) { return vector; });
}

inline void end_streaming()
{
#if defined(__SSE2__)
    _mm_sfence();
#endif
}

} // namespace
} // namespace vexlor

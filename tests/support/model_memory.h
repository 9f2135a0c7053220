// Models of the memory routines: the units they move, in their order.
#pragma once

#include "model_blend.h"

namespace model {

constexpr size_t copied(uint32_t n) { return n / 4 * 4 + n % 4 * 2; }

inline void copy_words(uint8_t* d, const uint8_t* s, uint32_t n)
{
    for (uint32_t i = 0; i < n / 4; ++i)
        store(d + 4 * i, load(s + 4 * i));
    for (size_t at = n / 4 * 4; at < copied(n); at += 2)
        store(d + at, load<uint16_t>(s + at));
}

inline void set(uint8_t* d, uint32_t value, uint32_t n)
{
    const auto half = static_cast<uint16_t>(value);
    if (n != 0 && reinterpret_cast<uintptr_t>(d) % 4 != 0) {
        store(d, half);
        d += 2;
        n = n < 2 ? 0 : n - 2;
    }
    for (; n > 3; n -= 4, d += 4)
        store(d, value);
    if (n != 0)
        store(d, half);
}

} // namespace model

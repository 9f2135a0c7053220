// What all targets share: the bytes of a case read as choices, and the one way to say that something is wrong.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

// Zeros once the bytes are used up, so that every case is a whole one.
class Input {
public:
    Input(const uint8_t* data, size_t size) : at_(data), end_(data + size) {}

    bool more() const { return at_ != end_; }
    uint32_t byte() { return more() ? *at_++ : 0; }
    uint32_t word()
    {
        uint32_t value = 0;
        for (uint32_t bit = 0; bit < 32; bit += 8)
            value |= byte() << bit;
        return value;
    }
    uint32_t below(uint32_t n) { return byte() % n; }
    bool one_in(uint32_t n) { return below(n) == n - 1; }
    template <class T, size_t N> T pick(const T (&values)[N]) { return values[below(N)]; }

    // A size, place or distance: small, at an edge of what the arithmetic holds, or anything.
    int32_t extent(uint32_t small)
    {
        constexpr int32_t edges[] = {
            0,       1,       2,          3,          0x7FFE,        0x7FFF,    0x8000, 0x8001, 0xFFFF,
            0x10000, 0x10001, 0x3FFFFFFF, 0x40000000, INT32_MAX - 1, INT32_MAX, -1,     -2,     INT32_MIN};
        const uint32_t kind = byte();
        if (kind < 0xC0)
            return static_cast<int32_t>(kind % (small + 1));
        return kind < 0xF0 ? pick(edges) : static_cast<int32_t>(word());
    }

private:
    const uint8_t *at_, *end_;
};

inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "fuzz: %s\n", what);
    std::abort();
}

} // namespace fuzz

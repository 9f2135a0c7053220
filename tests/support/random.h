// Deterministic numbers for tests: the same on every machine and in every run.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

// How many random cases to look at, of `usual`: fewer in slow builds, more where the environment asks for it.
inline uint64_t rounds_of(uint64_t usual)
{
    const char* const times = std::getenv("VEXLOR_TEST_TIMES");
    return usual * (times != nullptr ? std::strtoull(times, nullptr, 10) : 1) / VEXLOR_TEST_STEP;
}

class Random {
public:
    explicit Random(uint64_t seed) : state_(seed) {}

    uint32_t next()
    {
        uint64_t z = state_ += 0x9E3779B97F4A7C15u;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9u;
        z = (z ^ z >> 27) * 0x94D049BB133111EBu;
        return static_cast<uint32_t>(z >> 32);
    }
    uint32_t below(uint32_t n) { return static_cast<uint32_t>(uint64_t{next()} * n >> 32); }
    int32_t between(int32_t low, int32_t high)
    {
        return low + static_cast<int32_t>(below(static_cast<uint32_t>(high - low) + 1));
    }
    bool one_in(uint32_t n) { return below(n) == 0; }
    template <class T, size_t N> T pick(const T (&values)[N]) { return values[below(N)]; }
    // A factor or alpha from 0 to `most`, often one near an end or the middle.
    uint32_t weight(uint32_t most)
    {
        const uint32_t edges[] = {0, 1, 2, 127, 128, 129, most - 1, most};
        return one_in(2) ? pick(edges) : below(most + 1);
    }
    // Bytes, every second one near an end or the middle of the range, where carries and clamps happen.
    void fill(uint8_t* bytes, size_t size)
    {
        static const std::vector<uint8_t> pool = [] {
            Random random(1);
            std::vector<uint8_t> made(1 << 16);
            const uint8_t edges[] = {0, 1, 2, 0x7F, 0x80, 0x81, 0xFE, 0xFF};
            for (uint8_t& byte : made)
                byte = random.one_in(2) ? random.pick(edges) : static_cast<uint8_t>(random.next());
            return made;
        }();
        while (size != 0) {
            const size_t from = below(1 << 16);
            const size_t part = std::min(size, pool.size() - from);
            std::memcpy(bytes, pool.data() + from, part);
            bytes += part;
            size -= part;
        }
    }

private:
    uint64_t state_;
};

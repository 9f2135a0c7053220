// What the lines of the table are made with: checksums, random bytes, aligned memory.
#pragma once

#include "golden/golden.h"

#include <vexlor.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace golden {

// FNV-1a, 64 bits.
class Checksum {
public:
    void add(const void* data, size_t size)
    {
        const auto* bytes = static_cast<const uint8_t*>(data);
        for (size_t i = 0; i < size; ++i)
            value_ = (value_ ^ bytes[i]) * 0x100000001B3u;
    }
    void add(uint32_t number) { add(&number, sizeof number); }
    std::string text() const;

private:
    uint64_t value_ = 0xCBF29CE484222325u;
};

class Numbers {
public:
    explicit Numbers(uint64_t seed) : state_(seed * 2 + 1) {}
    uint32_t next()
    {
        state_ ^= state_ >> 12;
        state_ ^= state_ << 25;
        state_ ^= state_ >> 27;
        return static_cast<uint32_t>(state_ * 0x2545F4914F6CDD1Du >> 32);
    }
    uint32_t below(uint32_t n) { return static_cast<uint32_t>(uint64_t{next()} * n >> 32); }
    // Bytes, every second one near an end or the middle of the range, where carries and clamps happen.
    void fill(uint8_t* bytes, size_t size)
    {
        constexpr uint8_t edges[] = {0, 1, 0x7F, 0x80, 0x81, 0xFE, 0xFF, 0x10};
        for (size_t i = 0; i < size; ++i) {
            const uint32_t n = next();
            bytes[i] = (n & 0x100) != 0 ? edges[n >> 16 & 7] : static_cast<uint8_t>(n);
        }
    }

private:
    uint64_t state_;
};

// Bytes that start at a multiple of 64, which decides what SIMD routines do.
class Memory {
public:
    explicit Memory(size_t size) : bytes_(size + 64), size_(size) {}
    uint8_t* data() { return bytes_.data() + (64 - reinterpret_cast<uintptr_t>(bytes_.data()) % 64) % 64; }
    size_t size() const { return size_; }
    void assign(const std::vector<uint8_t>& from) { std::memcpy(data(), from.data(), size_); }
    void add_to(Checksum& sum) { sum.add(data(), size_); }

private:
    std::vector<uint8_t> bytes_;
    size_t size_;
};

// Whether switching SIMD on installs the routines of SSE and of SSE2.
bool has_simd();

void add_draws(std::vector<Line>& lines); // the three drawing calls
void add_rows(std::vector<Line>& lines);  // the exported row routines

} // namespace golden

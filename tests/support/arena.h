// Memory that tests draw in: a few pages between two that nobody may touch, and a twin of the same alignment in which
// a model draws the same. Whatever a routine does outside its data faults or shows up as a difference to the twin.
#pragma once

#include "random.h"
#include <gtest/gtest.h>
#include <sys/mman.h>

enum class Side { end, begin };

class Arena {
public:
    static constexpr size_t page = 4096;

    explicit Arena(size_t pages = 1) : size_(pages * page), memory_(map(size_)), twin_(map(size_)) {}
    ~Arena()
    {
        munmap(memory_ - page, size_ + 2 * page);
        munmap(twin_ - page, size_ + 2 * page);
    }
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    // The place of `size` bytes that keep `gap` bytes of distance to the forbidden page on that side.
    uint8_t* place(size_t size, Side side, size_t gap)
    {
        return side == Side::begin ? memory_ + gap : memory_ + size_ - gap - size;
    }
    uint8_t* twin(const uint8_t* at) { return twin_ + (at - memory_); }
    void randomize(Random& random)
    {
        random.fill(memory_, size_);
        std::memcpy(twin_, memory_, size_);
    }
    bool same() const { return std::memcmp(memory_, twin_, size_) == 0; }
    // Where memory and twin part, seen from `data`.
    testing::AssertionResult same_as_twin(const uint8_t* data) const
    {
        const auto [is, expected] = std::mismatch(memory_, memory_ + size_, twin_);
        if (is == memory_ + size_)
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "byte " << is - data << " is " << int{*is} << ", expected " << int{*expected};
    }

private:
    // Shared, so that what a forked child wrote before it died can be looked at.
    static uint8_t* map(size_t size)
    {
        void* all = mmap(nullptr, size + 2 * page, PROT_NONE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (all == MAP_FAILED)
            abort();
        uint8_t* const inner = static_cast<uint8_t*>(all) + page;
        if (mprotect(inner, size, PROT_READ | PROT_WRITE) != 0)
            abort();
        return inner;
    }

    size_t size_;
    uint8_t* memory_;
    uint8_t* twin_;
};

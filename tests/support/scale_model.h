// The model of whole scale calls: the result code, then every byte that the call leaves in the surfaces' memory. It
// has the row cache's memory too, because what an earlier scale left there shows in later ones.
#pragma once

#include "filter_model.h"
#include "model_draw.h"
#include <optional>

namespace model {

struct Rectangles {
    int32_t sx, sy, sw, sh, dx, dy, dw, dh;
};

// Bytes that are zero until written, at any place, also before 0.
class Memory {
public:
    uint8_t& operator[](int64_t place)
    {
        std::vector<uint8_t>& half = place < 0 ? before_ : behind_;
        const auto i = static_cast<size_t>(place < 0 ? -place - 1 : place);
        if (i >= half.size())
            half.resize(i * 2 + 64);
        return half[i];
    }
    void copy(int64_t to, int64_t from, int64_t bytes)
    {
        for (int64_t i = 0; i < bytes; ++i)
            (*this)[to + i] = uint8_t{(*this)[from + i]};
    }

private:
    std::vector<uint8_t> before_, behind_;
};

// Rows of 32-bit pixels, converted from rows of a YUV surface. Its buffer is at place 0.
class RowCache {
public:
    using Convert = std::function<void(int64_t from, int64_t to)>;

    void reset() { first_source_.reset(); }
    // Holds the band of rows that starts at place `first` of the source; returns the pitch.
    int64_t update(const Convert& convert, int64_t row_bytes, int64_t stride, int64_t rows, int64_t first);
    Memory memory;

private:
    int64_t pitch_ = 0, capacity_ = 0, last_row_ = 0;
    std::optional<int64_t> first_source_;
};

enum class Driver { opaque_nofilter, opaque_filter, blend_nofilter, blend_filter };

// Stands for a context's cache; the state and the slots are those of the context that comes with each call.
class Scaler {
public:
    uint32_t scale(const vexlor_context* ctx, const Surface* src, const Surface* dst, const Rectangles& r);
    uint32_t drive(Driver driver, const vexlor_context& ctx, const Surface& src, const Surface& dst,
                   const Rectangles& r);
    // What scale returns before it gets to a driver, or the driver.
    static uint32_t refusal(const vexlor_context* ctx, const Surface* src, const Surface* dst,
                            const Rectangles& r, Driver& driver);

private:
    void filter_yuv(const vexlor_context& ctx, const Surface& src, const Surface& dst, const Rectangles& r);

    RowCache cache_;
};

} // namespace model

// Destination rows of a scale call that nothing is blended with.
#pragma once

#include "isa/caches.h"
#include "isa/kernels.h"
#include "scale/buffer.h"
#include "scale/scale.h"

namespace vexlor {
namespace {

inline bool drawing_fills_caches(const Scale& s)
{
    return fills_caches(static_cast<u64>(i64{s.to.w} * s.to.h) * bytes_per_pixel(s.dst.format));
}

// Rows go to their place past the caches when told so, and when there is memory to make them in; else they are made there.
class PlainRows {
public:
    PlainRows(size_t row_bytes, bool past_caches)
        : set(kernels()), bytes(row_bytes), spare(past_caches ? row_bytes : 0)
    {}
    PlainRows(const PlainRows&) = delete;
    PlainRows& operator=(const PlainRows&) = delete;
    ~PlainRows()
    {
        if (spare)
            set.end_streaming();
    }
    // Calls make(place of the row).
    void operator()(u8* dst, auto make) const
    {
        if (!spare)
            return make(dst);
        make(spare.at());
        set.stream_row(dst, spare.at(), bytes);
    }
    // The row that was made last once more, or the caller's way for rows that are not streamed.
    void repeat(u8* dst, auto otherwise) const
    {
        if (!spare)
            return otherwise();
        set.stream_row(dst, spare.at(), bytes);
    }
    bool are_streamed() const { return static_cast<bool>(spare); }

private:
    const Kernels& set;
    size_t bytes;
    Buffer spare;
};

} // namespace
} // namespace vexlor

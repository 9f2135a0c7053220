// Filters called directly: with random geometry that no surface need have, and with rows of a few pixels.
#pragma once

#include "arena.h"
#include "filter_model.h"

struct FilterCase {
    vexlor_filter_fn filter;
    model::Kernel x, y;
    int size; // bytes of a pixel
};

// The rectangle begins in the middle of the memory; its end, the row and the row's end are a surface's, or near them.
// Cases whose model reads outside of the memory do not count.
inline void check_filter(const FilterCase& c, int cases)
{
    Random random(51);
    Arena memory(4), out;
    const auto size = static_cast<uint32_t>(c.size);
    int compared = 0;
    for (int i = 0; i < cases; ++i) {
        const uint32_t width = 1 + random.below(12), rows = 1 + random.below(6), count = random.below(20);
        const uint32_t stride = width * size + (random.one_in(2) ? 0 : random.below(40));
        const int32_t step = random.one_in(2) ? random.between(1, 0xFFFF) : random.between(0x10000, 0x48000);
        const auto or_any = [&](int32_t usual) {
            return random.one_in(4) ? random.between(0, 0x30000) : usual;
        };
        const auto near = [&](uint32_t offset) {
            return static_cast<int32_t>(offset) + (random.one_in(4) ? random.between(-3, 3) * c.size : 0);
        };
        const int32_t at = 2 * random.between(2000, 2200),
                      row = at + static_cast<int32_t>(random.below(rows) * stride);
        const vexlor_filter_params params{random.below(8) << 16 |
                                              (random.one_in(4) ? 0 : random.below(0x10000)),
                                          step,
                                          or_any(step >> 1),
                                          or_any(0),
                                          random.between(0, 3),
                                          random.between(0, 3),
                                          or_any((step >> 1) + 4096),
                                          count,
                                          stride};
        const model::Filter call{c.x,
                                 c.y,
                                 c.size,
                                 at + (random.one_in(6) ? near(0) : 0),
                                 at + near((rows - 1) * stride + (width - 1) * size),
                                 row,
                                 std::max(row, row + near((width - 1) * size)),
                                 params};
        memory.randomize(random);
        out.randomize(random);
        uint8_t* const base = memory.place(0, Side::begin, 0);
        uint8_t* const row_out = out.place(count * size, Side::end, 0);
        bool inside = true;
        const model::Bytes bytes = [&](int64_t place) {
            inside = inside && place >= 0 && place < 4 * int64_t{Arena::page};
            return inside ? memory.twin(base)[place] : uint8_t{0};
        };
        for (uint32_t j = 0; j < count; ++j) {
            const uint32_t pixel = model::resample(call, bytes, j);
            std::memcpy(out.twin(row_out) + j * size, &pixel, size);
        }
        if (!inside)
            continue;
        ++compared;
        c.filter(base + call.first, base + call.last, base + call.row, base + call.row_end, &params, row_out);
        ASSERT_TRUE(out.same_as_twin(row_out))
            << "case " << i << ": stride " << stride << ", first " << call.first - at << ", last "
            << call.last - at << ", row " << row - at << ", row_end " << call.row_end - at << ", ypos "
            << params.ypos << ", xstep " << step << ", xhalf " << params.xhalf << ", xcentre "
            << params.xcentre << ", rows " << params.yhalf_rows << ' ' << params.ycentre_rows << ", count "
            << count;
        ASSERT_TRUE(memory.same());
    }
    EXPECT_GT(compared, cases * 9 / 10);
}

template <size_t N> void check_filters(const FilterCase (&filters)[N], int cases)
{
    for (const FilterCase& c : filters) {
        SCOPED_TRACE(testing::Message() << "filter " << &c - filters);
        check_filter(c, cases);
    }
}

// Filters the pixels as rows of `stride` pixels; the first row comes out. `last` and `row_end` are places in them.
template <class Pixel>
std::vector<Pixel> filtered(vexlor_filter_fn filter, const std::vector<Pixel>& pixels, size_t stride,
                            size_t last, size_t row_end, uint32_t count, int32_t step, uint32_t ypos = 0)
{
    const vexlor_filter_params params{
        ypos, step, 0, 0, 0, 0, 0, count, static_cast<uint32_t>(stride * sizeof(Pixel))};
    const auto at = [&](size_t i) { return reinterpret_cast<const uint8_t*>(pixels.data() + i); };
    std::vector<Pixel> out(count);
    filter(at(0), at(last), at(0), at(row_end), &params, out.data());
    return out;
}

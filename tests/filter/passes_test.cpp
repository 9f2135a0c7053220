// The passes of every filter and every instruction set that this processor has, held against the filters: equal pixels,
// and nothing touched outside the rectangle and the row.
#include "isa/kernels.h"
#include "support/arena.h"

using vexlor::FilterPlace;
using vexlor::Kernels;
using vexlor::Passes;
using vexlor::Set;
using vexlor::TapRow;

namespace {

struct Length {
    int32_t from, to;
};

// Twice as long, half as long and equal lengths come often.
Length any_length(Random& random, uint32_t most)
{
    const int32_t n = 1 + static_cast<int32_t>(random.below(most));
    const Length usual[] = {{n, 2 * n}, {2 * n, n}, {n, n}, {n, n + 1}, {n + 1, n}};
    return random.one_in(2) ? random.pick(usual) : Length{n, 1 + static_cast<int32_t>(random.below(most))};
}

vexlor_filter_params params_of(Length x, Length y, uint32_t stride)
{
    const int32_t xstep = (x.from << 16) / x.to, ystep = (y.from << 16) / y.to;
    return {0,
            xstep,
            xstep >> 1,
            ystep >> 1,
            ystep >> 17,
            ((ystep >> 1) + 4096) >> 16,
            (xstep >> 1) + 4096,
            static_cast<uint32_t>(x.to),
            stride};
}

// One source row after the other through the passes, as a scale call does but for what it keeps.
class PassedRows {
public:
    PassedRows(const Passes& p, const vexlor_filter_params& params)
        : passes(p), columns(static_cast<size_t>(vexlor::with_whole_blocks(params.count))),
          prepared(columns * p.column_bytes + 1)
    {
        for (auto& row : values)
            row.resize(columns * passes.value_bytes);
        if (passes.prepare)
            passes.prepare(params, prepared.data());
    }

    // Returns how many pixels from the left are left to the filter.
    uint32_t into(void* out, const FilterPlace& place, const vexlor_filter_params& params, bool once)
    {
        TapRow rows[vexlor::most_taps];
        const uint32_t apart = passes.find_rows(place, params, rows);
        if (apart == params.count || (once && passes.both_once && passes.both_once(rows, params, out)) ||
            (passes.both && passes.both(rows, params, out)))
            return apart;
        const void* taps[vexlor::most_taps];
        for (uint32_t i = 0; i < passes.taps; ++i) {
            passes.across(rows[i], params, prepared.data(), values[i].data());
            taps[i] = values[i].data();
        }
        passes.down(taps, params, out);
        return apart;
    }

private:
    const Passes& passes;
    size_t columns;
    std::vector<uint8_t> prepared, values[vexlor::most_taps];
};

// Returns whether the filter has passes.
bool compare(const Kernels& set, Random& random, Arena& memory, Arena& out)
{
    const uint32_t size = random.one_in(2) ? 2 : 4;
    const Length x = any_length(random, random.one_in(4) ? 200 : 30), y = any_length(random, 8);
    vexlor_context context{};
    context.filter = random.one_in(3) ? VEXLOR_FILTER_MEAN : VEXLOR_FILTER_CATROM;
    const auto choose = size == 2 ? vexlor_scale_choose_filter_565 : vexlor_scale_choose_filter_8888;
    const vexlor_filter_fn filter = choose(&context, x.from, y.from, x.to, y.to);
    const Passes passes = passes_of(filter, set);
    if (passes.taps == 0 || y.from == 1) // taps around a single row reach beyond it
        return passes.taps != 0;

    const uint32_t row_bytes = static_cast<uint32_t>(x.from) * size;
    const uint32_t stride = row_bytes + (random.one_in(2) ? 0 : random.below(9) * size);
    const uint32_t bytes = static_cast<uint32_t>(y.from - 1) * stride + row_bytes;
    const uint8_t* const first = memory.place(bytes, random.one_in(2) ? Side::begin : Side::end, 0);
    const uint8_t* last = first + bytes - size;
    if (random.one_in(4)) // than which no tap reaches further
        last -= random.below(std::min(static_cast<uint32_t>(x.from), 4u)) * size;
    memory.randomize(random);
    if (random.one_in(3)) // few values: sums fall on the limits between two results
        for (uint32_t i = 0, mask = random.next() | 0x07070707; i < bytes; ++i)
            const_cast<uint8_t*>(first)[i] &= static_cast<uint8_t>(~mask >> i % 4 * 8);

    vexlor_filter_params params = params_of(x, y, stride);
    if (random.one_in(8))
        params.xstep = random.one_in(2) ? 0 : params.xstep - 1;
    PassedRows passed(passes, params);
    for (int32_t i = 0; i < y.to; ++i) {
        const int64_t position = int64_t{i} * ((y.from << 16) / y.to);
        params.ypos = static_cast<uint32_t>(position);
        if (random.one_in(8)) // the rows that are read stay
            params.ypos = (params.ypos & ~0xFFFFu) | random.pick({0u, 1u, 0xFFFFu});
        const uint8_t* const row = first + (position >> 16) * stride;
        // Of YUV, the last pixel is not the row's end.
        const uint32_t behind = x.from > 1 && random.one_in(3) ? size : 0;
        const FilterPlace place{first, last, row, row + row_bytes - size - behind};
        uint8_t* const pixels = out.place(params.count * size, Side::end, 0);
        out.randomize(random);
        filter(place.first, place.last, place.row, place.row_end, &params, out.twin(pixels));
        const uint32_t apart = passed.into(pixels, place, params, random.one_in(2));
        std::memcpy(pixels, out.twin(pixels), apart * size);
        EXPECT_TRUE(out.same_as_twin(pixels))
            << "filter " << context.filter << ", " << size << " bytes, " << x.from << 'x' << y.from << " to "
            << x.to << 'x' << y.to << ", stride " << stride << ", row " << i;
        if (testing::Test::HasFailure())
            return false;
    }
    return true;
}

} // namespace

TEST(Passes, EqualTheFiltersInEverySet)
{
    Arena memory(8), out;
    for (const auto& [set, name] : {std::pair{Set::baseline, "baseline"}, std::pair{Set::avx2, "avx2"},
                                    std::pair{Set::avx512, "avx512"}}) {
        SCOPED_TRACE(name);
        const Kernels* const kernels = vexlor::kernels_of(set);
        if (kernels == nullptr)
            continue;
        Random random(61);
        int passed = 0;
        for (int i = 0; i < 4000 / VEXLOR_TEST_STEP; ++i) {
            passed += compare(*kernels, random, memory, out);
            if (HasFailure())
                return;
        }
        // All but those of a 32-bit system without vectors of doubles, which has none for Catmull-Rom.
        EXPECT_GT(passed, 1000 / VEXLOR_TEST_STEP);
    }
}

// What the tables of instruction sets hold besides the exported rows, in every set that this processor has.
#include "isa/kernels.h"
#include "support/arena.h"

using vexlor::Kernels;
using vexlor::Set;

namespace {

constexpr Set sets[] = {Set::baseline, Set::avx2, Set::avx512};

} // namespace

TEST(Kernels, SetAndCopyMemory)
{
    constexpr uint32_t value = 0x89ABCDEF;
    Arena src(4), dst(4);
    Random random(7);
    for (const Set set : sets) {
        const Kernels* const kernels = vexlor::kernels_of(set);
        for (uint32_t n = 0; kernels != nullptr && n < 2100; n += n < 140 ? 1 : 53)
            for (const Side side : {Side::begin, Side::end}) {
                uint8_t* const words = dst.place(n * 4, side, random.below(17));
                dst.randomize(random);
                kernels->set_words(words, value, n);
                for (uint32_t i = 0; i < n; ++i)
                    std::memcpy(dst.twin(words) + i * 4, &value, 4);
                ASSERT_TRUE(dst.same_as_twin(words)) << static_cast<int>(set) << ", " << n << " words";

                const uint32_t rows = random.below(4), src_stride = n + random.below(9),
                               dst_stride = n + random.below(9);
                const uint8_t* const s = src.place(rows * src_stride, side, random.below(70));
                uint8_t* const d = dst.place(rows * dst_stride, side, random.below(70));
                src.randomize(random);
                dst.randomize(random);
                kernels->copy_rows_streaming(d, dst_stride, s, src_stride, n, rows);
                for (uint32_t i = 0; i < rows; ++i)
                    std::memcpy(dst.twin(d) + i * dst_stride, s + i * src_stride, n);
                ASSERT_TRUE(dst.same_as_twin(d)) << static_cast<int>(set) << ", " << rows << " rows of " << n;
            }
    }
}

TEST(Kernels, PickNearest565Pixels)
{
    const int32_t steps[] = {0, 1, 0x8000, 0xBADA, 0x10000, 0x1FFFF, 0x20000, 0x20001, -0x10000};
    Arena src, dst;
    Random random(8);
    for (const Set set : sets) {
        const Kernels* const kernels = vexlor::kernels_of(set);
        for (uint32_t n = 1; kernels != nullptr && n < 140; ++n)
            for (int32_t step : steps) {
                const int64_t way = int64_t{n - 1} * step;
                const int32_t x = random.between(0, 0xFFFF) - (way < 0 ? static_cast<int32_t>(way) : 0);
                const auto pixels = static_cast<size_t>(((way < 0 ? x : x + way) >> 16) + 1);
                const uint8_t* const s = src.place(pixels * 2, Side::end, 0);
                uint8_t* const d =
                    dst.place(n * 2, random.one_in(2) ? Side::begin : Side::end, 2 * random.below(9));
                src.randomize(random);
                dst.randomize(random);
                kernels->scale_opaque_nofilt_565(s, d, VEXLOR_FMT_565, n, x, step);
                for (uint32_t i = 0; i < n; ++i)
                    std::memcpy(dst.twin(d) + 2 * i, s + ((x + int64_t{i} * step) >> 16) * 2, 2);
                ASSERT_TRUE(dst.same_as_twin(d))
                    << static_cast<int>(set) << ", " << n << " pixels at " << step;
            }
    }
}

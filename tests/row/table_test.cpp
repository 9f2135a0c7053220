// Every exported row routine, in every instruction set: the bytes of its model, and nothing outside of the row's memory.
#include "support/rows.h"

// Up to 130 pixels, in exact memory at a page's begin or end, at every alignment of either side. Slow builds leave out
// some of them.
TEST(Rows, EqualTheModelInExactMemory)
{
    constexpr uint32_t negative[] = {0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFF5, 0x80000000};
    Random random(2);
    Arena src, dst;
    for (const vexlor::Kernels* const set : all_sets())
        for (const AnyRow& row : row_table::all) {
            if (set != nullptr && !row.in_every_set)
                continue;
            int drawn = 0, called = 0;
            const uint32_t last = row.most + (row.signed_count ? 4 : 0);
            for (uint32_t count = 0; count <= last; count += VEXLOR_TEST_STEP == 1 || count < 40 ? 1 : 3)
                for (uint32_t i = 0; i < 96; i += VEXLOR_TEST_STEP == 1 && count <= 40 ? 1 : 5) {
                    const uint32_t n = count <= row.most ? count : negative[count - row.most - 1];
                    const RowArgs args = random_args(random);
                    const uint32_t gap = i / 6;
                    const size_t gaps[3][2] = {{gap, 0}, {0, gap}, {gap, gap * 7 % 16}};
                    const auto [s_gap, d_gap] = gaps[i % 3];
                    const Side side = i % 2 == 0 ? Side::end : Side::begin;
                    uint8_t* const s = src.place(row.src_bytes(n, args), side, s_gap);
                    uint8_t* const d = dst.place(row.dst_bytes(n, args), side, d_gap);
                    src.randomize(random);
                    dst.randomize(random);
                    ++called;
                    if (!row.model(src.twin(s), dst.twin(d), n, args))
                        continue;
                    ++drawn;
                    row.routine(set, s, d, n, args);
                    ASSERT_TRUE(src.same() && dst.same_as_twin(d))
                        << "row " << &row - row_table::all << ", set " << set << ", count " << n << ", place "
                        << i << ", g " << args.g << ", shift " << args.shift << ", step " << args.step;
                }
            EXPECT_GT(drawn, called / 32) << "row " << &row - row_table::all;
        }
}

// Rows that are longer than the blocks that some of them go in.
TEST(Rows, EqualTheModelWhenLong)
{
    Random random(3);
    std::vector<uint8_t> src, drawn, expected;
    const auto fill = [&](std::vector<uint8_t>& bytes, size_t size) {
        bytes.resize(size);
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<uint8_t>(random.below(256)); });
    };
    for (const vexlor::Kernels* const set : all_sets())
        for (const AnyRow& row : row_table::all)
            for (int i = 0; i < 24 && (set == nullptr || row.in_every_set); ++i) {
                const RowArgs args = random_args(random);
                const uint32_t n = random.below(5000);
                fill(src, row.src_bytes(n, args));
                fill(drawn, row.dst_bytes(n, args));
                expected = drawn;
                if (!row.model(src.data(), expected.data(), n, args))
                    continue;
                row.routine(set, src.data(), drawn.data(), n, args);
                ASSERT_EQ(drawn, expected) << "row " << &row - row_table::all << ", set " << set << ", count "
                                           << n << ", step " << args.step << ", x " << args.x;
            }
}

// The table names every member of the tables of instruction sets.
TEST(Rows, AreAllInTheTable)
{
    const auto kernels = std::count_if(std::begin(row_table::all), std::end(row_table::all),
                                       [](const AnyRow& row) { return row.in_every_set; });
    constexpr size_t passes = 26; // which have a test of their own, and the size of their values
    constexpr size_t ends = 1;    // of streaming, which rows past the caches call
    constexpr size_t rows = 1;    // several at once, which scale calls draw
    EXPECT_EQ(static_cast<size_t>(kernels) + passes + ends + rows, sizeof(vexlor::Kernels) / sizeof(void*));
}

TEST(Kernels, ServeFromTheBestSet)
{
    EXPECT_NE(vexlor::kernels_of(vexlor::Set::baseline), nullptr);
    const vexlor::Kernels* const best = all_sets().back();
    EXPECT_EQ(&vexlor::kernels(), best);
    // No entry is left empty, but in 32 bits without vectors.
    if (sizeof(void*) == 4 && best == &vexlor::baseline_kernels)
        return;
    const void* entries[sizeof *best / sizeof(void*)];
    std::memcpy(entries, best, sizeof entries);
    EXPECT_EQ(std::count(std::begin(entries), std::end(entries), nullptr), 0);
}

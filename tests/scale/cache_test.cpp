// What the row cache holds after steps that are known beforehand. The fuzz target compares all else with a model.
#include "support/cache_model.h"
#include <gtest/gtest.h>

namespace {

using namespace model::cache;

struct Cache : testing::Test {
    ~Cache() override { vexlor_cache_fini(cache); }
    Cache() { vexlor_cache_init(&cache); }
    // One update on a picture of 32-bit units whose bytes are their row's number; 16 bytes a row.
    void band(int row, int32_t rows)
    {
        in_unit = 4, out_unit = 8, unit_pixels = 2;
        for (int i = 0; i < 64; ++i)
            std::memset(numbered + 16 * i, i, 16);
        uint8_t *first = numbered + 16 * row, *last = first + 12;
        calls.clear();
        EXPECT_EQ(vexlor_cache_update(cache, convert, copy, 4, 8, 8, 16, rows, &first, &last), 32);
        EXPECT_EQ(first, cache->buffer);
        EXPECT_EQ(last, cache->buffer + 24);
    }
    int held(int row) const { return cache->buffer[row * cache->pitch]; }

    vexlor_cache* cache = nullptr;
    uint8_t numbered[64 * 16];
};

} // namespace

TEST_F(Cache, ConvertsWhatABandAddsAndLagsBehindShortBands)
{
    band(0, 4);
    EXPECT_EQ(calls.size(), 4u);
    vexlor_cache_reset(cache);
    constexpr int walk[][2] = {{0, 0}, {2, 2}, {3, 3}, {4, 1}, {5, 2}, {6, 3}};
    for (const auto& [row, expected] : walk) {
        band(row, 1);
        EXPECT_EQ(held(0), expected) << row;
        band(row, 1);
        EXPECT_TRUE(calls.empty());
    }
}

TEST_F(Cache, KeepsItsRowsWhenTheBandMovesUp)
{
    for (int row : {2, 1, 2})
        band(row, 2);
    EXPECT_TRUE(held(0) == 3 && held(1) == 3);
}

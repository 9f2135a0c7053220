// The row cache against a model that works on memory without limits: contents, calls, and what it promises around the
// band.
#include "support/arena.h"
#include "support/cache_model.h"
#include <gtest/gtest.h>
#include <tuple>

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

TEST_F(Cache, EqualsTheModelInRandomWalks)
{
    const std::tuple<int32_t, int32_t, int32_t> kinds[] = {{4, 8, 2}, {4, 8, 2}, {4, 4, 1},
                                                           {2, 4, 1}, {2, 7, 1}, {1, 3, 1}};
    constexpr int64_t stride = 150, height = 60;
    Random random(17);
    std::vector<uint8_t> picture(stride * (height + 2));
    int moved = 0, converted = 0;
    for (int walk = 0; walk < 4000 / VEXLOR_TEST_STEP; ++walk) {
        vexlor_cache_fini(cache);
        vexlor_cache_init(&cache);
        Model model;
        std::tie(in_unit, out_unit, unit_pixels) = random.pick(kinds);
        random.fill(picture.data(), picture.size());
        int32_t left = 0, span_units = random.between(1, 20), rows = random.between(1, 5);
        int64_t row = random.between(0, 20);
        for (int step = 0; step < 12; ++step) {
            SCOPED_TRACE(testing::Message() << "walk " << walk << ", step " << step);
            if (random.one_in(6)) {
                vexlor_cache_reset(cache);
                model.first_source = 0;
            }
            if (random.one_in(5))
                rows = random.between(1, 6);
            if (random.one_in(8)) {
                left = random.between(0, 5);
                span_units = random.between(1, 20);
            }
            row = std::clamp<int64_t>(
                row + random.between(random.one_in(8) ? -6 : 0, random.one_in(8) ? 9 : 2), 0, height - rows);
            // Mostly to the picture's right edge, as scaling does.
            const int32_t count =
                unit_pixels * (random.one_in(3) ? span_units : 30 - left) - random.between(0, 1);
            uint8_t* const source = picture.data() + row * stride + left * in_unit;
            uint8_t *first = source, *last = source + (span_units - 1) * in_unit;
            calls.clear();
            const int32_t pitch = vexlor_cache_update(cache, convert, copy, in_unit, out_unit, count,
                                                      static_cast<uint32_t>(stride), rows, &first, &last);
            const int64_t span = int64_t{span_units} * in_unit;
            ASSERT_EQ(pitch, model.update(source, span, count, stride, rows));
            ASSERT_EQ(cache->pitch, pitch);
            ASSERT_EQ(cache->capacity, model.capacity);
            ASSERT_EQ(cache->last_row - cache->buffer, model.last_row);
            ASSERT_EQ(cache->first_source, source);
            ASSERT_EQ(number(cache->buffer) % 16, 0u);
            ASSERT_EQ(first, cache->buffer);
            ASSERT_EQ(last - first, out_unit / in_unit * span - out_unit);
            for (Call& call : calls) {
                const bool is_convert = call[0] != 0;
                call[1] -= number(cache->buffer);
                call[2] -= is_convert ? 0 : number(cache->buffer);
                ++(is_convert ? converted : moved);
            }
            ASSERT_EQ(calls, model.calls);
            const int64_t end = pitch * (rows + model.reaches_end(rows));
            for (int64_t at = -pitch; at < end; ++at)
                ASSERT_EQ(cache->buffer[at], *model.at(at)) << "at " << at << " of rows of " << pitch;
        }
    }
    EXPECT_GT(moved, 8000 / VEXLOR_TEST_STEP);
    EXPECT_GT(converted, 8000 / VEXLOR_TEST_STEP);
}

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

TEST_F(Cache, IsEmptyAfterArgumentsWithoutMeaning)
{
    constexpr int32_t bad[][4] = {{0, 8, 2, 12},        {-4, 8, 2, 12},     {4, 0, 2, 12}, {4, -8, 2, 12},
                                  {4, 8, 0, 12},        {4, 8, -1, 12},     {4, 3, 2, 12}, {4, 8, 2, -16},
                                  {4, 8, 2, INT32_MAX}, {4, 16, 2, 1 << 29}};
    for (const auto& [in, out, rows, length] : bad) {
        band(3, 2);
        uint8_t *first = numbered, *last = reinterpret_cast<uint8_t*>(reinterpret_cast<uintptr_t>(numbered) +
                                                                      static_cast<uintptr_t>(length));
        calls.clear();
        EXPECT_EQ(vexlor_cache_update(cache, convert, copy, in, out, 8, 16, rows, &first, &last), 0);
        EXPECT_TRUE(first == nullptr && last == nullptr && calls.empty() && cache->first_source == nullptr);
        band(3, 2); // the same band is converted anew
        EXPECT_TRUE(calls.size() == 2 && held(0) == 3 && held(1) == 4);
    }
}

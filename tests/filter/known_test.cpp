// Filtered pixels that are known beforehand, from filters called directly.
#include "vexlor.h"
#include <gtest/gtest.h>
#include <vector>

namespace {

using Pixels = std::vector<uint32_t>;

// Rows of `stride` pixels; `last` and `row_end` are places in them.
struct Known {
    vexlor_filter_fn filter;
    Pixels pixels;
    uint32_t stride, last, row_end;
    int32_t step;
    uint32_t ypos;
    Pixels expected;
};

template <class Word> Pixels filtered(const Known& c)
{
    const std::vector<Word> row(c.pixels.begin(), c.pixels.end());
    std::vector<Word> out(c.expected.size());
    const vexlor_filter_params params{
        c.ypos, c.step, 0, 0, 0, 0, 0, static_cast<uint32_t>(out.size()), c.stride * uint32_t{sizeof(Word)}};
    const auto at = [&](size_t i) { return reinterpret_cast<const uint8_t*>(row.data() + i); };
    c.filter(at(0), at(c.last), at(0), at(c.row_end), &params, out.data());
    return {out.begin(), out.end()};
}

} // namespace

TEST(Filters, GiveTheKnownPixels)
{
    const auto box = vexlor_filter_xmean_ymean_8888, box_565 = vexlor_filter_xmean_ymean_565,
               wide = vexlor_filter_xmean_ylinear_8888, wide_565 = vexlor_filter_xmean_ylinear_565,
               linear = vexlor_filter_xlinear_ylinear_8888, linear_565 = vexlor_filter_xlinear_ylinear_565,
               catrom = vexlor_filter_xcatrom_ygauss_8888;
    const Known words[] = {
        // Means darken: two pixels without a row below them.
        {wide, {0x01010101, 0x01010101}, 2, 1, 1, 0x20000, 0, {0}},
        {wide, {0xFF000000, 0x00FF00FF}, 2, 1, 1, 0x20000, 0, {0x7E7E007E}},
        // The 32-bit box alone asks for the lower right pixel on its own.
        {box, {0, ~0u, 0, 0}, 2, 2, 1, 0x10000, 0, {0x7D7D7D7D}},
        {wide, {0, ~0u, 0, 0}, 2, 2, 1, 0x10000, 0x8000, {0x3E3E3E3E}},
        // Beyond the row's end the right tap stays and the left one does not: the slope turns round.
        {linear, {0, 100, 200}, 3, 2, 1, 0x8000, 0, {0, 50, 100, 100, 200, 149}},
        // A stride of 0 makes one row stand for all.
        {catrom, {10, 200, 30, 90}, 0, 3, 3, 0x14000, 0x4000, {10, 177}},
        {catrom, {10, 200, 30, 90}, 0, 3, 3, 0x18000, 0x8000, {10, 123}},
        {catrom, {0, 255, 0, 0}, 0, 3, 3, 0x1C000, 0xC000, {0, 57}},
        {catrom, {0, 255, 0, 0}, 0, 3, 3, 0x1FFFF, 0xFFFF, {0, 0}},
    };
    const Known halves[] = {
        {wide_565, {0x0821, 0x0821}, 2, 1, 1, 0x20000, 0, {0}},
        {wide_565, {0xF800, 0xF800}, 2, 1, 1, 0x20000, 0, {0xE800}},
        {wide_565, {0x1234, 0xABCD}, 2, 1, 1, 0x20000, 0, {0x52CF}},
        {box_565, {0, 0xFFFF, 0, 0}, 2, 2, 1, 0x10000, 0, {0x31C6}},
        // Weights overshoot.
        {linear_565, {0, 0, 0x0800}, 3, 2, 2, 0x17F00, 0, {0, 0x2000}},
        {linear_565, {0, 0, 0xFFFF}, 3, 2, 2, 0x1FF00, 0, {0, 0xC798}},
        {linear_565, {0, 0, 0xFFFF}, 3, 2, 2, 0x100FF, 0, {0, 0}},
    };
    for (const Known& c : words)
        EXPECT_EQ(filtered<uint32_t>(c), c.expected) << &c - words;
    for (const Known& c : halves)
        EXPECT_EQ(filtered<uint16_t>(c), c.expected) << &c - halves;
}

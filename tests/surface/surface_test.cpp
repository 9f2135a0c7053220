// Descriptors: their life, equality and clipping.
#include "vexlor.h"
#include <gtest/gtest.h>

TEST(Surface, IsCreatedEmptyAndHoldsItsFields)
{
    vexlor_surface_desc* desc = nullptr;
    ASSERT_EQ(vexlor_surface_desc_create(&desc), desc);
    ASSERT_NE(desc, nullptr);
    EXPECT_TRUE(desc->width == 0 && desc->height == 0 && desc->stride == 0 && desc->pixels == nullptr &&
                desc->format == 0);
    uint8_t pixel = 0;
    vexlor_surface_desc_init(desc, -1, 2, 0xFFFFFFF0, &pixel, 7);
    EXPECT_TRUE(desc->width == -1 && desc->height == 2 && desc->stride == 0xFFFFFFF0 &&
                desc->pixels == &pixel && desc->format == 7);
    vexlor_surface_desc_destroy(desc);
    vexlor_surface_desc_destroy(nullptr);
}

TEST(Surface, EqualsOnlyWithAllFieldsEqual)
{
    uint8_t pixels[2] = {};
    const vexlor_surface_desc a{8, 4, 32, pixels, VEXLOR_FMT_X8R8G8B8};
    const vexlor_surface_desc others[] = {{9, 4, 32, pixels, a.format},
                                          {8, 5, 32, pixels, a.format},
                                          {8, 4, 33, pixels, a.format},
                                          {8, 4, 32, pixels + 1, a.format},
                                          {8, 4, 32, pixels, VEXLOR_FMT_A8R8G8B8}};
    const vexlor_surface_desc twin = a;
    EXPECT_EQ(vexlor_surface_equals(&a, &a), 1);
    EXPECT_EQ(vexlor_surface_equals(&a, &twin), 1);
    for (const auto& other : others)
        EXPECT_EQ(vexlor_surface_equals(&a, &other), 0) << &other - others;
}

TEST(Surface, ClipsEachAxisAndMayLeaveNothing)
{
    constexpr int32_t most = INT32_MAX;
    constexpr struct {
        int32_t at, length, clipped_at, clipped_length;
    } cases[] = {{-5, 10, 0, 5}, {95, 10, 95, 5},   {120, 10, 120, -20}, {0, 100, 0, 100},  {-7, 200, 0, 100},
                 {10, 0, 10, 0}, {-20, 10, 0, -10}, {99, 1, 99, 1},      {most, 2, most, 2}};
    for (const auto& c : cases) {
        const vexlor_surface_desc wide{100, 7, 0, nullptr, 0}, high{7, 100, 0, nullptr, 0};
        int32_t x = c.at, y = 2, w = c.length, h = 3;
        vexlor_surface_clip(&wide, &x, &y, &w, &h);
        EXPECT_TRUE(x == c.clipped_at && y == 2 && w == c.clipped_length && h == 3)
            << c.at << ' ' << c.length;
        x = 2, y = c.at, w = 3, h = c.length;
        vexlor_surface_clip(&high, &x, &y, &w, &h);
        EXPECT_TRUE(x == 2 && y == c.clipped_at && w == 3 && h == c.clipped_length)
            << c.at << ' ' << c.length;
    }
}

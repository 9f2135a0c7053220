// Pictures that fill the caches, from 8 MB on here, take ways of their own; long runs of one colour do, too.
#include "support/random.h"
#include "support/recorder.h"
#include <gtest/gtest.h>

namespace {

constexpr uint8_t untouched = 0xA5;

struct Picture {
    Picture(uint32_t f, int32_t w, int32_t h, uint32_t gap)
        : row(static_cast<uint32_t>(w) * ((f & 0x3F) / 8)), stride(row + gap),
          bytes(size_t{stride} * static_cast<uint32_t>(h), untouched), desc{w, h, stride, bytes.data(), f}
    {}
    // Rows of which every eighth is the same.
    void draw(Random& random)
    {
        random.fill(bytes.data(), 8 * stride);
        for (size_t at = 8 * stride; at < bytes.size(); ++at)
            bytes[at] = bytes[at - 8 * stride];
    }
    const uint8_t* at(int32_t y) const { return bytes.data() + stride * static_cast<size_t>(y); }
    // Whether the rows and the gap behind them are as they should be.
    bool shows(int32_t y, const uint8_t* should) const
    {
        const uint8_t* const gap = at(y) + row;
        return std::memcmp(at(y), should, row) == 0 &&
               std::count(gap, at(y) + stride, untouched) == at(y) + stride - gap;
    }

    uint32_t row, stride;
    std::vector<uint8_t> bytes;
    vexlor_surface_desc desc;
};

} // namespace

TEST(LargePictures, AreFilledAndCopied)
{
    Random random(91);
    const Context ctx = make_context();
    for (const uint32_t gap : {0u, 36u}) {
        Picture src(VEXLOR_FMT_X8R8G8B8, 3000, 1500, gap / 2), dst(VEXLOR_FMT_X8R8G8B8, 3000, 1500, gap);
        src.draw(random);
        EXPECT_EQ(vexlor_copy(ctx.get(), &src.desc, &dst.desc, 0, 0, 0, 0, 3000, 1500), 0u);
        for (int32_t y = 0; y < 1500; ++y)
            ASSERT_TRUE(dst.shows(y, src.at(y))) << y;
        ctx->alpha_dst_op = VEXLOR_ALPHA_DST_ONE;
        EXPECT_EQ(vexlor_copy(ctx.get(), &src.desc, &dst.desc, 0, 0, 0, 0, 3000, 1500), 0u);
        ctx->alpha_dst_op = VEXLOR_ALPHA_DST_BLEND;
        for (int32_t y = 0; y < 1500; ++y) {
            std::vector<uint8_t> opaque(src.at(y), src.at(y) + src.row);
            for (size_t alpha = 0; alpha < opaque.size(); alpha += 4)
                opaque[alpha] = 255;
            ASSERT_TRUE(dst.shows(y, opaque.data())) << y;
        }
        const std::vector<uint32_t> colour(3000, ctx->color = 0x12345678);
        EXPECT_EQ(vexlor_fill(ctx.get(), &dst.desc, 0, 0, 3000, 1500), 0u);
        for (int32_t y = 0; y < 1500; ++y)
            ASSERT_TRUE(dst.shows(y, reinterpret_cast<const uint8_t*>(colour.data()))) << y;
    }
}

// Into memory at every place within a line of the cache.
TEST(LargePictures, AreConverted)
{
    constexpr int32_t width = 2100, height = 2010, few = 8;
    Random random(93);
    const Context ctx = make_context();
    for (const uint32_t from : {VEXLOR_FMT_Y8V8Y8U8, VEXLOR_FMT_U8Y8V8Y8}) {
        Picture src(from, width, height, 0);
        src.draw(random);
        for (const uint32_t to : {VEXLOR_FMT_X8R8G8B8, VEXLOR_FMT_B8G8R8X8}) {
            Picture small(to, width, few, 4), large(to, width, height, 0);
            EXPECT_EQ(vexlor_copy(ctx.get(), &src.desc, &small.desc, 0, 0, 0, 0, width, few), 0u);
            large.bytes.resize(large.bytes.size() + 64);
            uint8_t* const first = large.bytes.data();
            for (size_t off = 0; off < 64; off += random.pick({4u, 8u, 24u})) {
                large.desc.pixels = first + off;
                std::fill(large.bytes.begin(), large.bytes.end(), untouched);
                EXPECT_EQ(vexlor_copy(ctx.get(), &src.desc, &large.desc, 0, 0, 0, 0, width, height), 0u);
                for (int32_t y = 0; y < height; ++y)
                    ASSERT_EQ(std::memcmp(large.at(y) + off, small.at(y % few), large.row), 0)
                        << off << ' ' << y;
                const uint8_t *const end = large.at(height) + off, *const behind = first + large.bytes.size();
                EXPECT_EQ(std::count(first, first + off, untouched), static_cast<ptrdiff_t>(off));
                EXPECT_EQ(std::count(end, behind, untouched), 64 - static_cast<ptrdiff_t>(off));
            }
        }
    }
}

// Rows repeat in the source, so a picture of few rows shows what all of them should be.
TEST(LargePictures, AreScaledAsSmallOnes)
{
    constexpr uint32_t kinds[][2] = {{VEXLOR_FMT_565, VEXLOR_FMT_565},
                                     {VEXLOR_FMT_A8R8G8B8, VEXLOR_FMT_A8R8G8B8},
                                     {VEXLOR_FMT_U8Y8V8Y8, VEXLOR_FMT_U8Y8V8Y8},
                                     {VEXLOR_FMT_U8Y8V8Y8, VEXLOR_FMT_B8G8R8A8}};
    struct Ratio {
        int32_t up, down; // rows of the destination for rows of the source
        int32_t source_width;
    };
    constexpr Ratio ratios[] = {{1, 1, 1000}, {2, 1, 1000}, {1, 2, 4500}};
    constexpr int32_t height = 2100, few = 48;
    Random random(92);
    for (const uint32_t filter : {VEXLOR_FILTER_NONE, VEXLOR_FILTER_MEAN, VEXLOR_FILTER_CATROM})
        for (const auto& [from, to] : kinds)
            for (const Ratio& r : ratios) {
                if (filter == VEXLOR_FILTER_CATROM &&
                    (from != VEXLOR_FMT_A8R8G8B8 || r.up != 1 || r.down != 1))
                    continue; // takes long
                const auto rows = [&r](int32_t h) { return h / r.up * r.down; };
                const bool odd = from != to && filter == VEXLOR_FILTER_NONE; // the last pixel is not drawn
                const int32_t width = 8008 / static_cast<int32_t>((to & 0x3F) / 8) + odd;
                Picture src(from, r.source_width, rows(height), 0), small(to, width, few, 0),
                    large(to, width, height, 20);
                src.draw(random);
                const auto scale_into = [&, filter](const Picture& dst, int32_t h) {
                    const Context ctx = make_context(); // caches of rows remember other pictures
                    vexlor_context_set_filter(ctx.get(), filter);
                    return vexlor_scale(ctx.get(), &src.desc, &dst.desc, 0, 0, r.source_width, rows(h), 0, 0,
                                        width, h);
                };
                EXPECT_EQ(scale_into(small, few), 0u);
                EXPECT_EQ(scale_into(large, height), 0u);
                // Rows near the ends are mixed otherwise.
                const int32_t period = 8 * r.up / r.down;
                for (int32_t y = 0; y < height - 4; ++y)
                    ASSERT_TRUE(large.shows(y, small.at(y < period ? y : period + y % period)))
                        << filter << ' ' << from << ' ' << r.up << ' ' << r.down << ' ' << y;
            }
}

// A caller's passthrough leaves rows of 32-bit pixels in a YUV destination, twice as long as its own.
TEST(LargePictures, TakeACallersRowsWhole)
{
    constexpr int32_t width = 4000, height = 2010, few = 24;
    Random random(94);
    const Context ctx = make_context();
    vexlor_context_set_filter(ctx.get(), VEXLOR_FILTER_MEAN);
    ctx->conversions[0] = vexlor_1d_passthrough;
    Picture src(VEXLOR_FMT_Y8V8Y8U8, 1000, height, 0);
    Picture small(VEXLOR_FMT_Y8V8Y8U8, width, few, 2 * width),
        large(small.desc.format, width, height, 2 * width);
    src.draw(random);
    EXPECT_EQ(vexlor_scale(ctx.get(), &src.desc, &small.desc, 0, 0, 1000, few, 0, 0, width, few), 0u);
    EXPECT_EQ(vexlor_scale(ctx.get(), &src.desc, &large.desc, 0, 0, 1000, height, 0, 0, width, height), 0u);
    for (int32_t y = 0; y < height - 1; ++y)
        ASSERT_EQ(std::memcmp(large.at(y), small.at(y % 8), large.stride), 0) << y;
}

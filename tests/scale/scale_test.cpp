// Scale calls whose results are known beforehand: small pictures, result codes, slots.
#include "support/recorder.h"
#include "support/scale_model.h"
#include <gtest/gtest.h>

namespace {

using Words = std::vector<uint32_t>;
constexpr uint32_t rgb = VEXLOR_FMT_X8R8G8B8, argb = VEXLOR_FMT_A8R8G8B8, bgrx = VEXLOR_FMT_B8G8R8X8,
                   r565 = VEXLOR_FMT_565, yuv = VEXLOR_FMT_Y8V8Y8U8, uyvy = VEXLOR_FMT_U8Y8V8Y8;

// Pixels of one size in rows without gaps.
struct Picture {
    Picture(uint32_t f, int32_t w, int32_t h, const Words& pixels) : format(f), width(w), height(h)
    {
        for (uint32_t pixel : pixels)
            for (uint32_t bit = 0; bit < (format & 0x3F); bit += 8)
                bytes.push_back(static_cast<uint8_t>(pixel >> bit));
    }
    size_t bpp() const { return (format & 0x3F) / 8; }
    vexlor_surface_desc desc()
    {
        return {width, height, static_cast<uint32_t>(bpp()) * static_cast<uint32_t>(width), bytes.data(),
                format};
    }
    Words pixels() const
    {
        Words all(bytes.size() / bpp());
        for (size_t i = bytes.size(); i-- > 0;)
            all[i / bpp()] = all[i / bpp()] << 8 | bytes[i];
        return all;
    }

    uint32_t format;
    int32_t width, height;
    std::vector<uint8_t> bytes;
};

// 32-bit pixels of four equal bytes.
Words greys(Words values)
{
    for (uint32_t& v : values)
        v *= 0x01010101;
    return values;
}
// Y8V8Y8U8 pixels without colour, rows of four.
Picture luma(const Words& rows)
{
    Words pixels;
    for (uint32_t y : rows)
        pixels.insert(pixels.end(), 4, y | 0x8000);
    return {yuv, 4, static_cast<int32_t>(rows.size()), pixels};
}

uint32_t scale(vexlor_context& ctx, Picture& src, Picture& dst, const model::Rectangles& r)
{
    const vexlor_surface_desc s = src.desc(), d = dst.desc();
    return vexlor_scale(&ctx, &s, &d, r.sx, r.sy, r.sw, r.sh, r.dx, r.dy, r.dw, r.dh);
}

// The whole picture in a new one of dw x dh pixels.
Words scaled(vexlor_context& ctx, uint32_t filter, Picture src, int32_t dw, int32_t dh, uint32_t format = rgb)
{
    Picture dst(format, dw, dh, Words(static_cast<size_t>(dw * dh)));
    vexlor_context_set_filter(&ctx, filter);
    EXPECT_EQ(scale(ctx, src, dst, {0, 0, src.width, src.height, 0, 0, dw, dh}), 0u);
    return dst.pixels();
}
Words scaled(uint32_t filter, const Picture& src, int32_t dw, int32_t dh, uint32_t format = rgb)
{
    return scaled(*make_context(), filter, src, dw, dh, format);
}

} // namespace

TEST(Scale, BoxAndLinear)
{
    EXPECT_EQ(scaled(1, {rgb, 3, 1, greys({0, 0, 255})}, 2, 1), greys({0x00, 0x7D}));
    EXPECT_EQ(scaled(1, {rgb, 2, 2, greys({255, 255, 255, 255})}, 1, 1), greys({0xFB}));
    EXPECT_EQ(scaled(1, {rgb, 2, 2, greys({0, 255, 100, 7})}, 4, 4),
              greys({0x00, 0x80, 0xFF, 0xFF, 0x32, 0x5A, 0x82, 0x82, 0x64, 0x35, 7, 7, 0x64, 0x35, 7, 7}));
    EXPECT_EQ(scaled(1, {r565, 2, 2, {0x0000, 0xFFFF, 0xF800, 0x07E0}}, 4, 4, r565),
              (Words{0x0000, 0xEFDC, 0xFFFF, 0xFFFF, 0xE000, 0x87CB, 0x0FE2, 0x0FE2, 0xF800, 0x17C0, 0x07E0,
                     0x07E0, 0xF800, 0x17C0, 0x07E0, 0x07E0}));
}

TEST(Scale, GaussAndCatrom)
{
    const Picture column(rgb, 1, 4, greys({0, 128, 255, 64}));
    EXPECT_EQ(scaled(2, column, 1, 4), greys({0x7F, 0x7F, 0xAF, 0x6F}));
    EXPECT_EQ(scaled(2, column, 1, 8), greys({0x80, 0xD3, 0x80, 0xD3, 0xFF, 0xA7, 0x40, 0x34}));
    const Picture nine(rgb, 3, 3, greys({138, 51, 190, 41, 184, 165, 176, 186, 114}));
    EXPECT_EQ(scaled(2, nine, 3, 3)[4], 0x8B8B8B8B);
    EXPECT_EQ(scaled(2, {rgb, 2, 1, {~0u, ~0u}}, 6, 1), greys({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE}));

    Words slope;
    for (uint32_t i = 0; i < 15; ++i)
        slope.push_back(16 * i);
    EXPECT_EQ(scaled(2, {rgb, 15, 1, greys(slope)}, 8, 1),
              greys({0x10, 0x20, 0x40, 0x60, 0x80, 0xA0, 0xC0, 0xDC}));
    EXPECT_EQ(scaled(2, {rgb, 15, 1, greys(slope)}, 8, 2),
              greys({0x04, 0x10, 0x30, 0x50, 0x70, 0x90, 0xB0, 0xD0, 0x04, 0x10, 0x30, 0x50, 0x70, 0x90, 0xB0,
                     0xD0}));

    // The row above the rectangle is its first one, across the whole stride.
    Picture src(rgb, 4, 4, greys({5, 8, 11, 14, 21, 24, 27, 30, 37, 40, 43, 46, 53, 56, 59, 62}));
    Picture dst(rgb, 2, 3, Words(6));
    const Context ctx = make_context();
    vexlor_context_set_filter(ctx.get(), 2);
    ASSERT_EQ(scale(*ctx, src, dst, {1, 1, 2, 3, 0, 0, 2, 3}), 0u);
    EXPECT_EQ(dst.pixels(), greys({0x28, 0x2A, 0x28, 0x2A, 0x32, 0x34}));
}

TEST(Scale, FilteredYuv)
{
    const auto with_x = [](Words values, uint32_t x) {
        for (uint32_t& v : values)
            v = v * 0x01010100 | x;
        return values;
    };
    const Picture row(yuv, 4, 1, {0x8010, 0x8042, 0x8074, 0x80A6});
    EXPECT_EQ(scaled(1, row, 4, 1), with_x({0x1B, 0x55, 0x72, 0x72}, 0xFB));
    EXPECT_EQ(scaled(1, row, 8, 1), with_x({0x00, 0x1C, 0x39, 0x56, 0x73, 0x73, 0xAD, 0x8F}, 0xFD));
    EXPECT_EQ(scaled(2, row, 4, 1), with_x({0x1D, 0x48, 0x6C, 0x6D}, 0xFF));
    // Enlarged rows are not mixed.
    Words eight;
    for (uint32_t grey : {0x00u, 0x17u, 0x2Fu, 0x46u})
        eight.insert(eight.end(), 16, grey);
    EXPECT_EQ(scaled(1, luma({16, 36, 56, 76}), 8, 8), with_x(eight, 0xFF));
}

TEST(Scale, FindsRowsOfAnEarlierScaleInTheCache)
{
    const Context ctx = make_context();
    const auto column = [&](int32_t height) {
        const Words pixels = scaled(*ctx, 1, luma({16, 36, 56, 76, 96, 116, 136, 156}), 4, height);
        Words result;
        for (size_t i = 0; i < pixels.size(); i += 4) {
            EXPECT_TRUE(pixels[i + 1] == pixels[i + 2] && pixels[i + 2] == pixels[i + 3]);
            result.push_back(pixels[i + 1] >> 24);
        }
        return result;
    };
    EXPECT_EQ(column(8), (Words{0x00, 0x15, 0x2D, 0x44, 0x5B, 0x72, 0x88, 0x9F}));
    EXPECT_EQ(column(4), (Words{0x15, 0x44, 0x72, 0x9F}));
    EXPECT_EQ(column(8), (Words{0x00, 0x9F, 0x15, 0x2D, 0x44, 0x5B, 0x72, 0x88}));
}

TEST(Scale, RepeatsRows)
{
    const Context ctx = make_context();
    Picture one(r565, 1, 1, {0xABCD});
    Picture wide(r565, 4, 2, {0x1111, 0x2222, 0x3333, 0x4444, 0x5555, 0x6666, 0x7777, 0x8888});
    ASSERT_EQ(scale(*ctx, one, wide, {0, 0, 1, 1, 0, 0, 1, 2}), 0u);
    EXPECT_EQ(wide.pixels(), (Words{0xABCD, 0x2222, 0x3333, 0x4444, 0xABCD, 0x2222, 0x7777, 0x8888}));
    // Beyond the row's end the copy goes on in the next row, with what it has just written.
    Picture two(r565, 2, 1, {0xA, 0xB}), narrow(r565, 2, 3, {1, 2, 3, 4, 5, 6});
    ASSERT_EQ(scale(*ctx, two, narrow, {0, 0, 2, 1, 0, 0, 2, 2}), 0u);
    EXPECT_EQ(narrow.pixels(), (Words{0xA, 0xB, 0xA, 0xB, 0xA, 0xB}));
    // YUV leaves an odd last column alone, but for the copy.
    Picture pair(yuv, 2, 1, {0x80EB, 0x8010}), odd(rgb, 3, 2, greys({0x11, 0x11, 0x11, 0x22, 0x22, 0x22}));
    ASSERT_EQ(scale(*ctx, pair, odd, {0, 0, 2, 1, 0, 0, 3, 2}), 0u);
    EXPECT_EQ(odd.pixels(), (Words{0xFFFFFFFF, 0x000000FF, 0x11111111, 0xFFFFFFFF, 0x000000FF, 0x11111111}));
    EXPECT_EQ(scaled(0, {yuv, 4, 1, {0x80EB, 0x80EB, 0x8010, 0x8010}}, 6, 1),
              (Words{0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0x000000FF, 0x000000FF}));
}

// Long rows may be made anew where that is faster, but not past a caller's routine, nor where a row runs on into the next
// or into the source.
TEST(Scale, RepeatsLongRows)
{
    constexpr int32_t width = 1000;
    const Context ctx = make_context();
    Picture source(argb, width, 2, Words(size_t{2} * width));
    for (size_t i = 0; i < source.bytes.size(); ++i)
        source.bytes[i] = static_cast<uint8_t>(i * 7 >> 2);
    const Words expected = source.pixels();
    Picture target(argb, width, 6, Words(size_t{6} * width));
    ASSERT_EQ(scale(*ctx, source, target, {0, 0, width, 2, 0, 0, width, 6}), 0u);
    const Words drawn = target.pixels();
    for (size_t i = 0; i < drawn.size(); ++i)
        ASSERT_EQ(drawn[i], expected[i / width / 3 * width + i % width]) << i;

    // Two descriptors of one memory: the second row is written over the source.
    Picture memory(argb, width, 2, expected);
    const vexlor_surface_desc whole = memory.desc();
    const vexlor_surface_desc below = {width, 1, whole.stride, whole.pixels + whole.stride, argb};
    ASSERT_EQ(vexlor_scale(ctx.get(), &below, &whole, 0, 0, width / 2, 1, 0, 0, width, 2), 0u);
    const Words twice = memory.pixels();
    for (size_t i = 0; i < twice.size(); ++i)
        ASSERT_EQ(twice[i], expected[width + i % width / 2]) << i;

    // Rows that begin 4 pixels apart: each copy runs forwards through what it has just written.
    const vexlor_surface_desc from = source.desc();
    Picture run(argb, width + 4, 1, Words(width + 4));
    const vexlor_surface_desc steps = {width, 2, 16, run.bytes.data(), argb};
    ASSERT_EQ(vexlor_scale(ctx.get(), &from, &steps, 0, 0, width, 1, 0, 0, width, 2), 0u);
    EXPECT_EQ(run.pixels()[width + 3], expected[3]);

    ctx->memcpy_stream = [](void* dst, const void*, uint32_t bytes) { std::memset(dst, 0xAB, bytes); };
    ASSERT_EQ(scale(*ctx, source, target, {0, 0, width, 1, 0, 0, width, 2}), 0u);
    const Words marked = target.pixels();
    EXPECT_EQ(marked[0], expected[0]);
    EXPECT_EQ(std::count(marked.begin() + width, marked.begin() + 2 * width, 0xABABABAB), width);
}

// A missing routine draws nothing, not even the part of the picture that needs none; what uses no slot is drawn.
TEST(Scale, DrawsNothingThroughEmptySlots)
{
    constexpr struct {
        uint32_t from, to, filter;
        int pair; // of conversions; -1: the memory slots, -2: the cache
        bool drawn;
    } cases[] = {
        {rgb, argb, 0, -1, false}, {r565, r565, 0, -1, false}, {yuv, yuv, 0, -1, false},
        {yuv, rgb, 0, -1, false},  {yuv, rgb, 1, -1, false},   {uyvy, uyvy, 2, -1, false},
        {rgb, argb, 1, -1, true},  {r565, r565, 2, -1, true},  {yuv, yuv, 1, 0, false},
        {uyvy, uyvy, 1, 1, false}, {yuv, argb, 2, 2, false},   {yuv, bgrx, 1, 3, false},
        {uyvy, rgb, 1, 4, false},  {uyvy, bgrx, 1, 5, false},  {yuv, rgb, 1, -2, false},
    };
    for (const auto& c : cases)
        for (int entry : {2 * c.pair, 2 * c.pair + 1}) {
            const Context ctx = make_context();
            vexlor_cache* const cache = ctx->cache;
            if (c.pair == -2)
                ctx->cache = nullptr;
            else if (c.pair == -1)
                ctx->memcpy = ctx->memcpy_stream = nullptr;
            else
                ctx->conversions[entry] = nullptr;
            ctx->filter = c.filter;
            Picture src(c.from, 4, 2, Words(8, 0x12345678)), dst(c.to, 4, 5, Words(20, 0x9ABCDEF0));
            const Picture before = dst;
            EXPECT_EQ(scale(*ctx, src, dst, {0, 0, 4, 2, 0, 0, 4, 5}), 0u);
            EXPECT_EQ(dst.bytes != before.bytes, c.drawn) << "row " << &c - cases;
            ctx->cache = cache;
        }
}

// Whatever stands in the table converts rows into the cache and out of it.
TEST(Scale, ConvertsThroughTheTable)
{
    const Context ctx = make_context();
    ctx->filter = 1;
    ctx->conversions[8] = recorder(ctx->conversions[8]);
    ctx->conversions[9] = recorder(ctx->conversions[9]);
    Picture src(uyvy, 6, 4, Words(24)), dst(argb, 5, 4, Words(20));
    calls.clear();
    ASSERT_EQ(scale(*ctx, src, dst, {2, 1, 4, 2, 1, 0, 3, 2}), 0u);
    ASSERT_EQ(calls.size(), 4u);
    for (size_t row = 0; row < 2; ++row) {
        const Call &in = calls[2 * row], &out = calls[2 * row + 1];
        EXPECT_EQ(in[0], number(src.bytes.data() + 12 * (row + 1) + 4));
        EXPECT_EQ(in[2], 6u);
        EXPECT_EQ(out[1], number(dst.bytes.data() + 20 * row + 4));
        EXPECT_EQ(out[2], 3u);
    }
}

// The checked C++ layer against the C calls that it stands on. Built twice, with exceptions and without.
#include "vexlor_parallel.hpp"

#include <array>
#include <gtest/gtest.h>
#include <random>

using namespace vexlor;

namespace {

std::mt19937 numbers(7);
int32_t between(int32_t low, int32_t high)
{
    return low + static_cast<int32_t>(numbers() % static_cast<uint32_t>(high - low + 1));
}

// Random bytes, with room around them that views leave alone.
struct Canvas {
    int32_t w, h;
    std::vector<uint32_t> words;

    Canvas(int32_t width, int32_t height) : w(width), h(height), words(static_cast<size_t>(w * h))
    {
        for (uint32_t& word : words)
            word = static_cast<uint32_t>(numbers());
    }
    surface_view view(format f, rect r)
    {
        const size_t skipped =
            static_cast<size_t>(r.y * w) * 4 + static_cast<size_t>(r.x) * bytes_per_pixel(f);
        return *surface_view::make(std::as_writable_bytes(std::span(words)).subspan(skipped), r.w, r.h, f,
                                   static_cast<size_t>(w) * 4);
    }
    surface_view view(format f) { return view(f, {0, 0, w, h}); }
};

struct Setting {
    filter scaling;
    alpha_op op;
    alpha_source source;
    alpha_mode mode;
    alpha_destination destination;
    bool simd;
};

context prepared(const Setting& s)
{
    context made = *context::make();
    made.set_simd(s.simd).set_filter(s.scaling).set_alpha_op(s.op).set_alpha_source(s.source);
    made.set_alpha_mode(s.mode)
        .set_alpha_destination(s.destination)
        .set_alpha_value(90)
        .set_color(0x81234567);
    made.set_alpha_test(alpha_test::less, 128);
    return made;
}

Setting random_setting()
{
    return {static_cast<filter>(between(0, 2)),
            static_cast<alpha_op>(between(0, 2)),
            static_cast<alpha_source>(between(0, 1)),
            static_cast<alpha_mode>(between(0, 1)),
            static_cast<alpha_destination>(between(0, 2)),
            between(0, 1) != 0};
}

constexpr std::array<std::pair<format, format>, 8> pairs = {{
    {format::rgb565, format::rgb565},
    {format::y8v8y8u8, format::y8v8y8u8},
    {format::u8y8v8y8, format::x8r8g8b8},
    {format::y8v8y8u8, format::b8g8r8a8},
    {format::a8r8g8b8, format::a8r8g8b8},
    {format::b8g8r8a8, format::b8g8r8x8},
    {format::x8r8g8b8, format::a8r8g8b8},
    {format::a8r8g8b8, format::b8g8r8a8},
}};

rect some(int32_t within_w, int32_t within_h, bool even, int32_t least_h = 1)
{
    const int32_t mask = even ? ~1 : ~0;
    rect r{};
    r.w = std::max(between(1, within_w) & mask, even ? 2 : 1);
    r.h = between(least_h, within_h);
    r.x = between(0, within_w - r.w) & mask;
    r.y = between(0, within_h - r.h);
    return r;
}

uint32_t c_scale(context& ctx, const surface_view& src, rect a, const surface_view& dst, rect b)
{
    return vexlor_scale(ctx.get(), &src.desc(), &dst.desc(), a.x, a.y, a.w, a.h, b.x, b.y, b.w, b.h);
}
uint32_t c_copy(context& ctx, const surface_view& src, rect a, const surface_view& dst, point b)
{
    return vexlor_copy(ctx.get(), &src.desc(), &dst.desc(), a.x, a.y, b.x, b.y, a.w, a.h);
}

// `drawn` is `before`, with the pixels of `shown` as in `wanted`.
bool shows_only(const Canvas& drawn, const Canvas& wanted, Canvas before, format f, rect shown)
{
    const size_t pixel = bytes_per_pixel(f), stride = static_cast<size_t>(before.w) * 4;
    for (int32_t y = shown.y; y < shown.y + shown.h; ++y) {
        const size_t at = static_cast<size_t>(y) * stride + static_cast<size_t>(shown.x) * pixel;
        std::memcpy(reinterpret_cast<char*>(before.words.data()) + at,
                    reinterpret_cast<const char*>(wanted.words.data()) + at,
                    static_cast<size_t>(shown.w) * pixel);
    }
    return drawn.words == before.words;
}

TEST(Layer, SurfacesExistWhereTheyFit)
{
    alignas(8) std::array<uint8_t, 100> bytes{};
    const std::span all(bytes);
    const struct {
        result wanted;
        std::span<uint8_t> memory;
        int32_t w, h;
        format code;
        size_t stride;
    } cases[] = {
        {result::ok, all, 5, 5, format::b8g8r8a8, 0},
        {result::ok, all.first(92), 3, 5, format::b8g8r8a8, 20},
        {result::memory_too_short, all.first(91), 3, 5, format::b8g8r8a8, 20},
        {result::memory_too_short, all, 5, 6, format::b8g8r8a8, 0},
        {result::memory_too_short, all, 32767, 32767, format::rgb565, 0},
        {result::memory_too_short, all, 1, 3, format::rgb565, size_t{0xFFFFFFFE}},
        {result::stride_too_short, all, 5, 5, format::b8g8r8a8, 16},
        {result::misaligned, all.subspan(2), 2, 2, format::x8r8g8b8, 0},
        {result::misaligned, all, 2, 2, format::x8r8g8b8, 10},
        {result::ok, all.subspan(2), 3, 2, format::rgb565, 10},
        {result::half_pair, all, 3, 2, format::u8y8v8y8, 8},
        {result::bad_size, all, 0, 2, format::rgb565, 8},
        {result::bad_size, all, 2, -1, format::rgb565, 8},
        {result::bad_size, all, 32768, 1, format::rgb565, 0},
        {result::unknown_format, all, 2, 2, static_cast<format>(0x20u), 8},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(surface_view::make(c.memory, c.w, c.h, c.code, c.stride).error(), c.wanted)
            << c.w << 'x' << c.h;
    }
}

TEST(Layer, RefusesWhatTheCallsLeaveToTheirCaller)
{
    Canvas memory(40, 40);
    const Canvas before = memory;
    const auto rgb = memory.view(format::b8g8r8a8), yuv = memory.view(format::u8y8v8y8);
    context ctx = *context::make();
    EXPECT_EQ(ctx.fill(rgb, {30, 0, 11, 1}), result::bad_rectangle);
    EXPECT_EQ(ctx.fill(rgb, {0, 30, 1, 11}), result::bad_rectangle);
    EXPECT_EQ(ctx.fill(rgb, {1, 1, INT32_MAX, 1}), result::bad_rectangle);
    EXPECT_EQ(ctx.fill(yuv, {1, 0, 2, 1}), result::half_pair);
    EXPECT_EQ(ctx.copy(yuv, {1, 0, 2, 1}, yuv, {4, 4}), result::half_pair);
    EXPECT_EQ(ctx.scale(yuv, {0, 0, 4, 4}, rgb, {20, 20, 5, 5}), result::half_pair);
    EXPECT_EQ(ctx.scale(rgb, {0, 0, 41, 4}, rgb, {0, 20, 5, 5}), result::bad_rectangle);
    EXPECT_EQ(ctx.scale_clipped(rgb, {0, 0, 20, 20}, rgb, {0, -10, 5, 20}), result::overlap);
    ctx.set_alpha_destination(alpha_destination::one);
    EXPECT_EQ(ctx.fill(rgb, {0, 0, 1, 1}), result::quarter_fill);
    EXPECT_EQ(ctx.copy(rgb, {0, 0, 9, 9}, rgb, {1, 1}), result::overlap);
    EXPECT_EQ(memory.words, before.words);
#if defined(__cpp_exceptions)
    throwing_context strict;
    EXPECT_THROW(strict.fill(rgb, {0, 0, 41, 1}), error);
    EXPECT_THROW(surface_view(memory.words, 41, 40, format::b8g8r8a8), error);
    throwing_context moved = std::move(strict);
    EXPECT_NO_THROW(moved.fill(surface_view(memory.words, 40, 40, format::b8g8r8a8), {0, 0, 1, 1}));
#endif
}

// With SIMD on or off: every pixel of the rectangle has the colour, and none beside it.
TEST(Layer, FillsPaintTheRectangleAlone)
{
    for (int i = 0; i < 400; ++i) {
        Canvas drawn(80, 6), wanted = drawn;
        const Canvas before = drawn;
        const format f = pairs[static_cast<size_t>(i) % 8].second;
        const rect r = some(80, 6, is_yuv(f)),
                   moved{r.x + between(-9, 9) * 2, r.y + between(-9, 9), r.w, r.h};
        const rect shown = intersection(moved, {0, 0, 80, 6});
        Setting s = random_setting();
        s.op = alpha_op::none, s.destination = alpha_destination::replace;
        for (int32_t y = 0; y < 6; ++y)
            for (int32_t x = 0; x < 80; ++x)
                std::memcpy(detail::at(wanted.view(f).desc(), x, y), "\x67\x45\x23\x81", bytes_per_pixel(f));
        EXPECT_EQ(prepared(s).fill_clipped(drawn.view(f), moved), result::ok);
        EXPECT_TRUE(shows_only(drawn, wanted, before, f, shown)) << i;
    }
}

// A clipped drawing is the whole one on a larger surface, seen through a window. Results are those of the C calls,
// and a context that has drawn anything before draws as a new one.
TEST(Layer, ClippedDrawingIsAWindowOnTheWholeOne)
{
    int drawings = 0;
    for (int i = 0; i < 2000; ++i) {
        SCOPED_TRACE(i);
        const auto [from_format, to_format] = pairs[static_cast<size_t>(i) % 8];
        const Setting setting = random_setting();
        Canvas source(24, 20), wanted(64, 60);
        Canvas drawn = wanted;
        const Canvas before = wanted;
        const rect to = some(64, 60, is_yuv(from_format)), window = some(64, 60, is_yuv(to_format));
        const rect from = some(24, 20, is_yuv(from_format));
        const rect beside{to.x - window.x, to.y - window.y, to.w, to.h};
        context fresh = prepared(setting), used = prepared(setting);
        (void)used.scale(source.view(from_format), {0, 0, 24, 20}, Canvas(24, 20).view(to_format),
                         {0, 0, 24, 4});
        const uint32_t code = c_scale(fresh, source.view(from_format), from, wanted.view(to_format), to);
        EXPECT_EQ(used.scale_clipped(source.view(from_format), from, drawn.view(to_format, window), beside),
                  static_cast<result>(code));
        EXPECT_TRUE(shows_only(drawn, wanted, before, to_format, intersection(to, window)));
        drawings += code == 0;

        // Blocks of the SIMD converters begin where rows do.
        if (is_yuv(from_format) && !is_yuv(to_format))
            fresh.set_simd(false), used.set_simd(false);
        Canvas copied = before, whole = before;
        const rect part{0, 0, std::min(24, to.w), std::min(20, to.h)}, target{to.x, to.y, part.w, part.h};
        const uint32_t copy_code =
            c_copy(fresh, source.view(from_format), part, whole.view(to_format), {to.x, to.y});
        const rect seen = intersection(target, window);
        const result r = used.copy_clipped(source.view(from_format), {-4, -2, part.w + 4, part.h + 2},
                                           copied.view(to_format, window), {beside.x - 4, beside.y - 2});
        EXPECT_EQ(r, seen.w == 0 ? result::ok : static_cast<result>(copy_code));
        EXPECT_TRUE(shows_only(copied, whole, before, to_format, seen));
    }
    EXPECT_GT(drawings, 1000);
}

// Whether this processor's caches hold them or not.
TEST(Layer, CopiesLargePictures)
{
    constexpr int32_t w = 2100, h = 1000;
    const auto seen = format::b8g8r8a8;
    Canvas source(w, h), drawn(w, h);
    EXPECT_EQ(context::make()->copy(source.view(seen), {0, 0, w, h}, drawn.view(seen), {0, 0}), result::ok);
    EXPECT_EQ(drawn.words, source.words);
}

// Bands of several contexts make what one makes, in whatever order they are drawn.
TEST(Layer, ParallelDrawingEqualsTheSingleCall)
{
    unsigned most = 0, calls = 0;
    const auto backwards = [&](unsigned n, const auto& band) {
        most = std::max(most, n), ++calls;
        for (unsigned i = n; i-- > 0;)
            band(i);
    };
    // Heights whose rows start together every second time, always and never.
    const int32_t from_heights[] = {161, 490, 277}, to_heights[] = {322, 490, 401};
    Canvas source(300, 520), single(310, 525), parallel = single;
    for (int i = 0; i < 48; ++i) {
        SCOPED_TRACE(i);
        const auto [from_format, to_format] = pairs[static_cast<size_t>(i) % 8];
        const Setting setting = random_setting();
        std::vector<context> crew;
        for (int n = 0; n < 4; ++n)
            crew.push_back(prepared(n == 0 ? setting : random_setting()));
        context one = prepared(setting);
        const auto from_view = source.view(from_format);
        const auto a = single.view(to_format), b = parallel.view(to_format);
        const rect from{2, 3, 296, from_heights[i % 3]}, to{4, 1, 300, to_heights[i % 3]};
        const auto draw = [&](const auto& run) {
            EXPECT_EQ(draw_parallel(crew, from_view, from, b, to, run), one.scale(from_view, from, a, to));
            EXPECT_EQ(draw_parallel(crew, from_view, from, b, point{8, 9}, run),
                      one.copy(from_view, from, a, {8, 9}));
            EXPECT_EQ(draw_parallel(crew, b, rect{100, 2, 210, 516}, run), one.fill(a, {100, 2, 210, 516}));
            EXPECT_EQ(draw_parallel(crew, b, rect{0, 30, 300, 490}, b, point{4, 0}, run),
                      one.copy(a, {0, 30, 300, 490}, a, {4, 0}));
            EXPECT_EQ(parallel.words, single.words);
        };
        draw(backwards);
        draw(on_threads());
    }
    EXPECT_EQ(most, 4u);
    EXPECT_GT(calls, 48u);
}

} // namespace

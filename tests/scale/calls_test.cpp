// Whole scale calls against their model: random ones, every small one along the edges of exact memory, and the longest.
#include "support/stage.h"

namespace {

using model::Driver;
using model::Rectangles;

// A part of `length`, often at an end of it or all of it.
void choose_part(Random& random, int32_t length, int32_t& at, int32_t& part)
{
    part = random.one_in(4) ? length : random.between(1, length);
    at = random.pick({0, length - part, random.between(0, length - part)});
}

bool overlap(const Rectangles& r)
{
    return r.sx < r.dx + r.dw && r.dx < r.sx + r.sw && r.sy < r.dy + r.dh && r.dy < r.sy + r.sh;
}

} // namespace

TEST(ScaleCalls, EqualTheModel)
{
    Stage stage(8, 31);
    Random& random = stage.random;
    const uint64_t rounds = rounds_of(300000);
    for (uint64_t i = 0; i < rounds; ++i) {
        if (random.one_in(12))
            stage.refresh();
        random_state(stage.context.get(), random);
        vexlor_context_set_filter(stage.context.get(), random.pick({0u, 0u, 1u, 2u, 2u, 3u, ~0u}));
        const auto surface = [&](Arena& arena, uint32_t format) {
            const int32_t most = random.one_in(40) ? 80 : random.one_in(3) ? 24 : 6;
            return surface_at(arena, random.one_in(2) ? Side::begin : Side::end, format,
                              random.between(1, most), random.between(1, most),
                              random.one_in(2) ? 0 : random.below(21));
        };
        const auto [from, to] = random.pick(scalable);
        const bool one_surface = random.one_in(4), direct = random.one_in(3);
        const model::Surface src = surface(stage.source, random.one_in(16) ? random.pick(formats) : from);
        const model::Surface dst =
            one_surface ? src : surface(stage.target, random.one_in(16) ? random.pick(formats) : to);
        Rectangles r;
        choose_part(random, src.desc.width, r.sx, r.sw);
        choose_part(random, src.desc.height, r.sy, r.sh);
        choose_part(random, dst.desc.width, r.dx, r.dw);
        choose_part(random, dst.desc.height, r.dy, r.dh);
        if (random.one_in(4))
            r.dw = std::min(r.sw, dst.desc.width - r.dx);
        if (random.one_in(4))
            r.dh = std::min(r.sh, dst.desc.height - r.dy);
        if (one_surface && random.one_in(8)) { // half a pair of an odd row; the row below has the other half
            r.sx = src.desc.width - 1;
            r.sw = 1;
        }
        if (one_surface && random.one_in(2))
            r.sh = 1; // filters look beside a single row, where they may have drawn
        if (r.sw > 1 && !random.one_in(4))
            r.sw &= ~1; // rows that become RGB are even
        if (!direct && random.one_in(30)) {
            int32_t& field = *random.pick({&r.sx, &r.sy, &r.sw, &r.sh, &r.dx, &r.dy, &r.dw, &r.dh});
            field = spoiled(field, random);
        } else if (direct && random.one_in(30)) { // drivers check nothing, and draw nothing of this
            *random.pick({&r.sw, &r.sh, &r.dw, &r.dh}) = random.pick({0, -1, INT32_MIN});
        } else if (one_surface && (direct || !random.one_in(8)) && overlap(r)) {
            continue;
        }
        const auto driver = static_cast<Driver>(random.below(4));
        ASSERT_TRUE(stage.compare(src, dst, r, direct ? &driver : nullptr)) << "call " << i;
    }
    EXPECT_GT(stage.drawn, rounds / 4);
}

// Rows of several vectors at the ratios that have ways of their own.
TEST(ScaleCalls, DoubleAndHalveWideRows)
{
    Stage stage(16, 34);
    Random& random = stage.random;
    for (uint64_t i = 0; i < rounds_of(6000); ++i) {
        if (random.one_in(12))
            stage.refresh();
        random_state(stage.context.get(), random);
        vexlor_context_set_filter(stage.context.get(), random.below(3));
        const auto length = [&](uint32_t most) { return 2 * static_cast<int32_t>(1 + random.below(most)); };
        const int32_t w = length(150), h = length(3), spare = random.one_in(2) ? 0 : length(2);
        const bool wider = random.one_in(2);
        const int32_t dh = random.one_in(2) ? h : random.pick({1, 3, 4, 6}) * h / 2;
        const Rectangles r{0, 0, wider ? w : 2 * w, wider ? h : 2 * h, 0, 0, wider ? 2 * w : w, dh};
        const auto [from, to] = random.pick(scalable);
        const auto surface = [&](Arena& arena, uint32_t format, int32_t width, int32_t height) {
            return surface_at(arena, random.one_in(2) ? Side::begin : Side::end, format, width + spare,
                              height, random.one_in(2) ? 0 : random.below(9));
        };
        ASSERT_TRUE(
            stage.compare(surface(stage.source, from, r.sw, r.sh), surface(stage.target, to, r.dw, r.dh), r));
    }
}

// From 32768 pixels on, rows of twice the width pass for kept ones: the Gaussian makes them.
TEST(ScaleCalls, DoubleRowsThatPassForKeptOnes)
{
    constexpr int32_t width = 16384;
    Stage stage(40, 35);
    for (const auto& [from, to] : scalable) {
        random_state(stage.context.get(), stage.random);
        vexlor_context_set_alpha_op(stage.context.get(), VEXLOR_ALPHA_OP_NONE);
        vexlor_context_set_filter(stage.context.get(), VEXLOR_FILTER_CATROM);
        ASSERT_TRUE(stage.compare(surface_at(stage.source, Side::end, from, width, 1, 0),
                                  surface_at(stage.target, Side::end, to, 2 * width, 1, 0),
                                  {0, 0, width, 1, 0, 0, 2 * width, 1}));
    }
}

// Surfaces up to five pixels wide and four high, whole or one pixel thin at each edge, at both ends of the memory.
TEST(ScaleCalls, StayInsideExactSurfaces)
{
    Stage stage(1, 32);
    for (const auto& [from, to] : scalable)
        for (uint32_t bits = 0; bits < 5 * 4 * 5 * 12 * 3 * 2; bits += VEXLOR_TEST_STEP) {
            uint32_t rest = bits;
            const auto below = [&](uint32_t n) {
                return static_cast<int32_t>(std::exchange(rest, rest / n) % n);
            };
            const int32_t filter = below(3), w = below(5) + 1, h = below(4) + 1, edge = below(5);
            const int32_t dw = below(4) + 1, dh = below(3) * 2 + 1;
            const Side side = below(2) == 0 ? Side::begin : Side::end;
            const model::Surface src =
                surface_at(stage.source, side, from, w, h, stage.random.one_in(2) ? 0 : 8);
            const model::Surface dst = surface_at(stage.target, side, to, dw, dh, 0);
            const Rectangles parts[] = {{0, 0, w, h, 0, 0, dw, dh},
                                        {0, 0, w, 1, 0, 0, dw, dh},
                                        {0, h - 1, w, 1, 0, 0, dw, dh},
                                        {0, 0, 1, h, 0, 0, dw, dh},
                                        {w - 1, 0, 1, h, 0, 0, dw, dh}};
            const uint32_t blends = stage.random.below(2);
            set_state(stage.context.get(), 2 * blends, blends, stage.random.below(3));
            vexlor_context_set_filter(stage.context.get(), static_cast<uint32_t>(filter));
            ASSERT_TRUE(stage.compare(src, dst, parts[edge]));
        }
}

TEST(ScaleCalls, ReachTheLargestSizes)
{
    constexpr int32_t most = 32767, even = 32766;
    constexpr struct {
        int32_t length, at, part, to;
    } axes[] = {{most, 0, even, 5},
                {most, most - 1, 1, 3},
                {7, 0, 6, most},
                {even, even - 4, 4, 6},
                {7, 0, 6, most + 1}};
    Stage stage(70, 33);
    for (const auto& [from, to] : scalable)
        for (uint32_t filter : {0u, 1u, 2u})
            for (const auto& a : axes)
                for (bool tall : {false, true}) {
                    const bool left_out = a.to > most ? from != 0x50 || to != from || filter != 1 || !tall
                                                      : !stage.random.one_in(VEXLOR_TEST_STEP);
                    if (left_out)
                        continue;
                    stage.refresh();
                    vexlor_context_set_filter(stage.context.get(), filter);
                    const auto surface = [&](Arena& arena, uint32_t format, int32_t length) {
                        return surface_at(arena, Side::end, format, tall ? 2 : length, tall ? length : 2, 0);
                    };
                    const Rectangles r{0, a.at, 2, a.part, 0, 0, 2, a.to},
                        wide{a.at, 0, a.part, 2, 0, 0, a.to, 2};
                    ASSERT_TRUE(stage.compare(surface(stage.source, from, a.length),
                                              surface(stage.target, to, a.to), tall ? r : wide));
                }
}

// Row routines of every instruction set for all values that meet in a pixel.
#include "support/rows.h"
#include <cfenv>

namespace {

constexpr uint32_t pairs = 1 << 16;

// A permutation of the 16-bit numbers, other for every odd `key`: two bytes that run through all pairs of values.
uint32_t shuffled(uint32_t i, uint32_t key) { return i * key & 0xFFFF; }

// All pairs of source and destination byte in every byte, each byte in an order of its own, because premultiplied bytes
// depend on the pair two places lower.
void every_pair(uint32_t step, uint32_t i, uint8_t* s, uint8_t* d)
{
    constexpr uint32_t keys[] = {0x0001, 0x9E37, 0x6A09, 0xBB67};
    for (int byte = 0; byte < 4; ++byte) {
        const uint32_t pair = shuffled(i, keys[byte] + 2 * step);
        s[byte] = static_cast<uint8_t>(pair);
        d[byte] = static_cast<uint8_t>(pair >> 8);
    }
}
// Four bytes of which any three run through all their values together.
uint32_t every_triple(uint32_t step, uint32_t i) { return (step + i + (i >> 8)) % 256 << 24 | i << 8 | step; }

// Slow builds look at every eighth step.
struct Steps {
    uint32_t most;
    template <class Each> void each(Each look) const
    {
        for (uint32_t step = 0; step < most && !testing::Test::HasFatalFailure(); step += VEXLOR_TEST_STEP)
            look(step);
    }
};

} // namespace

TEST(EveryValue, OfBlendsBySourceAlpha)
{
    Steps{256}.each([](uint32_t step) {
        const RowArgs args{.shift = step % 4 * 8, .dst_shift = step / 4 % 4 * 8};
        sweep(Kind::src, pairs, args, [&](uint32_t i, uint8_t* s, uint8_t* d) {
            every_pair(step, i, s, d);
            s[args.shift / 8] = static_cast<uint8_t>(step);
        });
    });
}

TEST(EveryValue, OfBlendsByOneWeight)
{
    Steps{257}.each([](uint32_t step) {
        sweep(Kind::gbl, pairs, {.g = step, .shift = 24},
              [&](uint32_t i, uint8_t* s, uint8_t* d) { every_pair(step, i, s, d); });
    });
}

// A row has one colour: all pixel bytes under each colour byte and weight, with unlike bytes side by side.
TEST(EveryValue, OfFills)
{
    Steps{257 * 256}.each([](uint32_t step) {
        const RowArgs args{
            .g = step % 257, .shift = 24, .color = step / 257 * 0x01090B53 + step % 257 * 0x10001};
        sweep(Kind::fill, 256, args, [&](uint32_t i, uint8_t*, uint8_t* d) {
            model::store(d, shuffled(i, step * 2 + 1) << 16 | i * 0x101);
        });
    });
}

// Weights above 256 go on by the same arithmetic.
TEST(EveryValue, Of565)
{
    Steps{320}.each([](uint32_t step) {
        const auto pixels = [&](uint32_t i, uint8_t* s, uint8_t* d) {
            model::store(s, static_cast<uint16_t>(i));
            model::store(d, static_cast<uint16_t>(shuffled(i, 0x9E37 + 2 * step) + step));
        };
        constexpr uint32_t shifts[] = {0, 5, 8, 11};
        sweep(Kind::gbl_565, pairs, {.g = step}, pixels);
        sweep(Kind::lerp_565, pairs, {.shift = shifts[step % 4]}, pixels);
    });
}

TEST(EveryValue, OfYuv)
{
    Steps{256}.each([](uint32_t step) {
        sweep(Kind::decode, pairs, {},
              [&](uint32_t i, uint8_t* s, uint8_t*) { model::store(s, every_triple(step, i)); });
    });
}

// Rows of floats round as the processor is set.
TEST(ManyValues, OfYuvInEveryRounding)
{
    for (const int mode : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        ASSERT_EQ(std::fesetround(mode), 0);
        sweep(Kind::decode, pairs, {},
              [](uint32_t i, uint8_t* s, uint8_t*) { model::store(s, i * 0x9E3779B9); });
    }
}

TEST(EveryValue, OfRgb)
{
    Steps{256}.each([](uint32_t step) {
        sweep(Kind::encode, pairs, {}, [&](uint32_t i, uint8_t* s, uint8_t*) {
            model::store(s, every_triple(step, i));
            model::store(s + 4, every_triple(step, shuffled(i, 0x9E37)));
        });
    });
}

// Four bytes over four or eight are too many for all of them.
TEST(ManyValues, OfYuvBlends)
{
    Random random(3);
    Steps{129}.each([&](uint32_t step) {
        sweep(Kind::blend_yuv, pairs, {.g = 2 * step}, [&](uint32_t i, uint8_t* s, uint8_t* d) {
            model::store(s, random.next());
            model::store(d, random.next());
            if (i % 2 == 0)
                model::store(s, every_triple(step, i));
        });
    });
}

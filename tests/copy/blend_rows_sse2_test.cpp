// The SSE2 blends: straight ones equal the portable rows, premultiplied ones lack the borrow in their body.
#include "support/vector_rows.h"

namespace {

using namespace model;
using enum Alpha;

void without_borrow(const uint8_t* s, uint8_t* d, uint32_t f)
{
    for (int i = 0; i < 4; ++i)
        d[i] = byte(s[i] + d[i] - static_cast<int>(d[i] * f / 256));
}

constexpr RowCase src_bodies[] = {
    {call<vexlor_1d_copy_blend_over_src_8888_sse2>, src<straight, blended>, pixel_32},
    {call<vexlor_1d_copy_blend_over_src_pre_8888_sse2>, src<without_borrow, blended>, pixel_32},
};
constexpr RowCase gbl_bodies[] = {
    {call<vexlor_1d_copy_blend_over_gbl_8888_sse2>, gbl<straight, blended>, pixel_32},
    {call<vexlor_1d_copy_blend_over_gbl_pre_8888_sse2>, gbl<without_borrow, blended>, pixel_32},
};
constexpr VectorCase rows[] = {
    {src_bodies[0], src<straight, blended>},
    {gbl_bodies[0], gbl<straight, blended>},
    {{src_bodies[1].routine, src<premultiplied, blended>, pixel_32}, src<without_borrow, blended>},
    {{gbl_bodies[1].routine, gbl<premultiplied, blended>, pixel_32}, gbl<without_borrow, blended>},
};

// All pairs of source and destination byte, and every weight.
void prepare(uint32_t step, uint32_t i, uint8_t* s, uint8_t* d, RowArgs& args)
{
    for (uint32_t byte = 0; byte < 4; ++byte) {
        const uint32_t pair = shuffled(i, 0x9E37 + 2 * (byte + step));
        s[byte] = static_cast<uint8_t>(pair);
        d[byte] = static_cast<uint8_t>(pair >> 8);
    }
    args.g = step;
    args.shift = step % 4 * 8;
}

} // namespace

TEST(CopyBlendRowsSse2, EqualTheModel) { check_vector_rows(rows); }

TEST(CopyBlendRowsSse2, BodiesEqualTheModelForEveryPairOfBytesAndWeight)
{
    sweep_rows(gbl_bodies, 257, prepare);
    // As a float every alpha is denormal; that these count as zero must not matter.
    const uint32_t control = mxcsr();
    set_mxcsr(control | no_denormals);
    sweep_rows(src_bodies, 256, [](uint32_t step, uint32_t i, uint8_t* s, uint8_t* d, RowArgs& args) {
        prepare(step, i, s, d, args);
        s[step % 4] = static_cast<uint8_t>(step);
    });
    set_mxcsr(control);
}

TEST(CopyBlendRowsSse2, PremultipliedBodiesGiveTheKnownPixels)
{
    constexpr struct {
        uint32_t s, d, f, body, edge;
    } blends[] = {{0x00000000, 0x01010101, 2, 0x01010101, 0x00000101},
                  {0x20406080, 0x80808080, 129, 0x6080A0C0, 0x5F7FA0C0},
                  {0x00000000, 0xFFFFFFFF, 128, 0x80808080, 0x7F7F8080},
                  {0x10101010, 0xFF00FF00, 3, 0x0D100D10, 0x0C100D10}};
    constexpr struct {
        uint32_t at, count, head, body; // pixels
    } splits[] = {{3, 9, 1, 8}, {2, 9, 2, 4}, {1, 7, 3, 4}, {0, 3, 0, 0}};
    for (const auto& b : blends)
        for (const auto& c : splits) {
            alignas(16) uint32_t s[16], d[16];
            std::fill(std::begin(s), std::end(s), b.s);
            std::fill(std::begin(d), std::end(d), b.d);
            vexlor_1d_copy_blend_over_gbl_pre_8888_sse2(s, d + c.at, c.count, b.f);
            for (uint32_t i = 0; i < 12; ++i) {
                const uint32_t pixel = i - c.at;
                const bool in_body = pixel >= c.head && pixel < c.head + c.body;
                EXPECT_EQ(d[i], pixel >= c.count ? b.d
                                : in_body        ? b.body
                                                 : b.edge)
                    << &b - blends << ' ' << &c - splits << ' ' << i;
            }
        }
}

// Spans of unfiltered scaling against the model of one unit: random places and steps, exact memory.
#include "support/model_yuv.h"
#include "support/rows.h"

namespace {

using namespace model;

void copy_32(const uint8_t* s, uint8_t* d, const RowArgs&) { std::memcpy(d, s, 4); }

struct SpanCase {
    vexlor_scale_span_fn span;
    Unit unit;
    uint32_t pixels; // that a source unit becomes
};
constexpr SpanCase spans[] = {
    {vexlor_1d_scale_opaque_nofilt_32, copy_32, 1},
    {vexlor_1d_scale_opaque_nofilt_aone_8888, opaque_aone, 1},
    {vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8, decode<Y8V8Y8U8, X8R8G8B8>, 2},
    {vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8, decode<Y8V8Y8U8, B8G8R8X8>, 2},
    {vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8, decode<U8Y8V8Y8, X8R8G8B8>, 2},
    {vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8, decode<U8Y8V8Y8, B8G8R8X8>, 2},
    {vexlor_1d_scale_blend_over_src_nofilt_8888, src<straight, Alpha::blended>, 1},
    {vexlor_1d_scale_blend_over_src_nofilt_8888_pre, src<premultiplied, Alpha::blended>, 1},
    {vexlor_1d_scale_blend_over_src_nofilt_arepl_8888, src<straight, Alpha::replaced>, 1},
    {vexlor_1d_scale_blend_over_src_nofilt_arepl_8888_pre, src<premultiplied, Alpha::replaced>, 1},
    {vexlor_1d_scale_blend_over_src_nofilt_aone_8888, src<straight, Alpha::one>, 1},
    {vexlor_1d_scale_blend_over_src_nofilt_aone_8888_pre, src<premultiplied, Alpha::one>, 1},
};

} // namespace

TEST(NofilterSpans, EqualTheModel)
{
    constexpr uint32_t formats[] = {0x20000020, 0x60000020, 0xA0000020, 0xE0000020, 0xE0000120};
    Random random(41);
    Arena source, target;
    for (const SpanCase& c : spans)
        for (int i = 0; i < 4000 / VEXLOR_TEST_STEP; ++i) {

            const uint32_t count = random.below(50), rounds = count / c.pixels, format = random.pick(formats);
            const int32_t x = random.between(0, 0x50000),
                          step = random.between(0, random.one_in(2) ? 0x20000 : 0xC0000);
            const auto unit_at = [&](uint32_t round) {
                return static_cast<size_t>((x + int64_t{round} * step) >> 16);
            };
            const Side side = random.one_in(2) ? Side::begin : Side::end;
            const size_t units = rounds == 0 ? 0 : unit_at(rounds - 1) + 1;
            uint8_t* const s = source.place(4 * units, side, random.below(4));
            uint8_t* const d = target.place(size_t{4} * c.pixels * rounds, side, random.below(16));
            source.randomize(random);
            target.randomize(random);
            c.span(s, d, format, count, x, step);
            const uint32_t shift = format == 0xA0000020 || format == 0xE0000020 ? 24 : 0;
            for (uint32_t round = 0; round < rounds; ++round)
                c.unit(source.twin(s) + 4 * unit_at(round), target.twin(d) + size_t{4} * c.pixels * round,
                       {.shift = shift});
            ASSERT_TRUE(source.same());
            ASSERT_TRUE(target.same_as_twin(d))
                << "span " << &c - spans << ", count " << count << ", x " << x << ", step " << step;
        }
}

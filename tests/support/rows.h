// The one checker of row routines: a routine and the model of its unit draw the same rows, the one in memory, the
// other in the twin.
#pragma once

#include "arena.h"
#include "model_blend.h"
#include "vexlor.h"

// Pixels and bytes of a unit.
struct Shape {
    uint32_t pixels, src_bytes, dst_bytes;
    bool signed_count;
};
constexpr Shape pixel_32{1, 4, 4, false}, pixel_16{1, 2, 2, false}, fill_32{1, 0, 4, false};
constexpr Shape yuv_to_rgb{2, 4, 8, true}, rgb_to_yuv{2, 8, 4, true}, yuv_to_yuv{2, 4, 4, true};

struct RowCase {
    void (*routine)(const uint8_t* s, uint8_t* d, uint32_t count, const RowArgs& args);
    model::Unit unit;
    Shape shape;
};

inline const uint32_t* words(const uint8_t* p) { return reinterpret_cast<const uint32_t*>(p); }
inline uint32_t* words(uint8_t* p) { return reinterpret_cast<uint32_t*>(p); }

// How each kind of routine is called with the common arguments.
using Src = const uint8_t*;
using Dst = uint8_t*;
inline void pass(vexlor_copy_src_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(words(s), words(d), n, a.shift);
}
inline void pass(vexlor_copy_gbl_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(words(s), words(d), n, a.g, a.shift);
}
inline void pass(vexlor_copy_test_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(words(s), words(d), n, a.test, a.reference, a.shift);
}
inline void pass(vexlor_fill_blend_fn f, Src, Dst d, uint32_t n, const RowArgs& a)
{
    f(a.color, words(d), n, a.g, a.shift);
}
inline void pass(vexlor_copy_gbl_565_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(reinterpret_cast<const uint16_t*>(s), reinterpret_cast<uint16_t*>(d), n, a.g);
}
inline void pass(vexlor_copy_gbl_yuv_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(s, d, static_cast<int32_t>(n), a.g);
}
inline void pass(vexlor_convert_fn f, Src s, Dst d, uint32_t n, const RowArgs&)
{
    f(s, d, static_cast<int32_t>(n));
}
template <auto* Routine> void call(Src s, Dst d, uint32_t n, const RowArgs& args)
{
    pass(Routine, s, d, n, args);
}

inline void run_model(const RowCase& c, const uint8_t* s, uint8_t* d, uint32_t units, const RowArgs& args)
{
    for (uint32_t i = 0; i < units; ++i, s += c.shape.src_bytes, d += c.shape.dst_bytes)
        c.unit(s, d, args);
}

// Random rows of every short length, in exact memory at a page's end or begin, at every alignment modulo 16 of both.
inline void check_row(const RowCase& c)
{
    constexpr uint32_t shifts[] = {0, 0, 24, 24, 8, 16, 5, 28, 32, 56, 0xFFFFFFF8};
    constexpr uint32_t references[] = {0, 1, 127, 128, 254, 255, 256, 0xFFFFFFFF};
    // Behind 67 come counts that are negative where a routine's count has a sign.
    constexpr uint32_t negative[] = {0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFF5, 0x80000000};
    Random random(2);
    Arena src, dst;
    for (uint32_t count = 0; count < (c.shape.signed_count ? 72 : 68); ++count)
        for (uint32_t i = 0; i < 512; i += VEXLOR_TEST_STEP == 1 ? 1 : 3) {
            const uint32_t n = count < 68 ? count : negative[count - 68],
                           units = count < 68 ? n / c.shape.pixels : 0;
            const Side side = i < 256 ? Side::end : Side::begin;
            uint8_t* const s = src.place(units * c.shape.src_bytes, side, i % 16);
            uint8_t* const d = dst.place(units * c.shape.dst_bytes, side, i / 16 % 16);
            src.randomize(random);
            dst.randomize(random);
            const RowArgs args{random.weight(256), random.pick(shifts), random.below(8),
                               random.one_in(2) ? random.pick(references) : random.below(256), random.next()};
            c.routine(s, d, n, args);
            run_model(c, src.twin(s), dst.twin(d), units, args);
            ASSERT_TRUE(src.same_as_twin(s)) << "count " << n << ", places " << i;
            ASSERT_TRUE(dst.same_as_twin(d))
                << "count " << n << ", places " << i << ", g " << args.g << ", shift " << args.shift;
        }
}

template <size_t N> void check_rows(const RowCase (&cases)[N])
{
    for (const RowCase& c : cases) {
        SCOPED_TRACE(testing::Message() << "row " << &c - cases);
        check_row(c);
    }
}

// Long rows of chosen pixels: prepare(step, i, s, d, args) makes unit i of the step-th row.
template <size_t N, class Prepare> void sweep_rows(const RowCase (&cases)[N], uint32_t steps, Prepare prepare)
{
    constexpr uint32_t units = 1 << 16;
    for (const RowCase& c : cases) {
        std::vector<uint8_t> src(units * c.shape.src_bytes), dst(units * c.shape.dst_bytes), expected;
        for (uint32_t step = 0; step < steps; step += VEXLOR_TEST_STEP) {
            RowArgs args;
            for (uint32_t i = 0; i < units; ++i)
                prepare(step, i, src.data() + i * c.shape.src_bytes, dst.data() + i * c.shape.dst_bytes,
                        args);
            expected = dst;
            c.routine(src.data(), dst.data(), units * c.shape.pixels, args);
            run_model(c, src.data(), expected.data(), units, args);
            const auto [is, should] = std::mismatch(dst.begin(), dst.end(), expected.begin());
            ASSERT_TRUE(is == dst.end())
                << "row " << &c - cases << ", step " << step << ", byte " << is - dst.begin() << " is "
                << int{*is} << ", expected " << int{*should};
        }
    }
}

// A permutation of the 16-bit numbers, other for every odd `key`: two bytes that run through all pairs of values.
inline uint32_t shuffled(uint32_t i, uint32_t key) { return i * key & 0xFFFF; }

// The rows of every instruction set that this processor has, held against the baseline's: equal bytes, and nothing
// outside the row, at every width up to several vectors.
#include "isa/kernels.h"
#include "support/arena.h"

using vexlor::Kernels;
using vexlor::Set;

namespace {

constexpr uint32_t most = 131;
constexpr uint32_t shifts[] = {0, 24, 8, 32};

// A call of each kind of row: `count` destination pixels of 4 bytes, from at most as many of the source.
void call(vexlor_fill_blend_fn f, const uint8_t*, uint8_t* d, uint32_t n, Random& r)
{
    f(r.next(), reinterpret_cast<uint32_t*>(d), n, r.weight(256), r.pick(shifts));
}
void call(vexlor_copy_src_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random& r)
{
    f(reinterpret_cast<const uint32_t*>(s), reinterpret_cast<uint32_t*>(d), n, r.pick(shifts));
}
void call(vexlor_copy_gbl_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random& r)
{
    f(reinterpret_cast<const uint32_t*>(s), reinterpret_cast<uint32_t*>(d), n, r.weight(257), r.pick(shifts));
}
void call(vexlor_copy_gbl_565_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random& r)
{
    f(reinterpret_cast<const uint16_t*>(s), reinterpret_cast<uint16_t*>(d), 2 * n, r.weight(257));
}
void call(vexlor_copy_test_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random& r)
{
    f(reinterpret_cast<const uint32_t*>(s), reinterpret_cast<uint32_t*>(d), n, r.below(7), r.weight(256),
      r.pick(shifts));
}
void call(vexlor_copy_gbl_yuv_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random& r)
{
    f(s, d, static_cast<int32_t>(n), r.weight(256));
}
void call(vexlor_convert_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random&)
{
    f(s, d, static_cast<int32_t>(n));
}
void call(vexlor_scale_span_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random& r)
{
    // The last unit read is the source's last at most: 4 bytes per destination pixel.
    const int32_t steps[] = {0, 1, 0x8000, 47835, 0xFFFF, 0x10000};
    const int32_t step = r.one_in(3) ? r.between(0, 0x10000) : r.pick(steps);
    f(s, d, r.one_in(2) ? VEXLOR_FMT_A8R8G8B8 : VEXLOR_FMT_B8G8R8A8, n, r.between(0, 0xFFFF), step);
    if (n < 2)
        return;
    // A reduction: as far apart as the source allows.
    const auto wide = static_cast<int32_t>(((n - 1) << 16) / (n / 2));
    f(s, d, VEXLOR_FMT_A8R8G8B8, n / 2, 0, r.one_in(2) ? wide : wide - r.between(0, 0x4000));
    f(s + (n - 1) * 4, d, VEXLOR_FMT_A8R8G8B8, n, 0, -0x10000); // backwards
}
void call(vexlor_lerp_8888_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random& r)
{
    f(reinterpret_cast<uint32_t*>(d), reinterpret_cast<const uint32_t*>(s), n, r.pick(shifts),
      r.pick(shifts));
}
void call(vexlor_lerp_565_fn f, const uint8_t* s, uint8_t* d, uint32_t n, Random& r)
{
    f(reinterpret_cast<uint16_t*>(d), reinterpret_cast<const uint16_t*>(s), 2 * n, r.pick(shifts));
}

template <class Row> void expect_same(Row row, Row reference, const char* set, size_t entry)
{
    if (reference == nullptr) // the baseline has no vectors
        return;
    Random random(entry);
    Arena src, dst;
    for (uint32_t n = 0; n <= most; ++n)
        for (const Side side : {Side::begin, Side::end}) {
            const uint8_t* const s = src.place(n * 4, side, random.below(17));
            uint8_t* const d = dst.place(n * 4, side, random.below(17));
            src.randomize(random);
            dst.randomize(random);
            Random again = random;
            call(row, s, d, n, random);
            call(reference, s, dst.twin(d), n, again);
            ASSERT_TRUE(dst.same_as_twin(d)) << set << ", entry " << entry << ", width " << n;
        }
}

// Every entry of a table, in its order.
template <class Row, class... Rest>
void expect_same_entries(const Kernels& kernels, const Kernels& reference, const char* set, size_t entry,
                         Row Kernels::*row, Rest... rest)
{
    expect_same(kernels.*row, reference.*row, set, entry);
    if constexpr (sizeof...(rest) != 0)
        expect_same_entries(kernels, reference, set, entry + 1, rest...);
}

struct FilterKernels {
    vexlor_filter_fn filter;
    vexlor::AcrossFn Kernels::*across;
    vexlor::DownFn Kernels::*down;
    vexlor::BothFn Kernels::*both;
    uint32_t size; // bytes of a pixel
};
constexpr FilterKernels filter_kernels[] = {
    {vexlor_filter_xmean_ymean_8888, &Kernels::mean_across_8888, &Kernels::mean_down_8888,
     &Kernels::halve_8888, 4},
    {vexlor_filter_xmean_ylinear_8888, &Kernels::mean_across_8888, &Kernels::linear_down_8888, nullptr, 4},
    {vexlor_filter_xlinear_ymean_8888, &Kernels::linear_across_8888, &Kernels::mean_down_8888, nullptr, 4},
    {vexlor_filter_xlinear_ylinear_8888, &Kernels::linear_across_8888, &Kernels::linear_down_8888, nullptr,
     4},
    {vexlor_filter_xmean_ymean_565, &Kernels::mean_across_565, &Kernels::mean_down_565, nullptr, 2},
    {vexlor_filter_xmean_ylinear_565, &Kernels::mean_across_565, &Kernels::linear_down_565, nullptr, 2},
    {vexlor_filter_xlinear_ymean_565, &Kernels::linear_across_565, &Kernels::mean_down_565, nullptr, 2},
    {vexlor_filter_xlinear_ylinear_565, &Kernels::linear_across_565, &Kernels::linear_down_565, nullptr, 2},
};

// Two source rows in exact memory, passed across and down by a set's kernels, against the filter itself.
void expect_filtered(const Kernels& kernels, const FilterKernels& f, const char* set)
{
    const vexlor::Passes passes = vexlor::passes_of(f.filter, kernels);
    Random random(7);
    Arena src, dst;
    alignas(vexlor::column_block) static uint8_t columns[8 * 192], values[2][4 * 192];
    uint32_t at_once = 0;
    for (uint32_t i = 0; i < 20000 / VEXLOR_TEST_STEP; ++i) {
        const int32_t steps[] = {1,       0x5555,  0x8000,  0xBADA,  0x10000,
                                 0x14000, 0x1FFFF, 0x20000, 0x20000, 0x50000};
        const int32_t step = random.one_in(3) ? random.between(1, 0x30000) : random.pick(steps);
        const uint32_t width = 1 + random.below(150), stride = width * f.size + random.below(9);
        const uint32_t spare = std::min(random.one_in(4) ? random.below(3) : 0, width - 1);
        // A linear left tap may lie behind the row's end, and stays in the row.
        const uint32_t count =
            std::min(random.below(132), ((width << 16) - 1) / static_cast<uint32_t>(step) + 1);
        const int32_t ystep = random.one_in(2) ? 0x20000 : 0x10000;
        const vexlor_filter_params params{
            random.below(0x10000), step, step >> 1, ystep >> 1, 0, 0, 0, count, stride};
        const uint8_t* const row =
            src.place(stride + width * f.size, random.one_in(2) ? Side::begin : Side::end, 0);
        const uint8_t* const end = row + (width - 1 - spare) * f.size;
        const uint8_t* const last = random.one_in(4) ? end : end + stride;
        uint8_t* const out =
            dst.place(count * f.size, random.one_in(2) ? Side::begin : Side::end, random.below(17));
        src.randomize(random);
        dst.randomize(random);

        vexlor::TapRow rows[vexlor::most_taps];
        const uint32_t apart = passes.find_rows({row, last, row, end}, params, rows);
        if (apart == count)
            continue;
        f.filter(row, last, row, end, &params, dst.twin(out));
        passes.prepare(params, columns);
        for (uint32_t tap = 0; tap < passes.taps; ++tap)
            (kernels.*f.across)(rows[tap], params, columns, values[tap]);
        const void* const taps[] = {values[0], values[1]};
        if (f.both && (kernels.*f.both)(rows, params, out))
            ++at_once;
        else
            (kernels.*f.down)(taps, params, out);
        std::memcpy(out, dst.twin(out), apart * f.size);
        ASSERT_TRUE(dst.same_as_twin(out))
            << set << ", filter " << &f - filter_kernels << ", call " << i << ": width " << width
            << ", spare " << spare << ", step " << step << ", count " << count;
    }
    const bool halves = f.both && &kernels != vexlor::kernels_of(Set::baseline);
    EXPECT_EQ(at_once > 10, halves);
}

} // namespace

TEST(Kernels, FilterAsTheFiltersDo)
{
    for (const auto& [set, name] : {std::pair{Set::baseline, "baseline"}, std::pair{Set::avx2, "avx2"},
                                    std::pair{Set::avx512, "avx512"}})
        if (const Kernels* const kernels = vexlor::kernels_of(set))
            for (const FilterKernels& f : filter_kernels)
                expect_filtered(*kernels, f, name);
}

TEST(Kernels, AreEqualInEverySet)
{
    using K = Kernels;
    const Kernels& baseline = *vexlor::kernels_of(Set::baseline);
    for (const auto& [set, name] : {std::pair{Set::avx2, "avx2"}, std::pair{Set::avx512, "avx512"}}) {
        const Kernels* const kernels = vexlor::kernels_of(set);
        if (kernels == nullptr)
            continue;
        expect_same_entries(
            *kernels, baseline, name, 0, &K::fill_blend_over_8888, &K::fill_blend_over_aone_8888,
            &K::fill_blend_over_arepl_8888, &K::copy_opaque_aone_8888, &K::copy_blend_over_src_8888,
            &K::copy_blend_over_src_aone_8888, &K::copy_blend_over_src_arepl_8888,
            &K::copy_blend_over_src_pre_8888, &K::copy_blend_over_src_pre_aone_8888,
            &K::copy_blend_over_src_pre_arepl_8888, &K::copy_blend_over_gbl_8888,
            &K::copy_blend_over_gbl_aone_8888, &K::copy_blend_over_gbl_arepl_8888,
            &K::copy_blend_over_gbl_pre_8888, &K::copy_blend_over_gbl_pre_aone_8888,
            &K::copy_blend_over_gbl_pre_arepl_8888, &K::copy_blend_over_gbl_565, &K::copy_test_8888,
            &K::copy_blend_over_gbl_Y8V8Y8U8, &K::copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8,
            &K::copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8, &K::copy_blend_over_gbl_U8Y8V8Y8,
            &K::copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8, &K::copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8,
            &K::Y8V8Y8U8_2_X8R8G8B8, &K::Y8V8Y8U8_2_B8G8R8X8, &K::U8Y8V8Y8_2_X8R8G8B8,
            &K::U8Y8V8Y8_2_B8G8R8X8, &K::X8R8G8B8_2_Y8V8Y8U8, &K::B8G8R8X8_2_Y8V8Y8U8,
            &K::X8R8G8B8_2_U8Y8V8Y8, &K::B8G8R8X8_2_U8Y8V8Y8, &K::Y8V8Y8U8_2_X8R8G8B8_single,
            &K::U8Y8V8Y8_2_X8R8G8B8_single, &K::scale_opaque_nofilt_32, &K::scale_opaque_nofilt_aone_8888,
            &K::scale_opaque_nofilt_565, &K::scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8,
            &K::scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8, &K::scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8,
            &K::scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8, &K::scale_blend_over_src_nofilt_8888,
            &K::scale_blend_over_src_nofilt_8888_pre, &K::scale_blend_over_src_nofilt_arepl_8888,
            &K::scale_blend_over_src_nofilt_arepl_8888_pre, &K::scale_blend_over_src_nofilt_aone_8888,
            &K::scale_blend_over_src_nofilt_aone_8888_pre, &K::lerp_8888, &K::lerp_pre_8888,
            &K::lerp_arepl_8888, &K::lerp_pre_arepl_8888, &K::lerp_aone_8888, &K::lerp_pre_aone_8888,
            &K::lerp_565, &K::lerp_pre_565);
    }
}

TEST(Kernels, SetAndCopyMemory)
{
    constexpr uint32_t value = 0x89ABCDEF;
    Arena src(4), dst(4);
    Random random(7);
    for (const Set set : {Set::baseline, Set::avx2, Set::avx512}) {
        const Kernels* const kernels = vexlor::kernels_of(set);
        for (uint32_t n = 0; kernels != nullptr && n < 2100; n += n < 140 ? 1 : 53)
            for (const Side side : {Side::begin, Side::end}) {
                uint8_t* const words = dst.place(n * 4, side, random.below(17));
                dst.randomize(random);
                kernels->set_words(words, value, n);
                for (uint32_t i = 0; i < n; ++i)
                    std::memcpy(dst.twin(words) + i * 4, &value, 4);
                ASSERT_TRUE(dst.same_as_twin(words)) << static_cast<int>(set) << ", " << n << " words";

                const uint32_t rows = random.below(4), src_stride = n + random.below(9),
                               dst_stride = n + random.below(9);
                const uint8_t* const s = src.place(rows * src_stride, side, random.below(70));
                uint8_t* const d = dst.place(rows * dst_stride, side, random.below(70));
                src.randomize(random);
                dst.randomize(random);
                kernels->copy_rows_streaming(d, dst_stride, s, src_stride, n, rows);
                for (uint32_t i = 0; i < rows; ++i)
                    std::memcpy(dst.twin(d) + i * dst_stride, s + i * src_stride, n);
                ASSERT_TRUE(dst.same_as_twin(d)) << static_cast<int>(set) << ", " << rows << " rows of " << n;
            }
    }
}

TEST(Kernels, ServeFromTheBestSet)
{
    const Kernels* best = nullptr;
    for (const Set set : {Set::baseline, Set::avx2, Set::avx512})
        if (const Kernels* const kernels = vexlor::kernels_of(set))
            best = kernels;
    EXPECT_EQ(&vexlor::kernels(), best);
    // No entry is left empty, but in 32 bits without vectors of doubles.
    if (sizeof(void*) == 4 && best == vexlor::kernels_of(Set::baseline))
        return;
    const void* entries[sizeof *best / sizeof(void*)];
    std::memcpy(entries, best, sizeof entries);
    EXPECT_EQ(std::count(std::begin(entries), std::end(entries), nullptr), 0);
}

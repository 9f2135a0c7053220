// The row routines, called directly on rows that stay in the first cache.
#include "widths.h"

#include "measure.h"
#include "picture.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>

namespace bench {
namespace {

constexpr uint32_t rgb = VEXLOR_FMT_B8G8R8A8;
constexpr uint32_t shift = 24; // of alpha in such pixels
constexpr uint32_t color = 0xFF3A6EA5, g = 101;

// Calls go down a picture, as drawing does: one that follows on the same pixels would wait for their stores.
struct Rows {
    static constexpr int height = 16;
    Picture source{512, height, rgb}, target{528, height, rgb, 2048};
    int row = 0;
    Rows() { paint(source, Content::random, false); }

    template <class Pixel> Pixel* at(const Picture& picture) const
    {
        return reinterpret_cast<Pixel*>(picture.pixels() +
                                        row * static_cast<ptrdiff_t>(picture.surface().stride));
    }
    const uint32_t* words() const { return at<const uint32_t>(source); }
    const uint16_t* halves() const { return at<const uint16_t>(source); }
    uint32_t* out() const { return at<uint32_t>(target); }
    uint16_t* half_out() const { return at<uint16_t>(target); }
};

using Row = std::function<void(const Rows&, uint32_t width)>;
struct Family {
    const char* name;
    Row row;
    int unit = 1;
};

// One shape of call per kind of routine.
Row memory(vexlor_memcpy_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(r.out(), r.words(), n * 4); };
}
Row memory(vexlor_memset_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(r.out(), color, n * 4); };
}
Row fill(vexlor_fill_blend_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(color, r.out(), n, g, shift); };
}
Row src(vexlor_copy_src_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(r.words(), r.out(), n, shift); };
}
Row gbl(vexlor_copy_gbl_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(r.words(), r.out(), n, g, shift); };
}
Row convert(vexlor_convert_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(r.words(), r.out(), static_cast<int32_t>(n)); };
}
Row yuv_blend(vexlor_copy_gbl_yuv_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(r.words(), r.out(), static_cast<int32_t>(n), g); };
}
Row lerp(vexlor_lerp_8888_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(r.out(), r.words(), n, shift, shift); };
}
Row lerp(vexlor_lerp_565_fn f)
{
    return [f](const Rows& r, uint32_t n) { f(r.half_out(), r.halves(), n, 8); };
}
Row span(vexlor_scale_span_fn f)
{
    constexpr int32_t step = 0x8000; // to twice the width
    return [f](const Rows& r, uint32_t n) { f(r.words(), r.out(), rgb, n, step / 2, step); };
}
// A row of the middle of a picture, scaled by 2 or by 1/2 in both directions.
Row filter(vexlor_filter_fn f, int unit, bool enlarged)
{
    return [f, unit, enlarged](const Rows& r, uint32_t n) {
        const int32_t step = enlarged ? 0x8000 : 0x20000;
        const uint32_t stride = r.source.surface().stride;
        const vexlor_filter_params params = {0x4000,
                                             step,
                                             step >> 1,
                                             step >> 1,
                                             step >> 17,
                                             ((step >> 1) + 0x1000) >> 16,
                                             (step >> 1) + 0x1000,
                                             n,
                                             stride};
        const int width = enlarged ? static_cast<int>(n + 1) / 2 : static_cast<int>(n) * 2;
        const uint8_t *first = r.source.pixels(), *row = first + stride;
        const ptrdiff_t end = static_cast<ptrdiff_t>(width - 1) * unit;
        f(first, first + 3 * static_cast<ptrdiff_t>(stride) + end, row, row + end, &params, r.out());
    };
}

const std::vector<Family>& families()
{
    static const std::vector<Family> all = {
        // clang-format off
        {"memset",                            memory(vexlor_memset)},
        {"memset_stream_sse",                 memory(vexlor_memset_stream_sse)},
        {"memcpy_x86",                        memory(vexlor_memcpy_x86)},
        {"memcpy_stream_sse",                 memory(vexlor_memcpy_stream_sse)},
        {"fill_blend_over_8888",              fill(vexlor_1d_fill_blend_over_8888)},
        {"fill_blend_over_aone_8888",         fill(vexlor_1d_fill_blend_over_aone_8888)},
        {"fill_blend_over_arepl_8888",        fill(vexlor_1d_fill_blend_over_arepl_8888)},
        {"copy_opaque_aone_8888",             src(vexlor_1d_copy_opaque_aone_8888)},
        {"copy_blend_over_src_8888",          src(vexlor_1d_copy_blend_over_src_8888)},
        {"copy_blend_over_src_aone_8888",     src(vexlor_1d_copy_blend_over_src_aone_8888)},
        {"copy_blend_over_src_arepl_8888",    src(vexlor_1d_copy_blend_over_src_arepl_8888)},
        {"copy_blend_over_src_8888_sse2",     src(vexlor_1d_copy_blend_over_src_8888_sse2)},
        {"copy_blend_over_src_pre_8888",      src(vexlor_1d_copy_blend_over_src_pre_8888)},
        {"copy_blend_over_src_pre_aone_8888", src(vexlor_1d_copy_blend_over_src_pre_aone_8888)},
        {"copy_blend_over_src_pre_arepl_8888", src(vexlor_1d_copy_blend_over_src_pre_arepl_8888)},
        {"copy_blend_over_src_pre_8888_sse2", src(vexlor_1d_copy_blend_over_src_pre_8888_sse2)},
        {"copy_blend_over_gbl_8888",          gbl(vexlor_1d_copy_blend_over_gbl_8888)},
        {"copy_blend_over_gbl_aone_8888",     gbl(vexlor_1d_copy_blend_over_gbl_aone_8888)},
        {"copy_blend_over_gbl_arepl_8888",    gbl(vexlor_1d_copy_blend_over_gbl_arepl_8888)},
        {"copy_blend_over_gbl_8888_sse2",     gbl(vexlor_1d_copy_blend_over_gbl_8888_sse2)},
        {"copy_blend_over_gbl_pre_8888",      gbl(vexlor_1d_copy_blend_over_gbl_pre_8888)},
        {"copy_blend_over_gbl_pre_aone_8888", gbl(vexlor_1d_copy_blend_over_gbl_pre_aone_8888)},
        {"copy_blend_over_gbl_pre_arepl_8888", gbl(vexlor_1d_copy_blend_over_gbl_pre_arepl_8888)},
        {"copy_blend_over_gbl_pre_8888_sse2", gbl(vexlor_1d_copy_blend_over_gbl_pre_8888_sse2)},
        {"copy_blend_over_gbl_565",           [](const Rows& r, uint32_t n) {
            vexlor_1d_copy_blend_over_gbl_565(r.halves(), r.half_out(), n, g); }},
        {"copy_test_8888",                    [](const Rows& r, uint32_t n) {
            vexlor_1d_copy_test_8888(r.words(), r.out(), n, VEXLOR_ALPHA_TEST_GREATER_EQUAL, 128, shift); }},
        {"copy_blend_over_gbl_U8Y8V8Y8",      yuv_blend(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8), 2},
        {"copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8", yuv_blend(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8), 2},
        {"copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8", yuv_blend(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8), 2},
        {"U8Y8V8Y8_2_X8R8G8B8",               convert(vexlor_1d_U8Y8V8Y8_2_X8R8G8B8), 2},
        {"U8Y8V8Y8_2_X8R8G8B8_sse2",          convert(vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2), 2},
        {"U8Y8V8Y8_2_B8G8R8X8",               convert(vexlor_1d_U8Y8V8Y8_2_B8G8R8X8), 2},
        {"X8R8G8B8_2_U8Y8V8Y8",               convert(vexlor_1d_X8R8G8B8_2_U8Y8V8Y8), 2},
        {"B8G8R8X8_2_U8Y8V8Y8",               convert(vexlor_1d_B8G8R8X8_2_U8Y8V8Y8), 2},
        {"scale_opaque_nofilt_32",            span(vexlor_1d_scale_opaque_nofilt_32)},
        {"scale_opaque_nofilt_aone_8888",     span(vexlor_1d_scale_opaque_nofilt_aone_8888)},
        {"scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8", span(vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8), 2},
        {"scale_blend_over_src_nofilt_8888",  span(vexlor_1d_scale_blend_over_src_nofilt_8888)},
        {"scale_blend_over_src_nofilt_8888_pre", span(vexlor_1d_scale_blend_over_src_nofilt_8888_pre)},
        {"scale_blend_over_src_nofilt_aone_8888", span(vexlor_1d_scale_blend_over_src_nofilt_aone_8888)},
        {"lerp_8888",                         lerp(vexlor_1d_lerp_8888)},
        {"lerp_pre_8888",                     lerp(vexlor_1d_lerp_pre_8888)},
        {"lerp_565",                          lerp(vexlor_1d_lerp_565)},
        {"lerp_pre_565",                      lerp(vexlor_1d_lerp_pre_565)},
        {"filter_xmean_ymean_8888",           filter(vexlor_filter_xmean_ymean_8888, 4, false)},
        {"filter_xlinear_ylinear_8888",       filter(vexlor_filter_xlinear_ylinear_8888, 4, true)},
        {"filter_xgauss_ygauss_8888",         filter(vexlor_filter_xgauss_ygauss_8888, 4, false)},
        {"filter_xcatrom_ycatrom_8888",       filter(vexlor_filter_xcatrom_ycatrom_8888, 4, true)},
        {"filter_xmean_ymean_565",            filter(vexlor_filter_xmean_ymean_565, 2, false)},
        {"filter_xlinear_ylinear_565",        filter(vexlor_filter_xlinear_ylinear_565, 2, true)},
        {"filter_xgauss_ygauss_565",          filter(vexlor_filter_xgauss_ygauss_565, 2, false)},
        {"filter_xcatrom_ycatrom_565",        filter(vexlor_filter_xcatrom_ycatrom_565, 2, true)},
        // clang-format on
    };
    return all;
}

Curve curve(const Family& family, Rows& rows, bool quick)
{
    constexpr double turn = 20e-6; // short, so that most turns pass without an interruption
    Curve curve = {family.name, family.unit,
                   std::vector<double>(widest, std::numeric_limits<double>::infinity())};
    const auto time = [&](uint32_t width, int calls) {
        const double start = now();
        for (int n = 0; n < calls; ++n) {
            rows.row = n % Rows::height;
            family.row(rows, width);
        }
        return (now() - start) / calls;
    };
    time(widest, 100);
    std::array<int, widest> calls{};
    for (uint32_t width = 1; width <= widest; ++width)
        calls[width - 1] = static_cast<int>(std::clamp(turn / time(width, 20), 4.0, 4000.0));
    for (int round = 0; round < (quick ? 8 : 40); ++round) {
        for (uint32_t width = 1; width <= widest; ++width) {
            double& least = curve.seconds[width - 1];
            least = std::min(least, time(width, calls[width - 1]));
        }
    }
    return curve;
}

} // namespace

Curve::Worst Curve::against_neighbours() const
{
    Worst worst = {0, 0};
    const auto at = [&](int width) { return seconds[static_cast<size_t>(width) - 1]; };
    for (int width = 2 * unit; width + unit <= widest; width += unit) {
        const double ratio = at(width) / ((at(width - unit) + at(width + unit)) / 2);
        if (ratio > worst.ratio)
            worst = {width, ratio};
    }
    return worst;
}

Curve::Worst Curve::against_blocks() const
{
    constexpr size_t block = 32;
    Worst worst = {0, 0};
    for (size_t width = block; width <= seconds.size() / block * block; ++width) {
        const size_t below = width / block * block,
                     above = std::min(below + block, seconds.size() / block * block);
        const double along = static_cast<double>(width - below) / block;
        const double line = seconds[below - 1] + (seconds[above - 1] - seconds[below - 1]) * along;
        if (seconds[width - 1] / line > worst.ratio)
            worst = {static_cast<int>(width), seconds[width - 1] / line};
    }
    return worst;
}

std::vector<Curve> width_curves(const std::regex& filter, bool quick)
{
    Rows rows;
    std::vector<Curve> curves;
    for (const Family& family : families())
        if (std::regex_search(family.name, filter))
            curves.push_back(curve(family, rows, quick));
    return curves;
}

} // namespace bench

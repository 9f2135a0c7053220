// Gaussian and Catmull-Rom filters: three or four taps in each of three or four rows, in floating point on
// unpacked colours. A kernel knows its taps, its first row and its weights; one loop serves both kernels in
// both directions.
#include "filter/pixels.h"
#include "filter/position.h"
#include "row/rounding.h"

using namespace vexlor;

namespace {

// Sums of products of singles, in double, in a fixed order; the caller stores the result as a single.
struct Gauss {
    static constexpr u32 taps = 3;
    static i32 first_row(const vexlor_filter_params& p) { return p.ycentre_rows - 1; }

    struct Weights {};
    static Weights weights(u32) { return {}; }
    static float mix(const float* q, Weights)
    {
        const double outer =
            through_memory(0.25 * static_cast<double>(q[0]) + 0.5 * static_cast<double>(q[1]));
        return single(outer + 0.25 * static_cast<double>(q[2]));
    }
};

struct CatRom {
    static constexpr u32 taps = 4;
    static i32 first_row(const vexlor_filter_params& p) { return p.yhalf_rows - 1; }

    struct Weights {
        float w[taps];
    };
    // From the fraction of a position. The full fraction 0xFFFF is a phase of 1.
    static Weights weights(u32 position)
    {
        constexpr float per_fraction = 1.0F / 65535;
        static_assert(__builtin_bit_cast(u32, per_fraction) == 0x37800080);
        const double t = static_cast<double>(single((position & 0xFFFF) * static_cast<double>(per_fraction)));
        const auto r = through_memory<double>;
        const double tt = r(t * t);
        return {single(r(r(r(2 - t) * t) - 1) * t), single(r(r(r(3 * t) - 5) * tt) + 2),
                single(r(r(r(4 - r(3 * t)) * t) + 1) * t), single(r(t - 1) * tt)};
    }
    static float mix(const float* q, const Weights& k)
    {
        double sum = static_cast<double>(k.w[0]) * static_cast<double>(q[0]);
        for (u32 i = 1; i < taps; ++i)
            sum = through_memory(sum + static_cast<double>(k.w[i]) * static_cast<double>(q[i]));
        const float c = single(0.5 * sum);
        return c > 0 ? c < 1 ? c : 1 : 0; // what is no number becomes 0
    }
};

// The Gaussian centres on a point one sixteenth of a pixel further when both axes are Gaussian.
template <class X, class Y> constexpr i32 vexlor_filter_params::*column_offset = &vexlor_filter_params::xhalf;
template <> constexpr i32 vexlor_filter_params::*column_offset<Gauss, Gauss> = &vexlor_filter_params::xcentre;

// When the first row lies above the rectangle and is replaced, the rows below follow the replacement.
constexpr bool rows_follow_replaced_first = true;

struct RowSpan {
    uintptr_t start, end; // addresses of the first and last pixel that taps read
};

// The rows of the vertical kernel. Those outside the rectangle become substitutes of one whole stride, from
// the rectangle's first pixel on or up to its last: taps in them may fall on pixels beside the rectangle.
template <class Pixel, class Y>
void find_rows(const u8* first, const u8* last, const u8* row, const u8* row_end,
               const vexlor_filter_params& p, RowSpan (&rows)[Y::taps])
{
    // Wider than an address: rows above and below a surface at either end of memory must not wrap.
    const auto at = [](const u8* place) { return static_cast<i64>(address(place)); };
    constexpr i64 pixel = sizeof(typename Pixel::Word);
    const i64 stride = p.stride;
    const i64 length = at(row_end) - at(row);
    const i64 start = at(row) + Y::first_row(p) * stride;
    const bool above = start + length < at(first);
    const i64 origin = above && rows_follow_replaced_first ? at(first) : start;
    for (u32 j = 0; j < Y::taps; ++j) {
        i64 row_start = origin + j * stride;
        i64 row_last = row_start + length;
        if (above && j == 0)
            row_last = at(first) + stride - pixel;
        if (row_start > at(last)) {
            row_start = at(last) + pixel - stride;
            row_last = at(last);
        }
        rows[j] = {static_cast<uintptr_t>(row_start), static_cast<uintptr_t>(row_last)};
    }
}

template <class Pixel, class X>
void mix_across(const RowSpan& row, i64 column, const typename X::Weights& weights, float* out)
{
    constexpr u32 bytes = sizeof(typename Pixel::Word);
    float colours[X::taps][Pixel::channels];
    for (u32 j = 0; j < X::taps; ++j) {
        uintptr_t at = row.start + bytes_of(column + j - 1, bytes);
        if (at > row.end)
            at = row.end;
        if (j == 0 && at < row.start)
            at = row.start;
        Pixel::unpack(load<typename Pixel::Word>(reinterpret_cast<const void*>(at)), colours[j]);
    }
    for (u32 c = 0; c < Pixel::channels; ++c) {
        float q[X::taps];
        for (u32 j = 0; j < X::taps; ++j)
            q[j] = colours[j][c];
        out[c] = X::mix(q, weights);
    }
}

template <class Pixel, class X, class Y>
void resample(const u8* first, const u8* last, const u8* row, const u8* row_end,
              const vexlor_filter_params& p, void* out)
{
    using Word = typename Pixel::Word;
    RowSpan rows[Y::taps];
    find_rows<Pixel, Y>(first, last, row, row_end, p, rows);
    const auto wy = Y::weights(p.ypos);
    i64 position = 0;
    for (u32 i = 0; i < p.count; ++i, position += p.xstep) {
        const i64 column = centre(position, p.*column_offset<X, Y>);
        const auto wx = X::weights(static_cast<u32>(position));
        float across[Y::taps][Pixel::channels];
        for (u32 j = 0; j < Y::taps; ++j)
            mix_across<Pixel, X>(rows[j], column, wx, across[j]);
        float colour[Pixel::channels];
        for (u32 c = 0; c < Pixel::channels; ++c) {
            float q[Y::taps];
            for (u32 j = 0; j < Y::taps; ++j)
                q[j] = across[j][c];
            colour[c] = Y::mix(q, wy);
        }
        store(static_cast<Word*>(out) + i, static_cast<Word>(Pixel::pack(colour)));
    }
}

} // namespace

// clang-format off
using Byte = const uint8_t*;
using Params = const vexlor_filter_params*;
void vexlor_filter_xgauss_ygauss_8888  (Byte first, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel8888, Gauss, Gauss>  (first, last, row, row_end, *params, out); }
void vexlor_filter_xgauss_ycatrom_8888 (Byte first, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel8888, Gauss, CatRom> (first, last, row, row_end, *params, out); }
void vexlor_filter_xcatrom_ygauss_8888 (Byte first, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel8888, CatRom, Gauss> (first, last, row, row_end, *params, out); }
void vexlor_filter_xcatrom_ycatrom_8888(Byte first, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel8888, CatRom, CatRom>(first, last, row, row_end, *params, out); }
void vexlor_filter_xgauss_ygauss_565   (Byte first, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel565, Gauss, Gauss>   (first, last, row, row_end, *params, out); }
void vexlor_filter_xgauss_ycatrom_565  (Byte first, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel565, Gauss, CatRom>  (first, last, row, row_end, *params, out); }
void vexlor_filter_xcatrom_ygauss_565  (Byte first, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel565, CatRom, Gauss>  (first, last, row, row_end, *params, out); }
void vexlor_filter_xcatrom_ycatrom_565 (Byte first, Byte last, Byte row, Byte row_end, Params params, void* out) { resample<Pixel565, CatRom, CatRom> (first, last, row, row_end, *params, out); }
// clang-format on

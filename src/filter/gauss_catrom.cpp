// Gaussian and Catmull-Rom filters: three or four taps in each of three or four rows, in floating point on
// unpacked colours. A kernel knows its taps, its first row and its weights; one loop serves both kernels in
// both directions.
#include "filter/gauss_catrom.h"

using namespace vexlor;

namespace {

template <class Pixel, class X>
void mix_across(TapRow row, i64 column, const typename X::Weights& weights, float* out)
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
    TapRow rows[Y::taps];
    find_rows<Pixel, Y>({first, last, row, row_end}, p, rows);
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

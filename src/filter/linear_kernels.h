// Both passes of the linear filter over 32-bit pixels, where bytes can be picked from a vector in any order: the two taps of
// each column's channels come side by side from one window of the row, and one product of bytes weighs and adds them.
#pragma once

#include "filter/single_row_kernels.h"
#include "row/cover.h"
#include "row/stepped.h"

namespace vexlor {
namespace {

#if defined(__AVX512VBMI__)

// For each column, which bytes of its vector's window are the taps of its even channels, left and right in turn, and what
// they weigh. Of taps that weigh all or nothing one stands for both, as such weights would be no bytes.
inline void prepare_linear_8888(const vexlor_filter_params& p, void* memory)
{
    using U32 = Vector<vector_bytes>::U32;
    const Columns<Pixel8888> columns(p, memory);
    const auto step = static_cast<u32>(p.xstep);
    u32 fraction = 0;
    for (u64 i = 0; i < with_whole_blocks(p.count); i += lane_count<U32>) {
        const U32 position = lane_numbers<U32>() * step + fraction, none{};
        const U32 byte = position >> 8 & 0xFF;
        const U32 left = (position >> 16) + (byte == 0xFF ? none + 1 : none);
        const U32 right = (position >> 16) + (byte != 0 ? none + 1 : none);
        const U32 weight = left == right ? none + 128 : byte + 1;
        store(columns.left + i, left * 0x00040004 + right * 0x04000400 + 0x02020000);
        store(columns.weights + i, (256 - weight + (weight << 8)) * 0x10001);
        fraction += step * lane_count<U32>;
        fraction &= 0xFFFF;
    }
}

// Values are biased: the products want signed bytes. Steps are those of enlarged rows: the taps of a vector of columns lie
// in a window of a vector and one pixel.
inline void linear_across_for_linear_8888(TapRow row, const vexlor_filter_params& p, const void* memory,
                                          void* values)
{
    if (double_across_8888<bias>(row, p, values))
        return;
    using U32 = Vector<vector_bytes>::U32;
    constexpr u32 vector = lane_count<U32>;
    const auto source = source_row<u32>(row);
    const Columns<Pixel8888> columns(p, const_cast<void*>(memory));
    auto* const out = static_cast<u32*>(values);
    const auto mix = [=](u32 i, U32 order, auto pick) {
        const auto weights = load<__m512i>(columns.weights + i);
        const U32 even = reinterpret_cast<U32>(multiply_add_bytes(weights, pick(native(order))));
        const U32 odd = reinterpret_cast<U32>(multiply_add_bytes(weights, pick(native(order + 0x01010101))));
        store(out + i, even_and_odd(reinterpret_cast<U32>(channels(even) >> 8), odd));
    };
    const auto by = static_cast<u32>(p.xstep) * vector;
    const u32 count = columns_inside(0, source.last, p);
    Position at(0);
    u32 i = 0;
    const auto mix_windows = [&](i64 pixels, auto picker) {
        for (; i < count && at.unit + pixels <= source.last + 1; i += vector, at.advance(by))
            mix(i, load<U32>(columns.left + i), picker(source.at(at.unit)));
    };
    const auto biased = [](const u8* window) { return native(load<U32>(window) ^ bias); };
    // Up to this step the window's last pixel is the last right tap at most.
    constexpr i32 without_the_one = ((vector - 2) << 16) / (vector - 1);
    if (p.xstep <= without_the_one)
        mix_windows(vector, [=](const u8* window) {
            return [v = biased(window)](__m512i order) { return _mm512_permutexvar_epi8(order, v); };
        });
    else
        mix_windows(vector + 1, [=](const u8* window) {
            const auto one = native(U32{} + (load<u32>(window + vector_bytes) ^ bias));
            return
                [v = biased(window), one](__m512i order) { return _mm512_permutex2var_epi8(v, order, one); };
        });
    // Vectors whose windows would reach beyond the end pick from the last one.
    if (i < count) {
        const i64 begin = source.last + 1 > i64{vector} ? source.last + 1 - vector : 0;
        const auto pixels = static_cast<u32>(source.last + 1 - begin);
        const auto window = native(load_first<4, U32>(source.at(begin), pixels) ^ bias);
        const auto last_bytes = native(U32{} + ((pixels - 1) * 0x04040404 + 0x02020000));
        for (; i < count; i += vector, at.advance(by)) {
            const auto moved_on = static_cast<u32>(at.unit - begin) * 4 & 0xFF;
            const auto order = native(load<U32>(columns.left + i)),
                       from = native(U32{} + moved_on * 0x01010101);
            mix(i, reinterpret_cast<U32>(_mm512_min_epu8(_mm512_add_epi8(order, from), last_bytes)),
                [=](__m512i bytes) { return _mm512_permutexvar_epi8(bytes, window); });
        }
    }
    // Left taps behind the end are read where they are.
    mix_columns<Pixel8888, Linear>(row, p, count, out);
    for (i = count; i < p.count; ++i)
        out[i] ^= bias;
}

inline void linear_down_of_linear_8888(const void* const* values, const vexlor_filter_params& p, void* out)
{
    const auto *upper = static_cast<const u32*>(values[0]), *lower = static_cast<const u32*>(values[1]);
    const u32 weight = fraction_weight(p.ypos);
    auto* const pixels = static_cast<u32*>(out);
    const Target target{pixels, p.count >= Stepped::far_from};
    const auto put = [=](auto vector, u32 i, auto made) { target(vector, i, made ^ bias); };
    if (upper == lower || weight == 0 || weight == 256) {
        const u32* const row = weight == 256 ? lower : upper;
        return cover<4>(
            p.count, [=](auto vector, u32 i) { return vector.load(row + i); }, put, pixels);
    }
    using U32 = Vector<vector_bytes>::U32;
    const auto weights = byte_weights<U32>(weight);
    const auto mix = [=](auto vector, u32 i) {
        return mix_biased_bytes(vector.load(lower + i), vector.load(upper + i), weights);
    };
    cover<4>(p.count, mix, put, pixels);
}

#else

constexpr PrepareFn prepare_linear_8888 = prepare_columns<Pixel8888, Linear>;
constexpr AcrossFn linear_across_for_linear_8888 = linear_across_8888;
constexpr DownFn linear_down_of_linear_8888 = mix_down<Pixel8888, Linear>;

#endif

} // namespace
} // namespace vexlor

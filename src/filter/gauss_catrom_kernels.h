// Passes of the Gaussian and Catmull-Rom filters, for one instruction set, in double precision. A value is a colour of
// singles, as the filters store it.
#pragma once

#include "filter/column_walk.h"
#include "filter/field_vectors.h"
#include "filter/gauss_catrom.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

// Several pixels as colours in memory.
#if defined(__AVX512F__)
constexpr u32 unpacked_at_once = 4;
template <class Pixel> inline void unpack_several(const void* pixels, double* values)
{
    const __m512 four = Fields<Pixel>::unpacked_four(pixels);
    widen(_mm512_castps512_ps256(four), values);
    widen(_mm512_extractf32x8_ps(four, 1), values + 2 * components);
}
#elif defined(__AVX2__)
constexpr u32 unpacked_at_once = 2;
template <class Pixel> inline void unpack_several(const void* pixels, double* values)
{
    widen(Fields<Pixel>::unpacked_pair(pixels), values);
}
#else
constexpr u32 unpacked_at_once = 1;
template <class Pixel> inline void unpack_several(const void* pixel, double* value)
{
    widen(Fields<Pixel>::unpacked(load<typename Pixel::Word>(pixel)), value);
}
#endif
// As many as a register holds.
template <class Pixel> inline Colours colours_at(const typename Pixel::Word* pixels)
{
#if defined(__AVX512F__)
    Colours two = Colours::widened(Fields<Pixel>::unpacked_pair(pixels));
    asm("" : "+v"(two.v)); // g++ would widen once more what one turn of a loop leaves for the next
    return two;
#else
    return Colours::widened(Fields<Pixel>::unpacked(load<typename Pixel::Word>(pixels)));
#endif
}
// Calls take(colours) for two pixels, as many at once as a register holds.
template <class Pixel> inline void take_two(const typename Pixel::Word* pixels, auto take)
{
#if defined(__AVX2__) && !defined(__AVX512F__)
    const __m256 two = Fields<Pixel>::unpacked_pair(pixels);
    take(Colours::widened(_mm256_castps256_ps128(two)));
    take(Colours::widened(_mm256_extractf128_ps(two, 1)));
#else
    for (u32 i = 0; i < 2; i += colours_at_once)
        take(colours_at<Pixel>(pixels + i));
#endif
}

// The sum of the taps by their weights, in their order.
template <class Kernel, class Values> inline auto mixed(const Values (&weights)[Kernel::taps], auto tap)
{
    Values sum = weights[0] * tap(0);
    for (u32 j = 1; j < Kernel::taps; ++j)
        sum = plus_product(sum, weights[j], tap(j));
    return sum.rounded();
}

// For one colour at a time, or several.
template <class Kernel, class Values> struct Weights {
    Values of_taps[Kernel::taps];
    explicit Weights(const typename Kernel::Column& column)
    {
        for (u32 j = 0; j < Kernel::taps; ++j)
            of_taps[j] = Values::all(column.weight(j));
    }
};

// As the filters store sums.
template <class Kernel> inline auto limited(auto sums)
{
    return __is_same(Kernel, CatRom) ? clamped(sums) : sums;
}
template <class Kernel> inline void put_two(__m128 a, __m128 b, Value* values)
{
#if defined(__AVX2__)
    put(limited<Kernel>(_mm256_set_m128(b, a)), values);
#else
    put(limited<Kernel>(a), values);
    put(limited<Kernel>(b), values + components);
#endif
}

// Twice as wide: columns stand on a pixel and half way to the next in turn, all those with the same weights. Pixels go from
// register to register; those at the ends of the row are put together before.
template <class Pixel> void double_across(const RowPixels<Pixel>& pixels, i64 place, u32 count, Value* out)
{
    using Word = typename Pixel::Word;
    constexpr u32 edge_columns = 16, ahead = 6;
    const Weights<CatRom, Colours> half_way(CatRom::column(0x8000, 0));
    for (u32 begin = 0, end; begin < count; begin = end) {
        Word edge[edge_columns / 2 + ahead];
        const i64 first = place + begin / 2, rest = count - begin;
        const i64 inside =
            first < 0 ? 0 : 2 * (pixels.number() - first - ahead) / edge_columns * edge_columns;
        const auto* from = static_cast<const Word*>(pixels.address(first));
        end = begin + static_cast<u32>(inside >= edge_columns ? inside < rest ? inside : rest
                                       : rest < edge_columns  ? rest
                                                              : edge_columns);
        if (inside < edge_columns) {
            for (u32 i = 0; i < edge_columns / 2 + ahead; ++i)
                edge[i] = static_cast<Word>(pixels.at(first + i));
            from = edge;
        }
        SlidingTaps taps([&] {
            from += colours_at_once;
            return colours_at<Pixel>(from - colours_at_once);
        });
        Value* values = out + begin * components;
        for (u32 i = begin; i < end; i += 4, from += 2)
            take_two<Pixel>(from, [&](Colours read) {
                const FourColours all = taps.with(read);
                const auto sums = mixed<CatRom>(half_way.of_taps, [&](u32 j) { return all.taps[j]; });
                put_in_turn(taps.second, limited<CatRom>(sums), values);
                taps.slide(read);
                values += size_t{2} * colours_at_once * components;
            });
    }
}

// Once for a block of columns.
template <class Pixel>
[[gnu::noinline]] void unpack(const RowPixels<Pixel>& pixels, i64 place, u32 number, double* values)
{
    pixels.template for_each<unpacked_at_once>(
        place, number,
        [&](u32 i, u32 pixel) { widen(Fields<Pixel>::unpacked(pixel), values + i * components); },
        [&](u32 i, const void* several) { unpack_several<Pixel>(several, values + i * components); });
}

template <class Pixel, class X>
void colours_across(TapRow row, const vexlor_filter_params& p, const void* columns, void* values)
{
    alignas(64) double colours[block_room * components];
    auto* const out = static_cast<Value*>(values);
    const auto* const column = static_cast<const typename X::Column*>(columns);
    const RowPixels<Pixel> pixels(row);
    if (__is_same(X, CatRom) && p.xstep == 0x8000)
        return double_across(pixels, i64{column[0].centre} - 1, p.count, out);
    const auto unpack_at = [&](i64 place, u32 number, u32 index) {
        unpack(pixels, place, number, colours + index * components);
    };
    for_columns<X>(column, 0, p.count, unpack_at, [&](u32 i, size_t index, size_t next_index) {
        const auto sum = [](const auto& one, const double* taps) {
            return mixed<X>(Weights<X, Colour>(one).of_taps,
                            [&](u32 j) { return Colour::at(taps + j * components); });
        };
        put_two<X>(sum(column[i], colours + index * components),
                   sum(column[i + 1], colours + next_index * components), out + i * components);
    });
}

template <class Pixel, class Y>
void colours_down(const void* const* values, const vexlor_filter_params& p, void* out)
{
    const auto at = [&](u32 row, u32 i) { return static_cast<const Value*>(values[row]) + i * components; };
    const typename Y::Column row = Y::column(p.ypos, 0);
    if (row.is_on_pixel())
        return pack_row<Pixel>(p.count, out, [&](u32 first) { return fields_of<Pixel>(at(1, first)); });
    const Weights<Y, Colours> weights(row);
    pack_row<Pixel>(p.count, out, [&](u32 first) {
        const Floats sums = floats_at(first, [&](u32 i) {
            return mixed<Y>(weights.of_taps, [&](u32 j) { return Colours::at(at(j, i)); });
        });
        return Fields<Pixel>::cut_off(__is_same(Y, CatRom) && !Fields<Pixel>::pack_clamps ? clamped(sums)
                                                                                          : sums);
    });
}

constexpr u32 colour_bytes = components * sizeof(Value);
template <class Pixel, class Kernel> constexpr AcrossFn across = colours_across<Pixel, Kernel>;
template <class Pixel, class Kernel> constexpr DownFn down = colours_down<Pixel, Kernel>;

#else

// Without vectors of doubles the filters do it alone.
constexpr u32 colour_bytes = 0;
template <class Pixel, class Kernel> constexpr AcrossFn across = nullptr;
template <class Pixel, class Kernel> constexpr DownFn down = nullptr;

#endif

} // namespace
} // namespace vexlor

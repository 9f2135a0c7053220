// The two taps of whole vectors of columns: the pixel of an ascending index along a source row, and the one behind it.
// Wide vectors pick them from windows of the row; behind its end, a tap finds the last pixel. Narrow vectors are put
// together pixel by pixel.
#pragma once

#include "filter/passes.h"
#include "filter/pixel_vectors.h"
#include "row/windows.h"

namespace vexlor {
namespace {

template <class Word> SourceRow<Word> source_row(TapRow row)
{
    return {reinterpret_cast<const u8*>(row.start),
            static_cast<ptrdiff_t>((row.end - row.start) / sizeof(Word))};
}

template <class Pixels> struct TapVectors {
    Pixels left, right;
};

#if defined(__AVX2__)

enum class Reach { one, two, exactly_two, any }; // source pixels that a step takes at most

constexpr Reach reach_of(i64 step)
{
    return step <= 0x10000   ? Reach::one
           : step < 0x20000  ? Reach::two
           : step == 0x20000 ? Reach::exactly_two
                             : Reach::any;
}

template <class U32> inline U32 at_most(U32 a, ptrdiff_t most)
{
    const U32 b = U32{} + static_cast<u32>(most < INT32_MAX ? most : INT32_MAX);
    return a < b ? a : b;
}

template <class Pixel, Reach Most> class PickedTaps;

template <Reach Most> class PickedTaps<Pixel8888, Most> {
public:
    using U32 = Vector<vector_bytes>::U32;
    PickedTaps(const SourceRow<u32>& source, const u32* left) : row(source), indices(left), windows(source) {}
    TapVectors<U32> operator()(u32 i) const
    {
        const ptrdiff_t base = row.inside(indices[i]);
        const U32 index = load<U32>(indices + i) - static_cast<u32>(base);
        if constexpr (Most == Reach::any) {
            const ptrdiff_t room = row.last - base;
            return {gather<U32>(row.at(base), at_most(index, room)),
                    gather<U32>(row.at(base), at_most(index + 1, room))};
        }
        const u8* const window = windows(base);
        if constexpr (Most == Reach::one)
            return {pick(load<U32>(window), index), pick(load<U32>(window + 4), index)};
        const u8* const behind = window + vector_bytes;
        if constexpr (Most == Reach::exactly_two)
            return {even_units(load<U32>(window), load<U32>(behind)),
                    odd_units(load<U32>(window), load<U32>(behind))};
        return {pick_of_two(load<U32>(window), load<U32>(behind), index),
                pick_of_two(load<U32>(window + 4), load<U32>(behind + 4), index)};
    }

private:
    const SourceRow<u32>& row;
    const u32* indices;
    Windows<u32, (Most == Reach::one ? 1 : 2) * lane_count<U32> + 1> windows;
};

// Both taps of a 565 column are one unit of 32 bits, at an even or odd place.
template <Reach Most> class PickedTaps<Pixel565, Most> {
public:
    using U32 = Vector<vector_bytes>::U32;
    using U16 = Vector<vector_bytes>::U16;
    PickedTaps(const SourceRow<u16>& source, const u32* left) : row(source), indices(left), windows(source) {}
    TapVectors<U16> operator()(u32 i) const
    {
        const U32 a = pairs(i), b = pairs(i + lane_count<U32>);
        return {low_halves(a, b), high_halves(a, b)};
    }

private:
    U32 pairs(u32 i) const
    {
        const ptrdiff_t base = row.inside(indices[i]);
        const U32 index = load<U32>(indices + i) - static_cast<u32>(base);
        if constexpr (Most == Reach::any) {
            U32 v;
            for (u32 k = 0; k < lane_count<U32>; ++k) {
                const ptrdiff_t left = row.inside(indices[i + k]);
                const u32 right = load<u16>(row.at(row.inside(static_cast<size_t>(left) + 1)));
                v[k] = load<u16>(row.at(left)) | right << 16;
            }
            return v;
        }
        const u8* const window = windows(base);
        if constexpr (Most == Reach::exactly_two)
            return load<U32>(window);
        return pick_halves(window, index);
    }

    const SourceRow<u16>& row;
    const u32* indices;
    Windows<u16, 2 * lane_count<U32> + 1> windows;
};

#elif defined(__SSE2__)

// Both taps of a column with one load. Neither is behind the last pixel.
template <class Pixel> class LoadedTaps;

template <> class LoadedTaps<Pixel8888> {
public:
    using U32 = Vector<16>::U32;
    LoadedTaps(const SourceRow<u32>& source, const u32* left) : row(source), indices(left) {}
    TapVectors<U32> operator()(u32 i) const
    {
        const auto pair = [&](u32 k) {
            return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row.at(indices[k])));
        };
        const auto a = reinterpret_cast<__m128>(_mm_unpacklo_epi64(pair(i), pair(i + 1)));
        const auto b = reinterpret_cast<__m128>(_mm_unpacklo_epi64(pair(i + 2), pair(i + 3)));
        return {reinterpret_cast<U32>(_mm_shuffle_ps(a, b, 0x88)),
                reinterpret_cast<U32>(_mm_shuffle_ps(a, b, 0xDD))};
    }

private:
    const SourceRow<u32>& row;
    const u32* indices;
};

template <> class LoadedTaps<Pixel565> {
public:
    using U32 = Vector<16>::U32;
    using U16 = Vector<16>::U16;
    LoadedTaps(const SourceRow<u16>& source, const u32* left) : row(source), indices(left) {}
    TapVectors<U16> operator()(u32 i) const
    {
        const U32 a = pairs(i), b = pairs(i + 4);
        return {low_halves(a, b), high_halves(a, b)};
    }

private:
    U32 pairs(u32 i) const
    {
        const auto pair = [&](u32 k) { return load<u32>(row.at(indices[k])); };
        return U32{pair(i), pair(i + 1), pair(i + 2), pair(i + 3)};
    }

    const SourceRow<u16>& row;
    const u32* indices;
};

#endif

} // namespace
} // namespace vexlor

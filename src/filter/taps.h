// The two taps of whole vectors of columns, at every step of a 16.16 position along a source row.
//
// Wide vectors pick them from windows of the row, which are read where they lie inside the row. Windows that reach
// beyond its end come from a copy of the end with the last pixel repeated: there, a tap behind the end finds it. Narrow
// vectors are put together pixel by pixel.
#pragma once

#include "filter/pixel_vectors.h"

namespace vexlor {
namespace {

template <class Word> struct SourceRow {
    const u8* start;
    i64 last; // index of the last pixel
    const u8* at(i64 index) const { return moved(start, bytes_of(index, sizeof(Word))); }
};

// Where the left taps of columns are: of a column, and of a vector of columns from i on, relative to a base that is not
// behind the last pixel.
struct Columns {
    i64 step, first, last;
    i64 position(u32 i) const { return i * step; }
    i64 left_tap(u32 i) const { return (position(i) >> 16) + first; }
    i64 base(u32 i) const { return left_tap(i) < last ? left_tap(i) : last; }
    template <class U32> U32 positions(u32 i) const
    {
        return lane_numbers<U32>() * static_cast<u32>(step) + static_cast<u32>(position(i) & 0xFFFF);
    }
    // Columns whose left tap is not behind the last pixel, of count.
    u32 inside(u32 count) const
    {
        if (first > last)
            return 0;
        const i64 many = step == 0 ? i64{count} : (((last + 1 - first) << 16) + step - 1) / step;
        return many < count ? static_cast<u32>(many) : count;
    }
};

template <class Pixels> struct TapVectors {
    Pixels left, right;
};

#if defined(__AVX2__)

enum class Reach { one, two, any }; // source pixels that a step takes at most

constexpr Reach reach_of(i64 step)
{
    return step <= 0x10000 ? Reach::one : step <= 0x20000 ? Reach::two : Reach::any;
}

// Windows of `length` pixels from any pixel up to the last one.
template <class Word, u32 length> class Windows {
public:
    explicit Windows(const SourceRow<Word>& source)
        : row(source), from(row.last + 1 > length ? row.last + 1 - length : 0)
    {
        const auto owned = static_cast<u32>(row.last + 1 - from);
        for (u32 i = 0; i < 2 * length; ++i)
            end[i] = load<Word>(row.at(i < owned ? from + i : row.last));
    }
    const u8* operator()(i64 at) const
    {
        return at < from ? row.at(at) : reinterpret_cast<const u8*>(end + (at - from));
    }

private:
    const SourceRow<Word>& row;
    i64 from;
    Word end[2 * length];
};

template <class U32> inline U32 at_most(U32 a, i64 most)
{
    const U32 b = U32{} + static_cast<u32>(most < INT32_MAX ? most : INT32_MAX);
    return a < b ? a : b;
}

template <class Pixel, Reach reach> class PickedTaps;

template <Reach reach> class PickedTaps<Pixel8888, reach> {
public:
    using U32 = Vector<vector_bytes>::U32;
    PickedTaps(const SourceRow<u32>& source, const Columns& steps)
        : row(source), columns(steps), windows(source)
    {}
    TapVectors<U32> operator()(u32 i) const
    {
        const i64 base = columns.base(i);
        const U32 index = columns.positions<U32>(i) >> 16;
        if constexpr (reach == Reach::any) {
            const i64 room = row.last - base;
            return {gather<U32>(row.at(base), at_most(index, room)),
                    gather<U32>(row.at(base), at_most(index + 1, room))};
        }
        const u8* const window = windows(base);
        if constexpr (reach == Reach::one)
            return {pick(load<U32>(window), index), pick(load<U32>(window + 4), index)};
        const u8* const behind = window + vector_bytes;
        return {pick_of_two(load<U32>(window), load<U32>(behind), index),
                pick_of_two(load<U32>(window + 4), load<U32>(behind + 4), index)};
    }

private:
    const SourceRow<u32>& row;
    const Columns& columns;
    Windows<u32, (reach == Reach::one ? 1 : 2) * lane_count<U32> + 1> windows;
};

// Both taps of a 565 column are one unit of 32 bits, at an even or odd place.
template <Reach reach> class PickedTaps<Pixel565, reach> {
public:
    using U32 = Vector<vector_bytes>::U32;
    using U16 = Vector<vector_bytes>::U16;
    PickedTaps(const SourceRow<u16>& source, const Columns& steps)
        : row(source), columns(steps), windows(source)
    {}
    TapVectors<U16> operator()(u32 i) const
    {
        const U32 a = pairs(i), b = pairs(i + lane_count<U32>);
        return {low_halves(a, b), high_halves(a, b)};
    }

private:
    U32 pairs(u32 i) const
    {
        const i64 base = columns.base(i);
        const U32 index = columns.positions<U32>(i) >> 16;
        if constexpr (reach == Reach::any) {
            const U32 left = at_most(index, row.last - base), right = at_most(index + 1, row.last - base);
            U32 v;
            for (u32 k = 0; k < lane_count<U32>; ++k)
                v[k] = load<u16>(row.at(base + left[k])) | u32{load<u16>(row.at(base + right[k]))} << 16;
            return v;
        }
        const u8* const window = windows(base);
        const U32 even = pick(load<U32>(window), index >> 1), odd = pick(load<U32>(window + 2), index >> 1);
        return (index & 1) != 0 ? odd : even;
    }

    const SourceRow<u16>& row;
    const Columns& columns;
    Windows<u16, 2 * lane_count<U32> + 1> windows;
};

#elif defined(__SSE2__)

// Both taps of a column with one load. Neither is behind the last pixel.
template <class Pixel> class LoadedTaps;

template <> class LoadedTaps<Pixel8888> {
public:
    using U32 = Vector<16>::U32;
    LoadedTaps(const SourceRow<u32>& source, const Columns& steps) : row(source), columns(steps) {}
    TapVectors<U32> operator()(u32 i) const
    {
        const auto pair = [&](u32 k) {
            return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row.at(columns.left_tap(k))));
        };
        const auto a = reinterpret_cast<__m128>(_mm_unpacklo_epi64(pair(i), pair(i + 1)));
        const auto b = reinterpret_cast<__m128>(_mm_unpacklo_epi64(pair(i + 2), pair(i + 3)));
        return {reinterpret_cast<U32>(_mm_shuffle_ps(a, b, 0x88)),
                reinterpret_cast<U32>(_mm_shuffle_ps(a, b, 0xDD))};
    }

private:
    const SourceRow<u32>& row;
    const Columns& columns;
};

template <> class LoadedTaps<Pixel565> {
public:
    using U32 = Vector<16>::U32;
    using U16 = Vector<16>::U16;
    LoadedTaps(const SourceRow<u16>& source, const Columns& steps) : row(source), columns(steps) {}
    TapVectors<U16> operator()(u32 i) const
    {
        const U32 a = pairs(i), b = pairs(i + 4);
        return {low_halves(a, b), high_halves(a, b)};
    }

private:
    U32 pairs(u32 i) const
    {
        const auto pair = [&](u32 k) { return load<u32>(row.at(columns.left_tap(k))); };
        return U32{pair(i), pair(i + 1), pair(i + 2), pair(i + 3)};
    }

    const SourceRow<u16>& row;
    const Columns& columns;
};

#endif

} // namespace
} // namespace vexlor

// A row covered by vectors without a scalar rest: as wide as fit, the last one overlapping the one before.
#pragma once

#include "row/lanes.h"

namespace vexlor {
namespace {

// Two vectors of pixels, in the order of the row.
template <class Pixels> struct Twice {
    Pixels low, high;
};

// How a routine reads and writes so many bytes of its row in a vector's register.
template <u32 Bytes> struct Whole {
    static constexpr u32 span = Bytes;
    static constexpr u32 bytes = Bytes; // of the register
    using U32 = typename Vector<Bytes>::U32;

    template <class V = U32> V load(const void* at) const { return vexlor::load<V>(at); }
    template <class V> void store(void* at, V v) const { vexlor::store(at, v); }
    Twice<U32> load_twice(const void* at) const { return {load(at), load(moved(at, Bytes))}; }
    void store_twice(void* at, Twice<U32> v) const
    {
        store(at, v.low);
        store(moved(at, Bytes), v.high);
    }
    U32 units(const auto& source, u32 i) const { return source.template pixels<U32>(i); }
};

#if defined(__SSE2__)

// The first bytes of a vector of 16, and nothing behind them.
template <u32 Bytes, class V> inline V load_part(const void* at)
{
    if constexpr (Bytes == 16)
        return load<V>(at);
    else if constexpr (Bytes % 4 == 2 && Bytes > 2) {
        const auto whole_words = load_part<Bytes - 2, __m128i>(at);
        const u16 rest = load<u16>(moved(at, Bytes - 2));
        return reinterpret_cast<V>(_mm_insert_epi16(whole_words, rest, Bytes / 2 - 1));
    } else if constexpr (Bytes == 12)
        return reinterpret_cast<V>(
            _mm_unpacklo_epi64(load_part<8, __m128i>(at), load_part<4, __m128i>(moved(at, 8))));
    else if constexpr (Bytes == 8)
        return reinterpret_cast<V>(_mm_loadl_epi64(static_cast<const __m128i*>(at)));
    else if constexpr (Bytes == 4)
        return reinterpret_cast<V>(_mm_cvtsi32_si128(load<i32>(at)));
    else
        return reinterpret_cast<V>(_mm_cvtsi32_si128(load<u16>(at)));
}
template <u32 Bytes, class V> inline void store_part(void* at, V v)
{
    const auto bits = reinterpret_cast<__m128i>(v);
    if constexpr (Bytes == 16) {
        store(at, v);
    } else if constexpr (Bytes % 4 == 2 && Bytes > 2) {
        store_part<Bytes - 2>(at, v);
        store(moved(at, Bytes - 2), static_cast<u16>(_mm_extract_epi16(bits, Bytes / 2 - 1)));
    } else if constexpr (Bytes == 12) {
        store_part<8>(at, v);
        store_part<4>(moved(at, 8), _mm_unpackhi_epi64(bits, bits));
    } else if constexpr (Bytes == 8) {
        _mm_storel_epi64(static_cast<__m128i*>(at), bits);
    } else if constexpr (Bytes == 4) {
        store(at, _mm_cvtsi128_si32(bits));
    } else {
        store(at, static_cast<u16>(_mm_cvtsi128_si32(bits)));
    }
}

// Part of the smallest vector: its first 4, 8 or 12 bytes, or any odd number of its 16-bit units.
template <u32 Bytes> struct Part {
    static constexpr u32 span = Bytes;
    static constexpr u32 bytes = 16;
    using U32 = Vector<16>::U32;

    template <class V = U32> V load(const void* at) const { return load_part<Bytes, V>(at); }
    template <class V> void store(void* at, V v) const { store_part<Bytes>(at, v); }
    Twice<U32> load_twice(const void* at) const
    {
        if constexpr (Bytes <= 8)
            return {load_part<2 * Bytes, U32>(at), U32{}};
        else
            return {vexlor::load<U32>(at), load_part<2 * Bytes - 16, U32>(moved(at, 16))};
    }
    void store_twice(void* at, Twice<U32> v) const
    {
        if constexpr (Bytes <= 8) {
            store_part<2 * Bytes>(at, v.low);
        } else {
            vexlor::store(at, v.low);
            store_part<2 * Bytes - 16>(moved(at, 16), v.high);
        }
    }
    U32 units(const auto& source, u32 i) const { return source.template part<Bytes, U32>(i); }
};

// The last vector is made first, from units as they were. Flat: calls within the loop would cost more than the pixels.
template <class Vector, u32 Unit> [[gnu::flatten]] inline void cover_by(u32 count, auto make, auto put)
{
    constexpr Vector vector;
    constexpr u32 units = Vector::span / Unit;
    const u32 last = count - units;
    const auto end = make(vector, last);
    for (u32 i = 0; i < last; i += units)
        put(vector, i, make(vector, i));
    put(vector, last, end);
}

// Covers a row of units of so many bytes: make(vector, i) reads the units from i on, put(vector, i, made) writes them,
// where vector is a Whole or a Part.
template <u32 Unit> inline void cover(u32 count, auto make, auto put)
{
    if constexpr (vector_bytes >= 64)
        if (count >= 64 / Unit)
            return cover_by<Whole<64>, Unit>(count, make, put);
    if constexpr (vector_bytes >= 32)
        if (count >= 32 / Unit)
            return cover_by<Whole<32>, Unit>(count, make, put);
    if (count >= 16 / Unit)
        return cover_by<Whole<16>, Unit>(count, make, put);
    if constexpr (Unit == 2)
        switch (count) {
        case 7: return cover_by<Part<14>, Unit>(count, make, put);
        case 5: return cover_by<Part<10>, Unit>(count, make, put);
        case 3: return cover_by<Part<6>, Unit>(count, make, put);
        case 1: return cover_by<Part<2>, Unit>(count, make, put);
        }
    if (count >= 12 / Unit)
        return cover_by<Part<12>, Unit>(count, make, put);
    if (count >= 8 / Unit)
        return cover_by<Part<8>, Unit>(count, make, put);
    if (count >= 4 / Unit)
        return cover_by<Part<4>, Unit>(count, make, put);
}

#endif

} // namespace
} // namespace vexlor

// Vectors of the units of a row: whole ones, and parts that reach nothing behind a row's end.
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
    U32 units_of(const auto& source, u32 i) const { return source.template pixels<U32>(i); }
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
    U32 units_of(const auto& source, u32 i) const { return source.template part<Bytes, U32>(i); }
};

#if defined(__AVX512BW__)

inline __mmask32 first_of_32(u32 units) { return static_cast<__mmask32>((u64{1} << units) - 1); }
inline __mmask16 first_of_16(u32 units) { return static_cast<__mmask16>((1u << units) - 1); }

template <u32 Unit, class V> inline V load_first(const void* at, u32 units)
{
    if constexpr (Unit == 2)
        return reinterpret_cast<V>(_mm512_maskz_loadu_epi16(first_of_32(units), at));
    else
        return reinterpret_cast<V>(_mm512_maskz_loadu_epi32(first_of_16(units), at));
}
template <u32 Unit> inline void store_first(void* at, u32 units, auto v)
{
    if constexpr (Unit == 2)
        _mm512_mask_storeu_epi16(at, first_of_32(units), reinterpret_cast<__m512i>(v));
    else
        _mm512_mask_storeu_epi32(at, first_of_16(units), reinterpret_cast<__m512i>(v));
}

// The first units of a vector, whose number is known at run time alone.
template <u32 Unit> struct First {
    static constexpr u32 bytes = 64;
    static constexpr u32 all = bytes / Unit;
    using U32 = Vector<bytes>::U32;

    u32 units; // 0 to all

    template <class V = U32> V load(const void* at) const { return load_first<Unit, V>(at, units); }
    void store(void* at, auto v) const { store_first<Unit>(at, units, v); }
    Twice<U32> load_twice(const void* at) const
    {
        return {load_first<Unit, U32>(at, low_units()),
                load_first<Unit, U32>(moved(at, bytes), high_units())};
    }
    void store_twice(void* at, Twice<U32> v) const
    {
        store_first<Unit>(at, low_units(), v.low);
        store_first<Unit>(moved(at, bytes), high_units(), v.high);
    }
    U32 units_of(const auto& source, u32 i) const { return source.template first<U32>(i, units); }

private:
    u32 low_units() const { return 2 * units < all ? 2 * units : all; }
    u32 high_units() const { return 2 * units - low_units(); }
};

#endif

#endif

// Where a row's vectors of 32-bit pixels go. Lines of the cache that follow are fetched ahead when told so.
struct Target {
    static constexpr uintptr_t ahead = 1024; // bytes; any address will do
    u32* row;
    bool fetching;

    void operator()(auto vector, u32 i, auto pixels) const
    {
        if (fetching)
            __builtin_prefetch(moved(row + i, ahead), 1);
        vector.store(row + i, pixels);
    }
    // The pixels of pairs.
    void twice(auto vector, i32 i, auto pixels) const
    {
        u32* const at = row + ptrdiff_t{i} * 2;
        if (fetching) {
            __builtin_prefetch(moved(at, ahead), 1);
            __builtin_prefetch(moved(at, ahead + vector.bytes), 1);
        }
        vector.store_twice(at, pixels);
    }
};
constexpr u32 far_from = 1 << 18; // so many pixels do not stay in the second cache: it pays to fetch ahead

} // namespace
} // namespace vexlor

// Both passes of the box filter at once, for a picture that is halved: no row of values would serve twice.
#pragma once

#include "filter/mean_linear.h"
#include "filter/taps.h"

namespace vexlor {
namespace {

#if defined(__AVX2__)

inline __m256i multiply_high(__m256i a, __m256i b) { return _mm256_mulhi_epu16(a, b); }
inline __m256i multiply_add_words(__m256i a, __m256i b) { return _mm256_madd_epi16(a, b); }
inline __m256i add_words(__m256i a, __m256i b) { return _mm256_add_epi16(a, b); }
#if defined(__AVX512BW__)
inline __m512i multiply_high(__m512i a, __m512i b) { return _mm512_mulhi_epu16(a, b); }
inline __m512i multiply_add_words(__m512i a, __m512i b) { return _mm512_madd_epi16(a, b); }
inline __m512i add_words(__m512i a, __m512i b) { return _mm512_add_epi16(a, b); }
#endif

using HalvingBits = Native<vector_bytes>::Type;

inline HalvingBits every_word(u32 word) { return native(Vector<vector_bytes>::U32{} + word * 0x10001); }
// 127/256 of channels in 16 bits each.
inline HalvingBits lessened(HalvingBits sums) { return multiply_high(sums, every_word(127 << 8)); }

// Of the pixels of a vector, two by two.
inline HalvingBits mean_across(const u8* at)
{
    const __m128i neighbours = _mm_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15);
    return lessened(multiply_add_bytes(shuffle_bytes(load<HalvingBits>(at), neighbours), every_word(0x0101)));
}
inline HalvingBits mean_of_both(const u8* above, const u8* below)
{
    return lessened(add_words(mean_across(above), mean_across(below)));
}
// A vector of pixels from two windows of twice as many, one above the other.
inline HalvingBits halved_8888(const u8* above, const u8* below)
{
    return from_pack_order(
        pack_unsigned(mean_of_both(above, below), mean_of_both(above + vector_bytes, below + vector_bytes)));
}

// The fields of 565 pixels, in lanes of their own.
template <class Lanes> struct Fields {
    Lanes red, green, blue;
};

// Of the pixels of a vector, two by two.
inline auto fields_across(const u8* at)
{
    using U32 = Vector<vector_bytes>::U32;
    const auto v = load<Vector<vector_bytes>::U16>(at);
    const auto sum = [](auto fields, u32 times) {
        return reinterpret_cast<U32>(multiply_add_words(native(fields), every_word(times)));
    };
    return Fields<U32>{sum(v >> 11, 15) >> 5, sum(v >> 5 & 63, 31) >> 6, sum(v & 31, 15) >> 5};
}
inline HalvingBits halved_565(const u8* above, const u8* below)
{
    using U16 = Vector<vector_bytes>::U16;
    using U32 = Vector<vector_bytes>::U32;
    const auto fields_of_both = [=](u32 bytes) {
        const auto a = fields_across(above + bytes), b = fields_across(below + bytes);
        return Fields<U32>{a.red + b.red, a.green + b.green, a.blue + b.blue};
    };
    const auto low = fields_of_both(0), high = fields_of_both(vector_bytes);
    const auto packed = [](auto a, auto b) {
        return reinterpret_cast<U16>(pack_units(native(a), native(b)));
    };
    const U16 r = packed(low.red, high.red) * (15 << 6) & 0xF800;
    const U16 g = packed(low.green, high.green) * 31 >> 1 & 0x07E0;
    const U16 b = packed(low.blue, high.blue) * 15 >> 5;
    return from_pack_order(native(r | g | b));
}

// Halves two rows into one through halved(window above, window below), which makes a vector of pixels from two of each.
template <class Pixel, bool Fetching = true>
bool halve(const TapRow* rows, const vexlor_filter_params& p, void* out, auto halved)
{
    using Word = typename Pixel::Word;
    constexpr ptrdiff_t pixels = vector_bytes / sizeof(Word); // of a vector
    const auto upper = source_row<Word>(rows[0]), lower = source_row<Word>(rows[1]);
    const i64 first = Mean::first_tap(0, p);
    // All pixels but the last one find both taps inside the row, and that one finds the row's last pixel twice.
    const i64 inside = (i64{upper.last} + 1 - first) / 2;
    if (p.xstep != 0x20000 || inside < pixels || inside + 1 != p.count)
        return false;
    auto* to = static_cast<Word*>(out);
    Word* const end = to + inside;
    const auto of_last = [](const auto& row) {
        const u32 pixel = load<Word>(row.at(row.last));
        return Pixel::mean(pixel, pixel);
    };
    store(end, static_cast<Word>(Pixel::mean(of_last(upper), of_last(lower))));
    const u8 *above = upper.at(first), *below = lower.at(first);
    constexpr size_t window = size_t{2} * vector_bytes, prefetched = 512; // bytes ahead, measured
    for (; end - to > pixels; to += pixels, above += window, below += window) {
        // Pairs of pixels lie across two lines of the cache each: read from farther away, they are late.
        for (u32 line = 0; Fetching && line < window; line += 64) {
            __builtin_prefetch(moved(above, prefetched + line)); // any address will do
            __builtin_prefetch(moved(below, prefetched + line));
        }
        store(to, halved(above, below));
    }
    // The last vector ends where these pixels do, and may make some anew.
    const uintptr_t again = bytes_of(pixels - (end - to), 2 * sizeof(Word));
    store(end - pixels, halved(moved(above, -again), moved(below, -again)));
    return true;
}

// Where the next row needs other rows.
inline bool halve_8888(const TapRow* rows, const vexlor_filter_params& p, void* out)
{
    return p.yhalf >= 0x10000 && halve<Pixel8888>(rows, p, out, halved_8888);
}
inline bool halve_565(const TapRow* rows, const vexlor_filter_params& p, void* out)
{
    return p.yhalf >= 0x10000 && halve<Pixel565>(rows, p, out, halved_565);
}

// 127/256 of the sum of a pixel's mean with itself are 254/256 of the mean.
inline HalvingBits mean_of_one(const u8* at) { return multiply_high(mean_across(at), every_word(254 << 8)); }

// A row that mixes with no other, which was made a moment ago.
inline bool halve_row_8888(const TapRow* rows, const vexlor_filter_params& p, void* out)
{
    const auto halved = [](const u8* at, const u8*) {
        return from_pack_order(pack_unsigned(mean_of_one(at), mean_of_one(at + vector_bytes)));
    };
    return rows[0] == rows[1] && halve<Pixel8888, false>(rows, p, out, halved);
}

#else

inline bool halve_8888(const TapRow*, const vexlor_filter_params&, void*) { return false; }
inline bool halve_565(const TapRow*, const vexlor_filter_params&, void*) { return false; }
inline bool halve_row_8888(const TapRow*, const vexlor_filter_params&, void*) { return false; }

#endif

} // namespace
} // namespace vexlor

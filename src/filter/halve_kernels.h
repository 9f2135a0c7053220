// Both passes of the 32-bit box filter at once, for a picture that is halved: no row of values would serve twice.
#pragma once

#include "filter/mean_linear.h"
#include "filter/taps.h"

namespace vexlor {
namespace {

#if defined(__AVX2__)

inline __m256i multiply_high(__m256i a, __m256i b) { return _mm256_mulhi_epu16(a, b); }
inline __m256i add_words(__m256i a, __m256i b) { return _mm256_add_epi16(a, b); }
#if defined(__AVX512BW__)
inline __m512i multiply_high(__m512i a, __m512i b) { return _mm512_mulhi_epu16(a, b); }
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
inline HalvingBits halved(const u8* above, const u8* below)
{
    return from_pack_order(
        pack_unsigned(mean_of_both(above, below), mean_of_both(above + vector_bytes, below + vector_bytes)));
}

#endif

inline bool halve_8888([[maybe_unused]] const TapRow* rows, [[maybe_unused]] const vexlor_filter_params& p,
                       [[maybe_unused]] void* out)
{
#if defined(__AVX2__)
    constexpr u32 pixels = vector_bytes / 4; // of a vector
    const auto upper = source_row<u32>(rows[0]), lower = source_row<u32>(rows[1]);
    const i64 first = Mean::first_tap(0, p);
    // All vectors but the last one, which makes pixels anew, find their taps inside the row: up to the third-last one.
    if (p.xstep != 0x20000 || p.yhalf < 0x10000 || p.count < pixels ||
        first + i64{p.count} * 2 - 3 > upper.last)
        return false;
    const u32 last = p.count - pixels;
    const Windows<u32, 2 * pixels> upper_end(upper), lower_end(lower); // made long before they are read
    auto* const to = static_cast<u32*>(out);
    const u8 *above = upper.at(first), *below = lower.at(first);
    constexpr size_t window = size_t{2} * vector_bytes, prefetched = 512; // bytes ahead, measured
    for (u32 i = 0; i < last; i += pixels, above += window, below += window) {
        // Pairs of pixels lie across two lines of the cache each: read from farther away, they are late.
        for (u32 line = 0; line < window; line += 64) {
            __builtin_prefetch(above + prefetched + line);
            __builtin_prefetch(below + prefetched + line);
        }
        store(to + i, halved(above, below));
    }
    const i64 end = first + i64{last} * 2;
    store(to + last, halved(upper_end(end), lower_end(end)));
    return true;
#else
    return false;
#endif
}

} // namespace
} // namespace vexlor

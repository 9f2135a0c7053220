// Mixes of vectors of pixels by factors from 0 to 256, whose products fit 16 bits. Each gives the bytes of the lane words
// of over.h.
#pragma once

#include "row/byte_ops.h"

namespace vexlor {
namespace {

template <class U32> inline auto channels(U32 pixels)
{
    return reinterpret_cast<typename Vector<sizeof(U32)>::U16>(pixels);
}

// The even bytes of one and the odd bytes of the other.
template <class U32> inline U32 even_and_odd(U32 even, U32 odd)
{
#if defined(__AVX512BW__)
    if constexpr (sizeof(U32) == 64) // compilers tend to take two instructions
        return reinterpret_cast<U32>(
            _mm512_ternarylogic_epi32(native(U32{} + lanes), native(even), native(odd), 0xCA));
    else
#endif
        return (even & lanes) | (odd & ~lanes);
}

// Channels of straight colour must not borrow from each other, and cannot in lanes of their own. The odd ones' products stay
// where they are: what lies below them is not kept. The even ones' come from the products of both, less what the odd ones
// put into their upper bytes.
template <class U32, class U16> inline U32 mix_straight(U32 s, U32 d, U16 f)
{
    const U16 odd = ((channels(s) >> 8) - (channels(d) >> 8)) * f;
    const U16 both = (channels(s) - channels(d)) * f;
    const U16 mixed = odd + (channels(d) & 0xFF00), even_d = channels(d) - odd;
#if defined(__AVX512BW__)
    if constexpr (sizeof(U32) == 64)
        return reinterpret_cast<U32>(
            _mm512_mask_add_epi8(native(mixed), bytes_of_units(lanes), native(both >> 8), native(even_d)));
#endif
    return even_and_odd(reinterpret_cast<U32>((both >> 8) + even_d), reinterpret_cast<U32>(mixed));
}

#if defined(__SSSE3__)
// By one factor from 1 to 255. s * f + d * (256 - f) of every byte: one product of unsigned weights and bytes that a bias
// makes signed.
constexpr u32 bias = 0x80808080;
template <class U32> inline auto byte_weights(u32 f)
{
    return native(U32{} + (f | (256 - f) << 8) * 0x10001);
}
template <class U32> inline U32 mix_biased_bytes(U32 s, U32 d, auto weights)
{
    using I16 = typename Vector<sizeof(U32)>::I16;
    const auto low = reinterpret_cast<I16>(multiply_add_bytes(weights, zip_bytes_low(native(s), native(d))));
    const auto high =
        reinterpret_cast<I16>(multiply_add_bytes(weights, zip_bytes_high(native(s), native(d))));
    return reinterpret_cast<U32>(pack_signed(native(low >> 8), native(high >> 8)));
}
template <class U32> inline U32 mix_bytes(U32 s, U32 d, auto weights)
{
    return mix_biased_bytes(s ^ bias, d ^ bias, weights) ^ bias;
}
#endif

// The fraction of an upper channel's product is subtracted, too, and borrows from that channel: sums and differences are those
// of whole words. Below the odd channels all bits are set, so that what their products have there borrows nothing.
template <class U32, class U16> inline U32 mix_premultiplied(U32 s, U32 d, U16 f)
{
    const auto times_f = [=](U16 v) { return reinterpret_cast<U32>(v * f); };
    const U32 even_d = d & lanes;
    const U32 even = (s & lanes) + even_d - (times_f(channels(even_d)) >> 8);
    const U32 odd = (s & ~lanes) + ((d & ~lanes) | 0xFF) - times_f(channels(d) >> 8);
    return even_and_odd(even, odd);
}

// The same, fastest for sources that are what they should be: no channel more than its alpha.
template <class U32, class U16> inline U32 mix_covering(U32 s, U32 d, U16 f)
{
#if defined(__AVX512BW__)
    if constexpr (sizeof(U32) == 64) {
        // What is left of d: of an upper channel d * (256 - f) / 256, of a lower one d - d * f / 256. They differ in how they
        // round, and the upper one is what a borrow leaves.
        constexpr __mmask32 upper = 0xAAAAAAAA;
        const auto lower_bytes = bytes_of_units(0xFFFF), even_bytes = bytes_of_units(lanes),
                   odd_bytes = bytes_of_units(~lanes);
        const auto g =
            reinterpret_cast<U16>(_mm512_mask_sub_epi16(native(f), upper, _mm512_set1_epi16(256), native(f)));
        const U16 even = (channels(d) & 0xFF) * g, odd = (channels(d) >> 8) * g;
        const auto upper_halves = _mm512_set4_epi32(0x0F0F0D0D, 0x0B0B0909, 0x07070505, 0x03030101);
        const auto lower_halves = _mm512_set4_epi32(0x0E0E0C0C, 0x0A0A0808, 0x06060404, 0x02020000);
        const auto products = _mm512_mask_shuffle_epi8(native(odd), even_bytes, native(even), upper_halves);
        const auto left = _mm512_mask_sub_epi8(products, lower_bytes, native(d), products);
        auto sum = _mm512_add_epi8(native(s), left);
        const __mmask64 full = _mm512_mask_cmplt_epu8_mask(lower_bytes, sum, native(s));
        if (!_kortestz_mask64_u8(full, full)) [[unlikely]] {
            // A fraction of 1, 255 in the product of what is left, borrows nothing where the sum below reaches 256.
            const auto ones = _mm512_set1_epi8(-1);
            const auto fractions =
                _mm512_mask_shuffle_epi8(native(even), odd_bytes, native(odd), lower_halves);
            const auto above = _mm512_mask_cmpeq_epi8_mask(_kshiftli_mask64(full, 2), fractions, ones);
            sum = _mm512_mask_sub_epi8(sum, above, sum, ones);
        }
        return reinterpret_cast<U32>(sum);
    } else
#endif
        return mix_premultiplied(s, d, f);
}

} // namespace
} // namespace vexlor

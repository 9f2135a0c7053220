// YUV 4:2:2 to X8R8G8B8 in single precision, with one rounding per operation and an X byte of 0, for one instruction set.
#pragma once

#include "row/yuv_kernels.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

enum SingleConstant { y_offset, chroma_offset, y_factor, u_in_b, v_in_r, u_in_g, v_in_g };

// A vector of floats: a constant, and what they become, rounded as the processor is set to.
template <u32 Bytes> struct Singles;
template <> struct Singles<16> {
    using F = __m128;
    using I = __m128i;
    static F constant(SingleConstant row) { return _mm_load_ps(VEXLOR_YUV_2_RGB_SSE2_CONSTS[row]); }
    static I rounded(F v) { return _mm_cvtps_epi32(v); }
    static I zip(I a, I b) { return _mm_unpacklo_epi32(a, b); }
    static I zip_high(I a, I b) { return _mm_unpackhi_epi32(a, b); }
};
#if defined(__AVX2__)
template <> struct Singles<32> {
    using F = __m256;
    using I = __m256i;
    static F constant(SingleConstant row) { return _mm256_broadcast_ss(VEXLOR_YUV_2_RGB_SSE2_CONSTS[row]); }
    static I rounded(F v) { return _mm256_cvtps_epi32(v); }
    static I zip(I a, I b) { return _mm256_unpacklo_epi32(a, b); }
    static I zip_high(I a, I b) { return _mm256_unpackhi_epi32(a, b); }
};
#endif
#if defined(__AVX512BW__)
template <> struct Singles<64> {
    using F = __m512;
    using I = __m512i;
    static F constant(SingleConstant row) { return _mm512_set1_ps(VEXLOR_YUV_2_RGB_SSE2_CONSTS[row][0]); }
    static I rounded(F v) { return _mm512_cvtps_epi32(v); }
};
#endif

// Pixels with an X byte of 0 from words: in each 128-bit lane four left pixels, then four right ones.
template <u32 Bytes, class I> inline Twice<typename Vector<Bytes>::U32> pixels_of_sides(I r, I g, I b)
{
    using U32 = typename Vector<Bytes>::U32;
    const auto rb = pack_unsigned(r, b), xg = pack_unsigned(I{}, g);
#if defined(__AVX512VBMI__)
    if constexpr (Bytes == 64) {
        // By bytes of the pixels, from the two halves of the vector. Those of g lie where those of b do.
        alignas(64) static constexpr auto places = [] {
            struct {
                u8 of[64];
            } t{};
            for (u32 i = 0; i < 64; ++i) {
                const u32 pair = i / 8, right = i / 4 % 2, channel = i % 4;
                t.of[i] = static_cast<u8>(pair / 4 * 16 + pair % 4 + right * 4 + (channel == 1 ? 0 : 8));
            }
            return t;
        }();
        const I low = load<I>(places.of), high = low + native(U32{} + 0x20202020);
        const auto of_rb = bytes_of_units(0xFF00FF00), of_g = bytes_of_units(0xFF0000);
        const auto half = [&](I place) {
            return reinterpret_cast<U32>(_mm512_mask_permutexvar_epi8(
                _mm512_maskz_permutexvar_epi8(of_rb, place, rb), of_g, place, xg));
        };
        return {half(low), half(high)};
    }
#endif
    if constexpr (Bytes < 64) {
        using S = Singles<Bytes>;
        const auto xr = zip_bytes_low(xg, rb), gb = zip_bytes_high(xg, rb);
        const auto left = zip_words_low(xr, gb), right = zip_words_high(xr, gb);
        return {reinterpret_cast<U32>(S::zip(left, right)), reinterpret_cast<U32>(S::zip_high(left, right))};
    }
}

// The left and the right pixels of pairs have their chroma in common.
template <class Yuv, u32 Bytes> inline auto decode_single(typename Vector<Bytes>::U32 row)
{
    using U32 = typename Vector<Bytes>::U32;
    using S = Singles<Bytes>;
    using F = typename S::F;
    const U32 pairs = Bytes == 64 ? row : reinterpret_cast<U32>(in_zip_order(native(row)));
    // A byte within the digits of 2^23, or one place higher of 2^15, less that and its offset: exact.
    const auto field = [&](u32 shift, SingleConstant offset) {
        const U32 half = shift < 16 ? pairs : pairs >> 16;
        const auto digits = shift % 16 == 0 ? (half & 0xFF) | 0x4B000000 : (half & 0xFF00) | 0x47000000;
        return reinterpret_cast<F>(digits) - (S::constant(offset) + (shift % 16 == 0 ? 0x1p23F : 0x1p15F));
    };
    const F u = field(Yuv::u, chroma_offset), v = field(Yuv::v, chroma_offset);
    const F y0 = field(Yuv::y0, y_offset) * S::constant(y_factor),
            y1 = field(Yuv::y1, y_offset) * S::constant(y_factor);
    const auto both = [&](auto channel) {
        return pack_units(S::rounded(channel(y0)), S::rounded(channel(y1)));
    };
    const F rv = v * S::constant(v_in_r), gu = u * S::constant(u_in_g), gv = v * S::constant(v_in_g),
            bu = u * S::constant(u_in_b);
    return pixels_of_sides<Bytes>(both([&](F y) { return y + rv; }), both([&](F y) { return y + gu + gv; }),
                                  both([&](F y) { return y + bu; }));
}

// A single pair in integers, with an X byte of 255.
template <class Yuv> inline void decode_pair(const void* src, void* dst)
{
#if defined(__AVX2__)
    // In each half of a vector the channels of a pixel. Each is a sum of products, of luma and of one chroma, and g has the
    // other chroma, too.
    constexpr u32 zero = 0x8080;
    const auto word = [](u32 shift) { return shift / 8 | 0x8000; };
    const auto words = [](u32 low, u32 high) { return static_cast<int>(low | high << 16); };
    const auto factors = [](i32 low, i32 high) { return static_cast<int>((low & 0xFFFF) | high * 0x10000); };
    const auto twice = [](__m128i v) { return _mm256_broadcastsi128_si256(v); };
    const auto of_pixel = [=](u32 y) {
        const int yv = words(word(y), word(Yuv::v));
        return _mm_setr_epi32(words(zero, zero), yv, yv, words(word(y), word(Yuv::u)));
    };
    const __m128i of_g = _mm_setr_epi32(-1, -1, words(word(Yuv::u), zero), -1);
    const __m256i pair = _mm256_set1_epi32(load<i32>(src));
    const __m256i main =
        _mm256_madd_epi16(_mm256_shuffle_epi8(pair, _mm256_setr_m128i(of_pixel(Yuv::y0), of_pixel(Yuv::y1))),
                          twice(_mm_setr_epi32(0, factors(298, 409), factors(298, -208), factors(298, 516))));
    const __m256i rest =
        _mm256_madd_epi16(_mm256_shuffle_epi8(pair, twice(of_g)), _mm256_set1_epi32(-100 & 0xFFFF));
    constexpr i32 offset = 128 - 298 * 16;
    const __m256i offsets =
        twice(_mm_setr_epi32(255 * 256, offset - 409 * 128, offset + (208 + 100) * 128, offset - 516 * 128));
    const __m256i channels = _mm256_srai_epi32(_mm256_add_epi32(_mm256_add_epi32(main, rest), offsets), 8);
    const __m256i halves = _mm256_packs_epi32(channels, channels),
                  bytes = _mm256_packus_epi16(halves, halves);
    store(dst, _mm256_cvtsi256_si32(bytes));
    store(moved(dst, 4), _mm_cvtsi128_si32(_mm256_extracti128_si256(bytes, 1)));
#else
    constexpr Part<4> vector;
    vector.store_twice(dst, PairVector<16>::decode<Yuv, X8R8G8B8>(vector.load(src)));
#endif
}

// Pairs before the destination's first 16-byte boundary and a last single pair take the integer arithmetic, with an X
// byte of 255. A destination off by less than a pair never reaches a boundary.
template <class Yuv> void decode_row_single(const void* src, void* dst, i32 count)
{
    const i32 pairs = whole_pairs(count);
    const auto in_integers = [=](i32 i) { decode_pair<Yuv>(pair_at(src, i), left_pixel_at(dst, i)); };
    const auto behind = reinterpret_cast<uintptr_t>(dst) % 16; // a boundary
    const i32 i = behind != 0;
    if (behind % 8 != 0 || i >= pairs)
        return decode_row<Yuv, X8R8G8B8>(src, dst, count);
    if (i != 0)
        in_integers(0);
    const i32 in_vectors = (pairs - i) & ~1;
    const void* const from = pair_at(src, i);
    void* const to = left_pixel_at(dst, i);
    const auto make = [=](auto vector, i32 k) {
        return decode_single<Yuv, vector.bytes>(vector.load(pair_at(from, k)));
    };
    const auto put = [=](auto vector, i32 k, auto pixels) {
        vector.store_twice(left_pixel_at(to, k), pixels);
    };
    if (constexpr Part<8> block; vector_bytes == 64 && in_vectors == 2) // sooner done than a wide vector
        put(block, 0, make(block, 0));
    else
        for_pairs(2 * in_vectors, make, put, [](i32) {});
    if (pairs - i != in_vectors)
        in_integers(pairs - 1);
}

#else

template <class Yuv> constexpr vexlor_convert_fn decode_row_single = nullptr;

#endif

} // namespace
} // namespace vexlor

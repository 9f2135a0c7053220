// YUV 4:2:2 to X8R8G8B8 in single precision, with one rounding per operation and an X byte of 0, for one instruction set.
#pragma once

#include "row/yuv_kernels.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

enum SingleConstant { y_offset, chroma_offset, y_factor, u_in_b, v_in_r, u_in_g, v_in_g };

// A vector of floats: a constant, what integers are, and what they become, rounded as the processor is set to.
template <u32 Bytes> struct Singles;
template <> struct Singles<16> {
    using F = __m128;
    using I = __m128i;
    static F constant(SingleConstant row) { return _mm_load_ps(VEXLOR_YUV_2_RGB_SSE2_CONSTS[row]); }
    static F of(I v) { return _mm_cvtepi32_ps(v); }
    static I rounded(F v) { return _mm_cvtps_epi32(v); }
    static I pack(I a, I b) { return _mm_packs_epi32(a, b); }
    static I zip(I a, I b) { return _mm_unpacklo_epi32(a, b); }
    static I zip_high(I a, I b) { return _mm_unpackhi_epi32(a, b); }
};
#if defined(__AVX2__)
template <> struct Singles<32> {
    using F = __m256;
    using I = __m256i;
    static F constant(SingleConstant row) { return _mm256_broadcast_ss(VEXLOR_YUV_2_RGB_SSE2_CONSTS[row]); }
    static F of(I v) { return _mm256_cvtepi32_ps(v); }
    static I rounded(F v) { return _mm256_cvtps_epi32(v); }
    static I pack(I a, I b) { return _mm256_packs_epi32(a, b); }
    static I zip(I a, I b) { return _mm256_unpacklo_epi32(a, b); }
    static I zip_high(I a, I b) { return _mm256_unpackhi_epi32(a, b); }
};
#endif
#if defined(__AVX512BW__)
template <> struct Singles<64> {
    using F = __m512;
    using I = __m512i;
    static F constant(SingleConstant row) { return _mm512_set1_ps(VEXLOR_YUV_2_RGB_SSE2_CONSTS[row][0]); }
    static F of(I v) { return _mm512_cvtepi32_ps(v); }
    static I rounded(F v) { return _mm512_cvtps_epi32(v); }
    static I pack(I a, I b) { return _mm512_packs_epi32(a, b); }
    static I zip(I a, I b) { return _mm512_unpacklo_epi32(a, b); }
    static I zip_high(I a, I b) { return _mm512_unpackhi_epi32(a, b); }
};
#endif

// The left and the right pixels of pairs have their chroma in common.
template <class Yuv, u32 Bytes> inline auto decode_single(typename Vector<Bytes>::U32 row)
{
    using U32 = typename Vector<Bytes>::U32;
    using S = Singles<Bytes>;
    using F = typename S::F;
    const U32 pairs = reinterpret_cast<U32>(in_zip_order(native(row)));
    const auto field = [&](u32 shift) { return S::of(native(pairs >> shift & 0xFF)); };
    const auto luma = [&](u32 shift) {
        return (field(shift) - S::constant(y_offset)) * S::constant(y_factor);
    };
    const F u = field(Yuv::u) - S::constant(chroma_offset), v = field(Yuv::v) - S::constant(chroma_offset);
    const F y0 = luma(Yuv::y0), y1 = luma(Yuv::y1);
    const auto both = [&](auto channel) { return S::pack(S::rounded(channel(y0)), S::rounded(channel(y1))); };
    const F rv = v * S::constant(v_in_r), gu = u * S::constant(u_in_g), gv = v * S::constant(v_in_g),
            bu = u * S::constant(u_in_b);
    const auto r = both([&](F y) { return y + rv; });
    const auto g = both([&](F y) { return y + gu + gv; });
    const auto b = both([&](F y) { return y + bu; });
    // Each holds four left pixels, then four right ones.
    const auto xg = pack_unsigned(native(U32{}), g), rb = pack_unsigned(r, b);
    const auto xr = zip_bytes_low(xg, rb), gb = zip_bytes_high(xg, rb);
    const auto left = zip_words_low(xr, gb), right = zip_words_high(xr, gb);
    return Twice<U32>{reinterpret_cast<U32>(S::zip(left, right)),
                      reinterpret_cast<U32>(S::zip_high(left, right))};
}

// Pairs before the destination's first 16-byte boundary and a last single pair take the integer arithmetic, with an X
// byte of 255. A destination off by less than a pair never reaches a boundary.
template <class Yuv> void decode_row_single(const void* src, void* dst, i32 count)
{
    const i32 pairs = whole_pairs(count);
    const auto integers = [=](i32 i, i32 many) {
        decode_row<Yuv, X8R8G8B8>(pair_at(src, i), left_pixel_at(dst, i), 2 * many);
    };
    const auto behind = reinterpret_cast<uintptr_t>(dst) % 16; // a boundary
    const i32 i = behind != 0;
    if (behind % 8 != 0 || i >= pairs)
        return integers(0, pairs);
    integers(0, i);
    const i32 in_vectors = (pairs - i) & ~1;
    const void* const from = pair_at(src, i);
    void* const to = left_pixel_at(dst, i);
    for_pairs(
        2 * in_vectors,
        [=](auto vector, i32 k) { return decode_single<Yuv, vector.bytes>(vector.load(pair_at(from, k))); },
        [=](auto vector, i32 k, auto pixels) { vector.store_twice(left_pixel_at(to, k), pixels); },
        [](i32) {});
    integers(i + in_vectors, pairs - i - in_vectors);
}

#else

template <class Yuv> constexpr vexlor_convert_fn decode_row_single = nullptr;

#endif

} // namespace
} // namespace vexlor

// YUV 4:2:2 to X8R8G8B8, two pairs at a time, in single precision with one rounding per operation. Blocks
// differ from the integer rows by at most one per channel, and carry an X byte of 0. Pairs before the
// destination's first 16-byte boundary and a last single pair take the integer arithmetic, with an X byte of
// 255.
#include "row/yuv.h"

#include <emmintrin.h>

using namespace vexlor;

alignas(16) const float VEXLOR_YUV_2_RGB_SSE2_CONSTS[7][4] = {
    {16.0F, 16.0F, 16.0F, 16.0F},         // off Y
    {128.0F, 128.0F, 128.0F, 128.0F},     // off U and V
    {1.164F, 1.164F, 1.164F, 1.164F},     // Y
    {2.018F, 2.018F, 2.018F, 2.018F},     // U in B
    {1.596F, 1.596F, 1.596F, 1.596F},     // V in R
    {-0.391F, -0.391F, -0.391F, -0.391F}, // U in G
    {-0.813F, -0.813F, -0.813F, -0.813F}, // V in G
};

namespace {

enum ConstantRow { y_offset, chroma_offset, y_factor, u_in_b, v_in_r, u_in_g, v_in_g };
__m128 constant(ConstantRow row) { return _mm_load_ps(VEXLOR_YUV_2_RGB_SSE2_CONSTS[row]); }

__m128 to_float(__m128i bytes) { return _mm_cvtepi32_ps(bytes); }
// The byte at `shift` of each 32-bit lane.
__m128i field(__m128i words, u32 shift)
{
    return _mm_and_si128(_mm_srli_epi32(words, static_cast<int>(shift)), _mm_set1_epi32(0xFF));
}

// Four values per channel, rounded as the processor is set to, become four pixels.
__m128i pack_xrgb(__m128 r, __m128 g, __m128 b)
{
    const __m128i xg = _mm_packs_epi32(_mm_setzero_si128(), _mm_cvtps_epi32(g));
    const __m128i rb = _mm_packs_epi32(_mm_cvtps_epi32(r), _mm_cvtps_epi32(b));
    const __m128i bytes = _mm_packus_epi16(xg, rb);                                   // xxxx gggg rrrr bbbb
    const __m128i pairs = _mm_unpacklo_epi8(bytes, _mm_unpackhi_epi64(bytes, bytes)); // xrxrxrxr gbgbgbgb
    return _mm_unpacklo_epi16(pairs, _mm_unpackhi_epi64(pairs, pairs));
}

template <class Yuv> __m128i decode_two_pairs(const void* src)
{
    static_assert(Yuv::y1 == Yuv::y0 + 16);
    const __m128i pairs = _mm_loadl_epi64(static_cast<const __m128i*>(src));
    const __m128i lumas = _mm_and_si128(_mm_srli_epi32(pairs, Yuv::y0), _mm_set1_epi16(0xFF));
    const __m128i twice = _mm_unpacklo_epi32(pairs, pairs);

    const __m128 y =
        _mm_mul_ps(_mm_sub_ps(to_float(_mm_unpacklo_epi16(lumas, _mm_setzero_si128())), constant(y_offset)),
                   constant(y_factor));
    const __m128 u = _mm_sub_ps(to_float(field(twice, Yuv::u)), constant(chroma_offset));
    const __m128 v = _mm_sub_ps(to_float(field(twice, Yuv::v)), constant(chroma_offset));
    const __m128 r = _mm_add_ps(y, _mm_mul_ps(constant(v_in_r), v));
    const __m128 g =
        _mm_add_ps(_mm_add_ps(y, _mm_mul_ps(constant(u_in_g), u)), _mm_mul_ps(constant(v_in_g), v));
    const __m128 b = _mm_add_ps(y, _mm_mul_ps(constant(u_in_b), u));
    return pack_xrgb(r, g, b);
}

template <class Yuv> void decode_row(const void* src, void* dst, i32 count)
{
    const i32 pairs = whole_pairs(count);
    const auto one = [&](i32 i) { store_pixels(dst, i, decode<Yuv, X8R8G8B8>(load<u32>(pair_at(src, i)))); };
    i32 i = 0;
    for (; i < pairs && reinterpret_cast<uintptr_t>(left_pixel_at(dst, i)) % 16 != 0; ++i)
        one(i);
    for (; pairs - i >= 2; i += 2)
        _mm_store_si128(static_cast<__m128i*>(left_pixel_at(dst, i)), decode_two_pairs<Yuv>(pair_at(src, i)));
    for (; i < pairs; ++i)
        one(i);
}

} // namespace

// clang-format off
void vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2(const void* src, void* dst, int32_t count) { decode_row<Y8V8Y8U8>(src, dst, count); }
void vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2(const void* src, void* dst, int32_t count) { decode_row<U8Y8V8Y8>(src, dst, count); }
// clang-format on

// Parts of two vectors side by side, in order: halves of their 32-bit units, and every second unit.
#pragma once

#include "row/byte_ops.h"
#include "row/permute.h"

namespace vexlor {
namespace {

#if defined(__SSE2__)

// Packs saturate, and work within 128-bit lanes.
inline Vector<16>::U16 low_halves(Vector<16>::U32 a, Vector<16>::U32 b)
{
    const auto signed_half = [](Vector<16>::U32 v) {
        return _mm_srai_epi32(_mm_slli_epi32(reinterpret_cast<__m128i>(v), 16), 16);
    };
    return reinterpret_cast<Vector<16>::U16>(_mm_packs_epi32(signed_half(a), signed_half(b)));
}
#if defined(__AVX2__)
inline Vector<32>::U16 low_halves(Vector<32>::U32 a, Vector<32>::U32 b)
{
    const __m256i halves =
        _mm256_packus_epi32(reinterpret_cast<__m256i>(a & 0xFFFF), reinterpret_cast<__m256i>(b & 0xFFFF));
    return reinterpret_cast<Vector<32>::U16>(from_pack_order(halves));
}
#endif
#if defined(__AVX512BW__)
inline Vector<64>::U16 low_halves(Vector<64>::U32 a, Vector<64>::U32 b)
{
    const __m512i halves =
        _mm512_packus_epi32(reinterpret_cast<__m512i>(a & 0xFFFF), reinterpret_cast<__m512i>(b & 0xFFFF));
    return reinterpret_cast<Vector<64>::U16>(from_pack_order(halves));
}
#endif
template <class U32> inline auto high_halves(U32 a, U32 b) { return low_halves(a >> 16, b >> 16); }

#if defined(__AVX2__)
// Every second unit of two vectors, in order.
inline Vector<32>::U32 even_units(Vector<32>::U32 a, Vector<32>::U32 b)
{
    const auto units = _mm256_shuffle_ps(reinterpret_cast<__m256>(a), reinterpret_cast<__m256>(b), 0x88);
    return reinterpret_cast<Vector<32>::U32>(from_pack_order(native(units)));
}
inline Vector<32>::U32 odd_units(Vector<32>::U32 a, Vector<32>::U32 b)
{
    const auto units = _mm256_shuffle_ps(reinterpret_cast<__m256>(a), reinterpret_cast<__m256>(b), 0xDD);
    return reinterpret_cast<Vector<32>::U32>(from_pack_order(native(units)));
}
#endif
#if defined(__AVX512BW__)
inline Vector<64>::U32 even_units(Vector<64>::U32 a, Vector<64>::U32 b)
{
    return pick_of_two(a, b, lane_numbers<Vector<64>::U32>() * 2);
}
inline Vector<64>::U32 odd_units(Vector<64>::U32 a, Vector<64>::U32 b)
{
    return pick_of_two(a, b, lane_numbers<Vector<64>::U32>() * 2 + 1);
}
#endif

#endif

} // namespace
} // namespace vexlor

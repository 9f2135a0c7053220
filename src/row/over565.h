// Rows of 565 pixels blended over others, for one instruction set. Vectors mix the fields in lanes of 16 bits, as
// row/rgb565.h mixes them in words: what blue exceeds its place by goes into red; green has nothing below it.
#pragma once

#include "row/over.h"
#include "row/rgb565.h"

namespace vexlor {
namespace {

// Weights of 16-bit lanes, up to 256.
template <class U16> inline U16 lane_weights(Constant weight, U16)
{
    return U16{} + static_cast<u16>(weight.f);
}
template <class U16> inline U16 lane_weights(PixelAlpha weight, U16 s)
{
    const U16 a = weight.shift < 16 ? s >> weight.shift & 0xFF : U16{};
    return a + 1 + reinterpret_cast<U16>(a == 0);
}

// 565 pixels by their fields, red and blue at bit 0, green too.
template <class U16> struct Fields565 {
    U16 r, g, b;
    explicit Fields565(U16 v) : r(v >> 11), g(v >> 5 & 63), b(v & 31) {}
};

struct Lerp565 {
    static u32 mix(u32 s, u32 d, u32 w) { return lerp_565(d, s, w); }
    template <class U16> static U16 lanes(U16 s, U16 d, U16 w)
    {
        using I16 = typename Vector<sizeof(U16)>::I16;
        const Fields565<U16> from(d), to(s);
        const auto b = reinterpret_cast<I16>((to.b - from.b) * w + (from.b << 5));
        const auto r = reinterpret_cast<I16>((to.r - from.r) * w + (from.r << 5)) + (b >> 11);
        const auto half_g =
            (reinterpret_cast<I16>((to.g - from.g) * w) >> 1) + reinterpret_cast<I16>(from.g << 5);
        return reinterpret_cast<U16>((r >> 5) << 11 | (half_g & 0x07E0) | (b >> 5 & 31));
    }
};
// The whole product is subtracted, with what lies below the fields, as words do it.
struct Premultiplied565 {
    static u32 mix(u32 s, u32 d, u32 w) { return premultiplied_565(s, d, w); }
    template <class U16> static U16 lanes(U16 s, U16 d, U16 w)
    {
        using I16 = typename Vector<sizeof(U16)>::I16;
        const Fields565<U16> from(d), to(s);
        // Red and blue are one number of which blue's part may borrow from red: r * 2048 + b, less (r * 2048 + b) * w / 32.
        const U16 rw = from.r * w, bw = from.b * w;
        const U16 red = ((to.r + from.r) << 11) - (rw << 6), blue = to.b + from.b - (bw >> 5);
        const U16 rb = red + blue;
        const auto g = reinterpret_cast<I16>((to.g + from.g) << 5) - reinterpret_cast<I16>(from.g * w >> 1);
        return (rb & 0xF81F) | (reinterpret_cast<U16>(g) & 0x07E0);
    }
};

template <class Mix> inline void over_565_pixels(const u16* src, u16* dst, u32 count, auto weight)
{
    for (u32 i = 0; i < count; ++i) {
        const u32 s = load<u16>(src + i);
        store(dst + i, static_cast<u16>(Mix::mix(s, u32{load<u16>(dst + i)}, weight(s))));
    }
}

template <class Mix> inline void over_565(const u16* src, u16* dst, u32 count, auto weight)
{
#if defined(__SSE2__)
    const auto make = [=](auto vector, u32 i) {
        using U16 = typename Vector<vector.bytes>::U16;
        const auto s = vector.template load<U16>(src + i);
        return Mix::lanes(s, vector.template load<U16>(dst + i), lane_weights(weight, s));
    };
    cover<2>(
        count, make, [=](auto vector, u32 i, auto made) { vector.store(dst + i, made); }, dst);
#else
    over_565_pixels<Mix>(src, dst, count, weight);
#endif
}

} // namespace
} // namespace vexlor

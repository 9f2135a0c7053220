// Models of the YUV 4:2:2 rows, one pair of pixels at a time. Layouts are the places of the components in memory.
#pragma once

#include "model_blend.h"
#include <algorithm>
#include <cmath>

namespace model {

struct Pair {
    int y0, v, y1, u;
};
struct Rgb {
    int x, r, g, b;
};
constexpr Pair Y8V8Y8U8{0, 1, 2, 3}, U8Y8V8Y8{1, 2, 3, 0};
constexpr Rgb X8R8G8B8{0, 1, 2, 3}, B8G8R8X8{3, 2, 1, 0};

inline uint8_t clamp(int value) { return static_cast<uint8_t>(std::clamp(value, 0, 255)); }

template <Rgb To> void to_rgb(int y, int u, int v, uint8_t* pixel)
{
    const int c = 298 * (y - 16) + 128, d = u - 128, e = v - 128;
    pixel[To.x] = 255;
    pixel[To.r] = clamp((c + 409 * e) >> 8);
    pixel[To.g] = clamp((c - 100 * d - 208 * e) >> 8);
    pixel[To.b] = clamp((c + 516 * d) >> 8);
}

template <Rgb From> uint8_t luma(const uint8_t* p)
{
    return static_cast<uint8_t>((66 * p[From.r] + 129 * p[From.g] + 25 * p[From.b] + 128) / 256 + 16);
}

template <Pair From, Rgb To> void decode(const uint8_t* s, uint8_t* d, const RowArgs&)
{
    to_rgb<To>(s[From.y0], s[From.u], s[From.v], d);
    to_rgb<To>(s[From.y1], s[From.u], s[From.v], d + 4);
}

template <Rgb From, Pair To> void encode(const uint8_t* s, uint8_t* d, const RowArgs&)
{
    const int r = s[From.r], g = s[From.g], b = s[From.b];
    d[To.y0] = luma<From>(s);
    d[To.y1] = luma<From>(s + 4);
    d[To.u] = static_cast<uint8_t>(((-38 * r - 74 * g + 112 * b) >> 8) + 128);
    d[To.v] = static_cast<uint8_t>(((112 * r - 94 * g - 18 * b) >> 8) + 128);
}

template <Pair From, Rgb To> void blend_to_rgb(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    uint8_t rgb[8];
    decode<From, To>(s, rgb, args);
    straight(rgb, d, args.g);
    straight(rgb + 4, d + 4, args.g);
}

template <Pair Layout> void blend_to_yuv(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    uint8_t rgb[8];
    decode<Layout, X8R8G8B8>(d, rgb, args);
    blend_to_rgb<Layout, X8R8G8B8>(s, rgb, args);
    encode<X8R8G8B8, Layout>(rgb, d, args);
}

// One operation of the vector rows: in doubles these products and sums are exact, so that this is the only rounding.
inline double single(double exact)
{
    const volatile float stored = static_cast<float>(exact);
    return stored;
}
inline uint8_t channel(double value) { return clamp(static_cast<int>(std::lrint(value))); }
inline void floats_to_rgb(int y, int u, int v, uint8_t* pixel)
{
    const double luma = single((y - 16.0) * 1.164f), blue = u - 128, red = v - 128;
    pixel[0] = 0;
    pixel[1] = channel(single(luma + single(red * 1.596f)));
    pixel[2] = channel(single(single(luma + single(blue * -0.391f)) + single(red * -0.813f)));
    pixel[3] = channel(single(luma + single(blue * 2.018f)));
}
template <Pair From> void decode_floats(const uint8_t* s, uint8_t* d, const RowArgs&)
{
    floats_to_rgb(s[From.y0], s[From.u], s[From.v], d);
    floats_to_rgb(s[From.y1], s[From.u], s[From.v], d + 4);
}

} // namespace model

// YUV 4:2:2 pixel pairs and their RGB pixels: layouts as shifts within a 32-bit word, and the integer
// arithmetic between them (studio-range BT.601, coefficients times 256).
#pragma once

#include "base.h"

namespace vexlor {
namespace {

struct Y8V8Y8U8 {
    static constexpr u32 y0 = 0, v = 8, y1 = 16, u = 24;
};
struct U8Y8V8Y8 {
    static constexpr u32 u = 0, y0 = 8, v = 16, y1 = 24;
};
struct X8R8G8B8 {
    static constexpr u32 x = 0, r = 8, g = 16, b = 24;
};
struct B8G8R8X8 {
    static constexpr u32 b = 0, g = 8, r = 16, x = 24;
};

constexpr i32 field(u32 word, u32 shift) { return static_cast<i32>(word >> shift & 0xFF); }
constexpr u32 clamped(i32 value) { return static_cast<u32>(value < 0 ? 0 : value > 254 ? 255 : value); }

// What the two pixels of a pair have in common: the chroma terms of each channel, rounding included.
struct Chroma {
    i32 r, g, b;
};
template <class Yuv> constexpr Chroma chroma(u32 pair)
{
    const i32 d = field(pair, Yuv::u) - 128;
    const i32 e = field(pair, Yuv::v) - 128;
    return {409 * e + 128, -208 * e - 100 * d + 128, 516 * d + 128};
}

template <class Rgb> constexpr u32 rgb_pixel(i32 y, Chroma c)
{
    const i32 luma = (y - 16) * 298;
    return clamped((luma + c.r) >> 8) << Rgb::r | clamped((luma + c.g) >> 8) << Rgb::g |
           clamped((luma + c.b) >> 8) << Rgb::b | 0xFFu << Rgb::x;
}

struct PixelPair {
    u32 left, right;
};
template <class Yuv, class Rgb> constexpr PixelPair decode(u32 pair)
{
    const Chroma c = chroma<Yuv>(pair);
    return {rgb_pixel<Rgb>(field(pair, Yuv::y0), c), rgb_pixel<Rgb>(field(pair, Yuv::y1), c)};
}

template <class Rgb> constexpr u32 luma(u32 pixel)
{
    const i32 sum = 66 * field(pixel, Rgb::r) + 129 * field(pixel, Rgb::g) + 25 * field(pixel, Rgb::b);
    return static_cast<u32>(((sum + 128) >> 8) + 16);
}

// The chroma is that of the left pixel alone, and is rounded down.
template <class Rgb, class Yuv> constexpr u32 encode(PixelPair p)
{
    const i32 r = field(p.left, Rgb::r), g = field(p.left, Rgb::g), b = field(p.left, Rgb::b);
    const auto u = static_cast<u32>(((-38 * r - 74 * g + 112 * b) >> 8) + 128);
    const auto v = static_cast<u32>(((112 * r - 94 * g - 18 * b) >> 8) + 128);
    return luma<Rgb>(p.left) << Yuv::y0 | luma<Rgb>(p.right) << Yuv::y1 | u << Yuv::u | v << Yuv::v;
}

// Places of a row that is counted in pairs: a YUV row has one word per pair, an RGB row two.
constexpr i32 whole_pairs(i32 count) { return count / 2; }
template <class T> inline T* pair_at(T* row, i32 pair)
{
    return moved(row, static_cast<uintptr_t>(pair) * 4);
}
template <class T> inline T* left_pixel_at(T* row, i32 pair)
{
    return moved(row, static_cast<uintptr_t>(pair) * 8);
}
template <class T> inline T* right_pixel_at(T* row, i32 pair) { return moved(left_pixel_at(row, pair), 4); }

inline PixelPair load_pixels(const void* row, i32 pair)
{
    return {load<u32>(left_pixel_at(row, pair)), load<u32>(right_pixel_at(row, pair))};
}
inline void store_pixels(void* row, i32 pair, PixelPair p)
{
    store(left_pixel_at(row, pair), p.left);
    store(right_pixel_at(row, pair), p.right);
}

} // namespace
} // namespace vexlor

// Heights, moisture and towns are sums of smoothed random values in space, taken where the planet's surface lies, so the
// maps close around the planet.
#include "planet.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tool {

namespace {

struct Vec {
    double x, y, z;
};
Vec operator*(Vec v, double f) { return {v.x * f, v.y * f, v.z * f}; }
Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec mix(Vec a, Vec b, double t) { return a * (1 - t) + b * t; }
double smooth(double from, double to, double v)
{
    const double t = std::clamp((v - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

// A random value, 0 to 1, at a point of the integer grid.
double grid(int32_t x, int32_t y, int32_t z)
{
    uint32_t h = static_cast<uint32_t>(x) * 0x9E3779B1u ^ static_cast<uint32_t>(y) * 0x85EBCA77u ^
                 static_cast<uint32_t>(z) * 0xC2B2AE3Du;
    h = (h ^ h >> 15) * 0x2C1B3C6Du;
    h = (h ^ h >> 12) * 0x297A2D39u;
    return (h >> 8) / double(1 << 24);
}

double noise(Vec p)
{
    const auto xi = static_cast<int32_t>(std::floor(p.x)), yi = static_cast<int32_t>(std::floor(p.y)),
               zi = static_cast<int32_t>(std::floor(p.z));
    const double tx = smooth(0, 1, p.x - xi), ty = smooth(0, 1, p.y - yi), tz = smooth(0, 1, p.z - zi);
    double planes[2];
    for (int k = 0; k < 2; ++k) {
        const double top = std::lerp(grid(xi, yi, zi + k), grid(xi + 1, yi, zi + k), tx);
        const double bottom = std::lerp(grid(xi, yi + 1, zi + k), grid(xi + 1, yi + 1, zi + k), tx);
        planes[k] = std::lerp(top, bottom, ty);
    }
    return std::lerp(planes[0], planes[1], tz);
}

// Octaves of noise, each twice as fine, half as strong and turned, so that no grid shows; about 0 to 1.
double rough(Vec p, int octaves)
{
    double sum = 0, strength = 0.5;
    for (int i = 0; i < octaves; ++i, strength /= 2) {
        sum += noise(p) * strength;
        p = Vec{0.8 * p.y - 0.6 * p.z, 0.6 * p.y + 0.8 * p.z, p.x} * 2.03 + Vec{17.3, 5.1, 9.7};
    }
    return sum;
}

Vec color_at(Vec p, bool night)
{
    const double height = rough(p * 1.7 + Vec{4.2, 8.4, 1.3}, 7) - 0.52;
    const double cold = std::abs(p.z) + (rough(p * 4, 4) - 0.5) * 0.25;
    const double moist = rough(p * 2.6 + Vec{31, 7, 3}, 4);
    const Vec sea = mix({12, 34, 82}, {42, 112, 150}, smooth(-0.11, 0.0, height));
    Vec land = mix({196, 170, 112}, {58, 104, 46}, smooth(0.38, 0.56, moist + std::abs(p.z) * 0.12));
    land = mix(land, {122, 104, 88}, smooth(0.10, 0.20, height));
    const double shore = smooth(-0.004, 0.004, height);
    const Vec day =
        mix(mix(sea, land, shore), {238, 242, 248}, smooth(0.88, 0.95, cold + std::max(height, 0.0) / 2));
    if (!night)
        return day;
    // Towns lie on low land where it is neither cold nor dry; few of the fine grains are bright.
    const double settled = shore * (1 - smooth(0.02, 0.16, height)) * (1 - smooth(0.5, 0.75, cold)) *
                           smooth(0.36, 0.5, moist) * smooth(0.42, 0.62, rough(p * 9, 3));
    const double lights = settled * smooth(0.55, 0.85, noise(p * 140)) * smooth(0.3, 0.7, noise(p * 55));
    return day * 0.07 + Vec{3, 5, 14} + Vec{255, 206, 128} * std::min(1.0, lights * 1.6);
}

uint8_t byte(double v) { return static_cast<uint8_t>(std::lround(std::clamp(v, 0.0, 255.0))); }

} // namespace

Picture planet(Size size, bool night)
{
    constexpr double pi = std::numbers::pi;
    Picture map(size, false);
    for (int32_t y = 0; y < map.size.height; ++y) {
        const double lat = pi * (0.5 - (y + 0.5) / map.size.height);
        uint8_t* pixel = map.row(y);
        for (int32_t x = 0; x < map.size.width; ++x, pixel += 4) {
            const double lon = 2 * pi * (x + 0.5) / map.size.width;
            const Vec c = color_at(
                {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)}, night);
            pixel[0] = byte(c.x);
            pixel[1] = byte(c.y);
            pixel[2] = byte(c.z);
            pixel[3] = 255;
        }
    }
    return map;
}

} // namespace tool

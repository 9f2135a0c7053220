// The operations that are measured, and their pictures.
#include "job.h"

#include <cmath>
#include <stdexcept>

namespace bench {
namespace {

constexpr uint32_t argb = VEXLOR_FMT_B8G8R8A8; // the word's order, as most peers name it
constexpr uint32_t xrgb = VEXLOR_FMT_B8G8R8X8;
constexpr uint32_t bgrx = VEXLOR_FMT_X8R8G8B8; // here SIMD converts YUV in single precision
constexpr uint32_t rgb565 = VEXLOR_FMT_565;
constexpr uint32_t uyvy = VEXLOR_FMT_U8Y8V8Y8;

int source_length(int length, double scale, bool even)
{
    const int whole = static_cast<int>(std::lround(length / scale));
    return even ? whole & ~1 : whole;
}

bool premultiplied(Work work) { return work == Work::over_premultiplied || work == Work::scale_over; }

} // namespace

// Three 565 rows have an arithmetic of their own: in blends green weighs half of what red and blue do, linear differences
// wrap, box means lose 6 % of red and blue per axis. Where alpha has edges, linear kernels that are half a pixel apart
// show them in different places. SDL blends 565 with 5 bits of alpha, and swscale dithers.
const std::vector<Job> jobs = {
    // clang-format off
    {"fill 32",                  Work::fill,               0,      argb},
    {"fill 565",                 Work::fill,               0,      rgb565},
    {"blended fill",             Work::fill_blend,         0,      argb},
    {"copy 32",                  Work::copy,               argb,   argb},
    {"opaque-alpha copy",        Work::copy_opaque,        argb,   argb},
    {"alpha test",               Work::alpha_test,         argb,   argb,   Filter::nearest, 1, true},
    {"over, straight",           Work::over,               argb,   argb,   Filter::nearest, 1, true},
    {"over, premultiplied",      Work::over_premultiplied, argb,   argb,   Filter::nearest, 1, true},
    {"global blend 32",          Work::global,             argb,   argb},
    {"global blend 565",         Work::global,             rgb565, rgb565, Filter::nearest, 1, false, 10, true},
    {"UYVY to RGB, integer",     Work::convert,            uyvy,   xrgb},
    {"UYVY to RGB, float",       Work::convert,            uyvy,   bgrx},
    {"RGB to UYVY",              Work::convert,            xrgb,   uyvy},
    {"UYVY blended over RGB",    Work::global,             uyvy,   argb},
    {"nearest 2x",               Work::scale,              argb,   argb,   Filter::nearest, 2},
    {"nearest 1.37x",            Work::scale,              argb,   argb,   Filter::nearest, 1.37},
    {"nearest 0.5x",             Work::scale,              argb,   argb,   Filter::nearest, 0.5},
    {"nearest 565 2x",           Work::scale,              rgb565, rgb565, Filter::nearest, 2},
    {"nearest UYVY to RGB 2x",   Work::scale,              uyvy,   xrgb,   Filter::nearest, 2},
    {"linear 2x",                Work::scale,              argb,   argb,   Filter::linear,  2},
    {"linear 1.37x",             Work::scale,              argb,   argb,   Filter::linear,  1.37},
    {"box 0.5x",                 Work::scale,              argb,   argb,   Filter::box,     0.5},
    {"linear 565 2x",            Work::scale,              rgb565, rgb565, Filter::linear,  2, false, 6, true},
    {"box 565 0.5x",             Work::scale,              rgb565, rgb565, Filter::box,     0.5, false, 10, true},
    {"Catmull-Rom 2x",           Work::scale,              argb,   argb,   Filter::catrom,  2},
    {"Catmull-Rom 1.37x",        Work::scale,              argb,   argb,   Filter::catrom,  1.37},
    {"Gaussian 0.5x",            Work::scale,              argb,   argb,   Filter::gauss,   0.5},
    {"Catmull-Rom 565 2x",       Work::scale,              rgb565, rgb565, Filter::catrom,  2},
    {"nearest and over 2x",      Work::scale_over,         argb,   argb,   Filter::nearest, 2, true},
    {"linear and over 2x",       Work::scale_over,         argb,   argb,   Filter::linear,  2, true, 20},
    {"linear UYVY to RGB 2x",    Work::scale,              uyvy,   xrgb,   Filter::linear,  2},
    {"box UYVY to RGB 0.5x",     Work::scale,              uyvy,   xrgb,   Filter::box,     0.5},
    {"Catmull-Rom UYVY to RGB 2x", Work::scale,            uyvy,   xrgb,   Filter::catrom,  2},
    // clang-format on
};

Scene::Scene(const Job& j, int width, int height, Content c)
    : job(j), content(c),
      source(reads_source() ? source_length(width, j.scale, (j.from & 0x40) != 0) : 1,
             reads_source() ? source_length(height, j.scale, false) : 1, reads_source() ? j.from : j.to),
      target(width, height, j.to, 2048), backdrop(width, height, j.to, 1024)
{
    paint(source, content, premultiplied(j.work));
    paint_backdrop(backdrop);
}

bool Scene::reads_source() const { return job.work != Work::fill && job.work != Work::fill_blend; }

bool Scene::reads_target() const
{
    switch (job.work) {
    case Work::fill:
    case Work::copy:
    case Work::copy_opaque:
    case Work::convert:
    case Work::scale: return false;
    case Work::fill_blend:
    case Work::
        alpha_test: // what fails keeps its pixel, so lines of the cache are read before they are written
    case Work::over:
    case Work::over_premultiplied:
    case Work::global:
    case Work::scale_over: return true;
    }
    return false;
}

size_t Scene::bytes() const
{
    return (reads_source() ? source.bytes() : 0) + target.bytes() * (reads_target() ? 2 : 1);
}

void refuse(const std::string& who, const std::string& why) { throw std::runtime_error(who + ": " + why); }

} // namespace bench

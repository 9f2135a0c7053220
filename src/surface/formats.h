// Families of format codes that the entry points ask for.
#pragma once

#include "base.h"

namespace vexlor {
namespace {

constexpr bool is_rgb32(u32 format)
{
    return format == VEXLOR_FMT_X8R8G8B8 || format == VEXLOR_FMT_A8R8G8B8 || format == VEXLOR_FMT_B8G8R8X8 ||
           format == VEXLOR_FMT_B8G8R8A8;
}
constexpr bool has_rgb32_bit(u32 format) { return (format & 0x20000000u) != 0; }
constexpr bool has_alpha(u32 format) { return (format & 0x40000000u) != 0; }
constexpr bool is_yuv(u32 format) { return format == VEXLOR_FMT_Y8V8Y8U8 || format == VEXLOR_FMT_U8Y8V8Y8; }

// Unknown codes may be equivalent and yet have pixels of two sizes. Such a pair keeps the result code that it
// earns, and nothing is drawn: one of the surfaces would be left.
inline bool differ_in_size_alone(u32 a, u32 b)
{
    return vexlor_fmt_is_equiv(a, b) && bytes_per_pixel(a) != bytes_per_pixel(b);
}

constexpr bool is_alpha_last(u32 format)
{
    return format == VEXLOR_FMT_B8G8R8X8 || format == VEXLOR_FMT_B8G8R8A8;
}

// Tables over YUV sources and 32-bit RGB destinations have a row per order of the source's pair and a column
// per order of the destination's bytes. A convertible pair of formats that are not equivalent is always one
// of these.
template <class Entry> constexpr Entry of_pair(const Entry (&table)[2][2], u32 src_format, u32 dst_format)
{
    return table[src_format == VEXLOR_FMT_U8Y8V8Y8][is_alpha_last(dst_format)];
}

} // namespace
} // namespace vexlor

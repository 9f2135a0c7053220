// Spans of unfiltered scaling, for one instruction set.
#pragma once

#include "row/over.h"
#include "row/stepped.h"
#include "row/unzip.h"
#include "row/windows.h"
#include "row/yuv_lanes.h"

namespace vexlor {
namespace {

template <u32 Bytes> u32 write_vectors(const auto& source, u32* dst, u32 count, auto rule)
{
    using Pixels = typename Vector<Bytes>::U32;
    u32 i = 0;
    for (; count - i >= Vector<Bytes>::pixels; i += Vector<Bytes>::pixels)
        store(dst + i, rule(source.template pixels<Pixels>(i)));
    return i;
}

// Writes every unit of a source through a rule that takes a unit or a vector of them.
inline void write_units(const auto& source, void* dst, u32 count, auto rule)
{
    auto* const to = static_cast<u32*>(dst);
    u32 i = 0;
    if constexpr (vector_bytes != 0)
        i = write_vectors<vector_bytes>(source, to, count, rule);
    for (; i < count; ++i)
        store(to + i, rule(source[i]));
}

inline void scale_opaque_nofilt_32(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    write_units(Stepped(src, x, step, count), dst, count, [](auto p) { return p; });
}

inline void scale_opaque_nofilt_aone_8888(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 alpha = 0xFFu << vexlor_fmt_get_alpha_shift(format);
    write_units(Stepped(src, x, step, count), dst, count, [=](auto p) { return p | alpha; });
}

// Returns the pixels that it made. The last vector ends at the row's end, and may make pixels anew.
inline u32 scale_565_vectors([[maybe_unused]] const void* src, [[maybe_unused]] u16* dst,
                             [[maybe_unused]] u32 count, [[maybe_unused]] i32 x, [[maybe_unused]] i32 step)
{
#if defined(__AVX2__)
    using Units = Vector<vector_bytes>::U32;
    constexpr u32 units = lane_count<Units>, pixels = 2 * units;
    if (step < 0 || step > 0x20000 || count < pixels)
        return 0;
    const i64 first = x >> 16, fraction = x & 0xFFFF;
    const SourceRow<u16> row{static_cast<const u8*>(moved(src, bytes_of(first, 2))),
                             (fraction + i64{count - 1} * step) >> 16};
    const Windows<u16, pixels + 1> windows(row);
    const Units steps = lane_numbers<Units>() * static_cast<u32>(step);
    const auto half = [&](u32 i) {
        const i64 at = fraction + i64{i} * step;
        return pick_halves(windows(at >> 16), (steps + static_cast<u32>(at & 0xFFFF)) >> 16);
    };
    const auto make = [&](u32 i) { store(dst + i, low_halves(half(i), half(i + units))); };
    for (u32 i = 0; i < count - pixels; i += pixels)
        make(i);
    make(count - pixels);
    return count;
#else
    return 0;
#endif
}

inline void scale_opaque_nofilt_565(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    auto* const pixels = static_cast<u16*>(dst);
    u32 i = scale_565_vectors(src, pixels, count, x, step);
    for (i64 at = x + i64{i} * step; i < count; ++i, at += step)
        store(pixels + i, load<u16>(moved(src, bytes_of(at >> 16, 2))));
}

template <class Yuv, class Rgb>
void scale_opaque_nofilt_yuv(const void* src, void* dst, u32, u32 count, i32 x, i32 step)
{
    const Stepped source(src, x, step, count / 2);
    i32 i = 0;
    if constexpr (vector_bytes != 0) {
        using Lanes = PairVector<vector_bytes>;
        constexpr auto pairs = static_cast<i32>(vector_bytes / 4);
        for (; static_cast<i32>(count / 2) - i >= pairs; i += pairs) {
            const auto pixels = Lanes::template decode<Yuv, Rgb>(
                source.template pixels<typename Lanes::U32>(static_cast<u32>(i)));
            store(left_pixel_at(dst, i), pixels.low);
            store(left_pixel_at(dst, i + pairs / 2), pixels.high);
        }
    }
    for (; i < static_cast<i32>(count / 2); ++i)
        store_pixels(dst, i, decode<Yuv, Rgb>(source[static_cast<u32>(i)]));
}

// Both alpha shifts are that of the destination's format.
template <class Mix, class Alpha>
void scale_blend_over_src_nofilt(const void* src, void* dst, u32 format, u32 count, i32 x, i32 step)
{
    const u32 shift = vexlor_fmt_get_alpha_shift(format);
    over<Mix>(Stepped(src, x, step, count), static_cast<u32*>(dst), count, PixelAlpha{shift}, Alpha{shift});
}

} // namespace
} // namespace vexlor

// What the filtered scalers share: the filter's parameters, and the walk over destination rows.
#pragma once

#include "isa/kernels.h"
#include "scale/plain_rows.h"
#include "scale/row_filter.h"
#include "scale/scale.h"

#include <string.h>

namespace vexlor {
namespace {

inline u64 row_bytes_32(const Scale& s) { return u64{static_cast<u32>(s.to.w)} * 4; }

constexpr i32 sixteenth = 0x1000; // of a pixel: Gaussian centres lie that much behind half a step

inline vexlor_filter_params params_of(const Scale& s, u32 stride)
{
    const i32 xstep = step_of(s.from.w, s.to.w);
    const i32 ystep = step_of(s.from.h, s.to.h);
    return {
        .ypos = static_cast<u32>(s.from.y) << 16,
        .xstep = xstep,
        .xhalf = xstep >> 1,
        .yhalf = ystep >> 1,
        .yhalf_rows = ystep >> 17,
        .ycentre_rows = ((ystep >> 1) + sixteenth) >> 16,
        .xcentre = (xstep >> 1) + sixteenth,
        .count = static_cast<u32>(s.to.w),
        .stride = stride,
    };
}

// Calls row(source row, destination row) for every destination row, from the rectangle's left edge, with ypos
// at its place. ypos wraps; the row index does not.
inline void for_each_row(const Scale& s, vexlor_filter_params& params, auto row)
{
    const i32 ystep = step_of(s.from.h, s.to.h);
    i64 y = i64{s.from.y} << 16;
    u8* dst = pixel_address(s.dst, s.to.x, s.to.y, bytes_per_pixel(s.dst.format));
    for (i32 i = 0; i < s.to.h; ++i, y += ystep, dst = moved(dst, s.dst.stride)) {
        params.ypos = static_cast<u32>(y);
        row(pixel_address(s.src, s.from.x, y >> 16, bytes_per_pixel(s.src.format)), dst);
    }
}

// The substitute rows of the Gaussian and Catmull-Rom filters span a whole stride. Around a rectangle of one
// row at the surface's top or bottom they reach outside its memory, so there the filters read a strip of three
// rows: the row before, the row itself and the row behind. Bytes before the surface are those of the row below
// them; bytes behind its end repeat its last pixel.
class SeenRows {
public:
    explicit SeenRows(const Scale& s)
        : scale(s), needs_strip(s.ctx.filter == VEXLOR_FILTER_CATROM && s.from.h == 1 &&
                                (s.from.y == 0 || s.from.y == s.src.height - 1)),
          strip(needs_strip ? u64{s.src.stride} * 3 + row_bytes_32(s) : 0)
    {}
    explicit operator bool() const { return !needs_strip || strip; }

    // Where a filter reads what stands at this address of the surface.
    const u8* operator()(const u8* at) const
    {
        return needs_strip
                   ? moved(at, reinterpret_cast<uintptr_t>(middle()) - reinterpret_cast<uintptr_t>(row()))
                   : at;
    }

    // Looks at the surface anew: a call within one surface may have drawn on pixels beside the rectangle.
    void refresh() const
    {
        if (!needs_strip)
            return;
        refresh_owned();
        const size_t pixel = bytes_per_pixel(scale.src.format);
        for (size_t i = owned_bytes(); i < 2 * stride(); ++i)
            middle()[i] = middle()[i - pixel];
        if (scale.from.y == 0)
            memcpy(strip.at(), middle(), stride());
    }
    // At the surface's own bytes alone.
    void refresh_owned() const
    {
        memcpy(middle(), row(), owned_bytes());
        if (scale.from.y > 0)
            memcpy(strip.at(), moved(row(), bytes_of(-1, scale.src.stride)), stride());
    }

    // Whether a destination row is drawn where the strip was taken from.
    bool shows(const u8* dst) const
    {
        return needs_strip &&
               moved(dst, bytes_of(scale.to.w, 4)) > moved(row(), bytes_of(-1, scale.src.stride)) &&
               dst < moved(row(), bytes_of(2, scale.src.stride));
    }
    // Memory for a destination row.
    u8* spare_row() const { return strip.at(u64{scale.src.stride} * 3); }

private:
    const u8* row() const { return pixel_address(scale.src, 0, scale.from.y, 0); }
    u8* middle() const { return strip.at(scale.src.stride); }
    size_t stride() const { return scale.src.stride; }
    // Of the row and the one behind it.
    size_t owned_bytes() const
    {
        const auto owned = static_cast<size_t>(end_of(scale.src) - row());
        return owned < 2 * stride() ? owned : 2 * stride();
    }

    const Scale& scale;
    bool needs_strip;
    Buffer strip;
};

// Whether filters may find pixels that the call has drawn. They read from the rectangle's first pixel to its last one;
// Gaussian and Catmull-Rom filters of a single row, or of rows that overlap, read a stride or a row before
// and behind it.
inline bool reads_what_it_draws(const Scale& s)
{
    struct Extent {
        i64 begin, end;
    };
    const auto extent = [](const vexlor_surface_desc& surface, const Rect& r) {
        const u32 pixel = bytes_per_pixel(surface.format);
        const auto begin =
            static_cast<i64>(reinterpret_cast<uintptr_t>(pixel_address(surface, r.x, r.y, pixel)));
        return Extent{begin, begin + (i64{r.h} - 1) * surface.stride + i64{r.w} * pixel};
    };
    const i64 stride = s.src.stride, row_bytes = i64{s.from.w} * bytes_per_pixel(s.src.format);
    const bool reads_around = s.ctx.filter == VEXLOR_FILTER_CATROM && (s.from.h == 1 || stride < row_bytes);
    const i64 around = reads_around ? 2 * (stride < row_bytes ? row_bytes : stride) : 0;
    const Extent read = extent(s.src, s.from), drawn = extent(s.dst, s.to);
    return read.begin - around < drawn.end && drawn.begin < read.end + around;
}

// One destination row of a filter.
struct FilteredRow {
    const SeenRows& seen;
    RowFilter& filter;
    FilterPlace place;
    vexlor_filter_params& params;

    void into(void* out) const { filter(place, params, out); }

    // Into the destination itself. Filters find pixels there as they are when each pixel is made, also those that
    // the row has written already; a strip has to show them.
    template <class Pixel> void in_place(u8* dst) const
    {
        if (!seen.shows(dst))
            return into(dst);
        const u32 count = params.count;
        for (u32 i = 0; i < count; ++i) {
            seen.refresh_owned();
            params.count = i + 1;
            into(seen.spare_row());
            const uintptr_t at = bytes_of(i, sizeof(Pixel));
            store(moved(dst, at), load<Pixel>(moved(seen.spare_row(), at)));
        }
    }
};

// Filters 565 or 32-bit rows: calls store_row(filtered row, destination row). Without memory nothing is drawn.
inline void filter_rows(const Scale& s, vexlor_filter_fn filter, auto store_row)
{
    const SeenRows seen(s);
    if (!seen)
        return;
    const u32 pixel = bytes_per_pixel(s.src.format);
    const uintptr_t row_length = bytes_of(i64{s.from.w} - 1, pixel);
    const u8* const first = seen(pixel_address(s.src, s.from.x, s.from.y, pixel));
    const u8* const last = moved(first, bytes_of(i64{s.from.h} - 1, s.src.stride) + row_length);
    vexlor_filter_params params = params_of(s, s.src.stride);
    RowFilter row_filter(filter, params, reads_what_it_draws(s) ? SourceRows::change : SourceRows::stay);
    for_each_row(s, params, [&](const u8* src, u8* dst) {
        const u8* const row = seen(src);
        seen.refresh();
        store_row(FilteredRow{seen, row_filter, {first, last, row, moved(row, row_length)}, params}, dst);
    });
}

} // namespace
} // namespace vexlor

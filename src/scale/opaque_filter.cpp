// Opaque scaling through the filters. 565 is filtered straight into the destination, 32-bit pixels into a row
// that a writer stores, and YUV 4:2:2 through the row cache and the context's converters.
#include "row/copy_row.h"
#include "scale/cache.h"
#include "scale/filtered.h"

using namespace vexlor;

namespace {

vexlor_filter_fn filter_8888(const Scale& s)
{
    return vexlor_scale_choose_filter_8888(&s.ctx, s.from.w, s.from.h, s.to.w, s.to.h);
}

size_t row_bytes(const Scale& s)
{
    return static_cast<size_t>(bytes_of(s.to.w, bytes_per_pixel(s.dst.format)));
}

// Going past the caches pays where writing takes most of the time: not for reduced pictures, nor for filters in double
// precision. YUV destinations are for the converters, and a caller who puts none there gets rows of 32-bit pixels.
PlainRows plain_rows(const Scale& s)
{
    const bool mostly_written = i64{s.to.w} * s.to.h >= i64{s.from.w} * s.from.h;
    return {row_bytes(s), drawing_fills_caches(s) && mostly_written && !is_yuv(s.dst.format) &&
                              s.ctx.filter != VEXLOR_FILTER_CATROM};
}

void scale_565(const Scale& s)
{
    const auto filter = vexlor_scale_choose_filter_565(&s.ctx, s.from.w, s.from.h, s.to.w, s.to.h);
    if (reads_what_it_draws(s))
        return filter_rows(s, filter,
                           [](const FilteredRow& filtered, u8* dst) { filtered.in_place<u16>(dst); });
    const PlainRows rows = plain_rows(s);
    filter_rows(s, filter,
                [&](const FilteredRow& filtered, u8* dst) { rows(dst, [&](u8* to) { filtered.into(to); }); });
}

void scale_8888(const Scale& s)
{
    const auto write =
        s.ctx.alpha_dst_op == VEXLOR_ALPHA_DST_ONE ? vexlor_writer_aone_8888 : vexlor_writer_arepl_8888;
    const u32 src_shift = vexlor_fmt_get_alpha_shift(s.src.format);
    const u32 dst_shift = vexlor_fmt_get_alpha_shift(s.dst.format);
    if (write == vexlor_writer_arepl_8888 && !reads_what_it_draws(s)) {
        const PlainRows rows = plain_rows(s);
        return filter_rows(s, filter_8888(s), [&](const FilteredRow& filtered, u8* dst) {
            rows(dst, [&](u8* to) { filtered.into(to); });
        });
    }
    const Buffer row(row_bytes_32(s));
    if (!row)
        return;
    filter_rows(s, filter_8888(s), [&](const FilteredRow& filtered, u8* dst) {
        filtered.into(row.at());
        write(reinterpret_cast<u32*>(dst), row.at<u32>(), static_cast<u32>(s.to.w), src_shift, dst_shift);
    });
}

// Nobody sees whether the library's own converters are called.
bool is_own(vexlor_convert_fn convert)
{
    constexpr vexlor_convert_fn own[] = {
        vexlor_1d_Y8V8Y8U8_2_X8R8G8B8, vexlor_1d_Y8V8Y8U8_2_B8G8R8X8,      vexlor_1d_U8Y8V8Y8_2_X8R8G8B8,
        vexlor_1d_U8Y8V8Y8_2_B8G8R8X8, vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2, vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2,
    };
    for (const auto one : own)
        if (convert == one)
            return true;
    return false;
}

// The bands of converted rows of one call. The converters always get the whole surface's width, so that a row comes out
// alike wherever its rectangle starts; rows near the end of the surface are converted from memory of our own.
class Bands {
public:
    Bands(const Scale& scale, vexlor_convert_fn converter, const SourceBound& bound)
        : s(scale), convert(converter), rows_per_row(step_of(s.from.h, s.to.h) >> 16),
          rows(rows_per_row > 1 ? rows_per_row : 1),
          reads_two_rows(s.ctx.filter != VEXLOR_FILTER_CATROM && s.from.w > 1 && s.to.h <= INT16_MAX),
          use{.bound = &bound, .edges = !reads_two_rows}, rows_left(s.to.h)
    {
        vexlor_cache_reset(s.ctx.cache);
    }
    // Box and linear filters read two rows of a band, and of an enlarged one the only one. Of half a pair they also read
    // the pixel before.
    SourceRows kind() const { return reads_two_rows ? SourceRows::serve_once : SourceRows::stay; }
    bool reads_one_row() const { return reads_two_rows && rows_per_row == 0; }

    // Whether the band is the one before: it stays as it is, and so does the row that a filter of one row makes of it.
    bool is_held(const u8* first)
    {
        --rows_left;
        return first == held;
    }
    // False without memory: the call then draws nothing more.
    bool load(u8* first, vexlor_filter_params& params, RowFilter& filter)
    {
        vexlor_cache& cache = *s.ctx.cache;
        // Bands that fill the cache replace each other. Between its first band and its last one, which stays behind, a call
        // may leave rows out.
        const bool partly = held && rows_left != 0 && reads_two_rows && is_own(convert) &&
                            cache.capacity == rows_per_row && is_regular(cache);
        use.first_read = partly ? params.yhalf_rows : 0;
        use.rows_read = partly ? 2 : INT32_MAX;
        held = first;
        // The last pair, and before the row when that is half a pair.
        u8* last = moved(first, bytes_of(s.from.w, 2) - 4);
        const i32 pitch = update_cache(cache, convert, s.ctx.memcpy, 4, 8, s.src.width, s.src.stride, rows,
                                       &first, &last, use);
        if (pitch == 0)
            return false;
        params.stride = static_cast<u32>(pitch);
        filter.forget();
        band = {first, moved(first, bytes_of(rows_per_row, params.stride)), first, last};
        // Behind a band that fills the cache its last row repeats. A row that ends the picture mixes with itself alike.
        if (ends_behind(cache, rows)) {
            if (use.edges && rows == 1)
                filter.forget_around(first, params.stride);
            if (reads_two_rows && params.yhalf_rows == rows - 1)
                band.last = moved(last, bytes_of(params.yhalf_rows, params.stride));
        }
        return true;
    }

    const FilterPlace& place() const { return band; }

private:
    const Scale& s;
    vexlor_convert_fn convert;
    i32 rows_per_row, rows;
    bool reads_two_rows;
    CacheUse use;
    i32 rows_left;
    const u8* held = nullptr; // the source row at the band's begin
    FilterPlace band{};
};

void scale_yuv(const Scale& s, u32 pair)
{
    const vexlor_convert_fn* const converters = s.ctx.conversions + size_t{pair} * 2;
    const vexlor_convert_fn to_dst = converters[0], from_src = converters[1];
    if (!s.ctx.cache || !s.ctx.memcpy || !to_dst || !from_src)
        return;
    // Rows of our own lie behind the filtered row.
    const Buffer memory(row_bytes_32(s) + u64{static_cast<u32>(s.src.width)} * 2);
    if (!memory)
        return;
    const SourceBound bound{end_of(s.src), memory.at(row_bytes_32(s))};
    vexlor_filter_params params = params_of(s, 0);
    Bands bands(s, from_src, bound);
    RowFilter row_filter(filter_8888(s), params, bands.kind());
    const PlainRows plain = plain_rows(s);
    const u8* drawn = memory.at(); // the row above, once there is one
    bool drawing = true;
    for_each_row(s, params, [&](u8* first, u8* dst) {
        const bool same_band = bands.is_held(first);
        drawing = drawing && (same_band || bands.load(first, params, row_filter));
        if (!drawing)
            return;
        const bool same_row = same_band && bands.reads_one_row();
        if (to_dst != vexlor_1d_passthrough) {
            if (!same_row)
                row_filter(bands.place(), params, memory.at());
            return to_dst(memory.at(), dst, s.to.w);
        }
        if (same_row)
            plain.repeat(dst, [&] { copy_row(dst, drawn, row_bytes(s)); });
        else
            plain(dst, [&](u8* to) { row_filter(bands.place(), params, to); });
        drawn = dst;
    });
}

u32 scale(const Scale& s)
{
    if (!s.convertible())
        return VEXLOR_NOT_CONVERTIBLE;
    const bool rgb = is_rgb32(s.src.format);
    if (s.equivalent() && s.src.format != VEXLOR_FMT_565 && !is_yuv(s.src.format) && !rgb)
        return VEXLOR_UNSUPPORTED_FORMAT;
    if (rgb && s.ctx.alpha_dst_op > VEXLOR_ALPHA_DST_ONE)
        return VEXLOR_UNSUPPORTED_ALPHA;
    if (!s.has_pixels())
        return VEXLOR_OK;
    static constexpr u32 into_rgb[2][2] = {
        // X8R8G8B8, A8R8G8B8; B8G8R8X8, B8G8R8A8
        {2, 3}, // Y8V8Y8U8
        {4, 5}, // U8Y8V8Y8
    };
    if (rgb)
        scale_8888(s);
    else if (s.src.format == VEXLOR_FMT_565)
        scale_565(s);
    else if (s.equivalent())
        scale_yuv(s, s.src.format == VEXLOR_FMT_U8Y8V8Y8);
    else
        scale_yuv(s, of_pair(into_rgb, s.src.format, s.dst.format));
    return VEXLOR_OK;
}

} // namespace

uint32_t vexlor_scale_opaque_filter(vexlor_context* ctx, const vexlor_surface_desc* src,
                                    const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t sw,
                                    int32_t sh, int32_t dx, int32_t dy, int32_t dw, int32_t dh)
{
    return scale({*ctx, *src, *dst, {sx, sy, sw, sh}, {dx, dy, dw, dh}});
}

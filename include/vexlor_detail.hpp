/* The checks and detours behind vexlor.hpp, which includes this file; nothing here is for callers.
 *
 * A scale that is cut, or shared between threads, is drawn row by row with the routines that the library's own
 * scalers are made of: positions come from the whole rectangles, and only the rows and columns shown are stored. */
#ifndef VEXLOR_DETAIL_HPP
#define VEXLOR_DETAIL_HPP

namespace vexlor::detail {

struct destroy_context {
    void operator()(vexlor_context* c) const { vexlor_context_destroy(c); }
};
using owned_context = std::unique_ptr<vexlor_context, destroy_context>;

inline owned_context create()
{
    vexlor_context* made = nullptr;
    vexlor_context_create(&made);
    return owned_context(made);
}

/* Gives a slot or a setting another value for one call. */
template <class T> class for_now {
public:
    for_now(T& place, T value, bool needed = true) : at(place), kept(place) { at = needed ? value : kept; }
    for_now(const for_now&) = delete;
    for_now& operator=(const for_now&) = delete;
    ~for_now() { at = kept; }

private:
    T& at;
    T kept;
};

inline format code(const vexlor_surface_desc& s) { return static_cast<format>(s.format); }
inline uint32_t pixel_bytes(const vexlor_surface_desc& s) { return bytes_per_pixel(code(s)); }
inline uint8_t* at(const vexlor_surface_desc& s, int32_t x, int64_t y)
{
    return s.pixels + static_cast<std::size_t>(y) * s.stride + static_cast<std::size_t>(x) * pixel_bytes(s);
}
inline bool inside(rect r, const vexlor_surface_desc& s)
{
    return r.w > 0 && r.h > 0 && intersection(r, {0, 0, s.width, s.height}) == r;
}
inline bool splits_pair(const vexlor_surface_desc& s, int32_t x, int32_t w)
{
    return is_yuv(code(s)) && ((x | w) & 1) != 0;
}
inline bool rgb32(const vexlor_surface_desc& s) { return pixel_bytes(s) == 4; }

/* Whether the rows of two rectangles, from first to last byte, have any memory in common. */
inline bool share_memory(const vexlor_surface_desc& a, rect ra, const vexlor_surface_desc& b, rect rb)
{
    const auto first = [](const auto& s, rect r) { return reinterpret_cast<std::uintptr_t>(at(s, 0, r.y)); };
    return first(a, ra) < first(b, rb) + std::uintptr_t{b.stride} * static_cast<uint32_t>(rb.h) &&
           first(b, rb) < first(a, ra) + std::uintptr_t{a.stride} * static_cast<uint32_t>(ra.h);
}
inline bool overlap(const vexlor_surface_desc& a, rect ra, const vexlor_surface_desc& b, rect rb)
{
    return vexlor_surface_equals(&a, &b) != 0 && intersection(ra, rb).w != 0;
}

inline result fill(vexlor_context& ctx, const vexlor_surface_desc& dst, rect area)
{
    if (!inside(area, dst))
        return result::bad_rectangle;
    if (splits_pair(dst, area.x, area.w))
        return result::half_pair;
    const bool opaque = ctx.alpha_op == VEXLOR_ALPHA_OP_NONE;
    if (opaque && rgb32(dst) && ctx.alpha_dst_op == VEXLOR_ALPHA_DST_ONE)
        return result::quarter_fill;
    // The streaming routine paints other colours before the first 16-byte boundary, and stops short of the end.
    const uint32_t row = static_cast<uint32_t>(area.w) * pixel_bytes(dst);
    const auto places = reinterpret_cast<std::uintptr_t>(at(dst, area.x, area.y)) | dst.stride | row;
    const for_now memset(ctx.memset, &vexlor_memset,
                         opaque && places % 16 != 0 && ctx.memset == &vexlor_memset_stream_sse);
    return static_cast<result>(vexlor_fill(&ctx, &dst, area.x, area.y, area.w, area.h));
}

inline result copy(vexlor_context& ctx, const vexlor_surface_desc& src, rect from,
                   const vexlor_surface_desc& dst, point to)
{
    const rect target{to.x, to.y, from.w, from.h};
    if (!inside(from, src) || !inside(target, dst))
        return result::bad_rectangle;
    if (splits_pair(src, from.x, from.w) || splits_pair(dst, to.x, from.w))
        return result::half_pair;
    const bool opaque = ctx.alpha_op == VEXLOR_ALPHA_OP_NONE;
    // The one copy that goes top down whatever overlaps, over rows that it has yet to read.
    if (opaque && rgb32(dst) && ctx.alpha_dst_op == VEXLOR_ALPHA_DST_ONE && overlap(src, from, dst, target))
        return result::overlap;
    // The word copy would carry the pixel behind an odd 565 row along.
    const bool odd = opaque && static_cast<uint32_t>(from.w) * pixel_bytes(dst) % 4 != 0;
    const for_now memcpy(ctx.memcpy_stream, &vexlor_memmove, odd && ctx.memcpy_stream != nullptr);
    return static_cast<result>(vexlor_copy(&ctx, &src, &dst, from.x, from.y, to.x, to.y, from.w, from.h));
}

/* One pixel of each pair of a column: `which` of a pair is left, 0, or right, 1. */
inline result copy_half_pairs(vexlor_context& ctx, const vexlor_surface_desc& src, point from,
                              const vexlor_surface_desc& dst, point to, int32_t h, std::size_t which)
{
    uint32_t pair[2] = {};
    const vexlor_surface_desc two{2, 1, sizeof pair, reinterpret_cast<uint8_t*>(pair), dst.format};
    for (int32_t i = 0; i < h; ++i) {
        uint8_t* const pixel = at(dst, to.x, to.y + i);
        std::memcpy(&pair[which], pixel, 4);
        if (const result r = copy(ctx, src, {from.x, from.y + i, 2, 1}, two, {0, 0}); r != result::ok)
            return r;
        std::memcpy(pixel, &pair[which], 4);
    }
    return result::ok;
}

inline result copy_clipped(vexlor_context& ctx, const vexlor_surface_desc& src, rect from,
                           const vexlor_surface_desc& dst, point to)
{
    if (from.w < 0 || from.h < 0)
        return result::bad_rectangle;
    const rect read = intersection(from, {0, 0, src.width, src.height});
    const int64_t x = int64_t{to.x} + read.x - from.x, y = int64_t{to.y} + read.y - from.y;
    if (read.w == 0 || x > largest_size || y > largest_size || x + read.w <= 0 || y + read.h <= 0)
        return result::ok;
    const rect target{static_cast<int32_t>(x), static_cast<int32_t>(y), read.w, read.h};
    rect part = intersection(target, {0, 0, dst.width, dst.height});
    if (part.w == 0)
        return result::ok;
    point source{read.x + part.x - target.x, read.y + part.y - target.y};
    if (is_yuv(code(src)) && rgb32(dst)) { // an edge may run through pairs
        if (splits_pair(src, from.x, from.w))
            return result::half_pair;
        result r = result::ok;
        if (source.x % 2 != 0) {
            r = copy_half_pairs(ctx, src, {source.x - 1, source.y}, dst, {part.x, part.y}, part.h, 1);
            ++source.x, ++part.x, --part.w;
        }
        if (r == result::ok && part.w % 2 != 0) {
            --part.w;
            r = copy_half_pairs(ctx, src, {source.x + part.w, source.y}, dst, {part.x + part.w, part.y},
                                part.h, 0);
        }
        if (r != result::ok || part.w == 0)
            return r;
    }
    return copy(ctx, src, {source.x, source.y, part.w, part.h}, dst, {part.x, part.y});
}

/* One scale call whose rectangles have been checked. */
struct scaling {
    vexlor_context& ctx;
    const vexlor_surface_desc& src;
    rect from;
    const vexlor_surface_desc& dst;
    rect to;

    bool blended() const
    {
        return ctx.alpha_op == VEXLOR_ALPHA_OP_BLEND && ctx.alpha_src != VEXLOR_ALPHA_SRC_GLOBAL;
    }
    bool filtered() const { return ctx.filter != VEXLOR_FILTER_NONE; }
    bool through_cache() const { return filtered() && is_yuv(code(src)); }
    /* Around a single row the scaler shows its Catmull-Rom filter rows that are not in the surface. */
    bool around_one_row() const { return ctx.filter == VEXLOR_FILTER_CATROM && from.h == 1; }
    /* Repeated rows of 565 bring the pixels beside them along. */
    bool spills() const { return !filtered() && code(src) == format::rgb565 && to.h > from.h; }
    int32_t xstep() const { return static_cast<int32_t>((int64_t{from.w} << 16) / to.w); }
    int32_t ystep() const { return static_cast<int32_t>((int64_t{from.h} << 16) / to.h); }
    /* Unfiltered: the source row of a row of `to`. */
    int64_t nearest(int64_t row) const { return from.y + (((ystep() >> 1) + row * ystep()) >> 16); }

    result whole() const
    {
        if (!renew_cache())
            return result::out_of_memory;
        return static_cast<result>(
            vexlor_scale(&ctx, &src, &dst, from.x, from.y, from.w, from.h, to.x, to.y, to.w, to.h));
    }
    /* The code of the whole call, asked of the library by scaling onto two pixels that are not the caller's. */
    result verdict() const
    {
        alignas(16) uint8_t pixels[8] = {};
        const vexlor_surface_desc two{2, 1, sizeof pixels, pixels, dst.format};
        return static_cast<result>(
            vexlor_scale(&ctx, &src, &two, from.x, from.y, from.w % 2 == 0 ? 2 : 1, 1, 0, 0, 2, 1));
    }
    /* Draws the part `shown` of `to`. */
    result part(rect shown) const
    {
        if (through_cache() || (filtered() && around_one_row()))
            return part_of_whole(shown);
        if (filtered())
            return filtered_rows(shown);
        if (shown.w == to.w && code(dst) != format::rgb565)
            return runs(shown);
        return nearest_rows(shown);
    }

private:
    /* A cache that an earlier scale made hold more rows would lag. One that has served scales of this width
     * and this number of rows alone draws as a fresh one. */
    bool renew_cache() const
    {
        if (!through_cache())
            return true;
        const int32_t rows = std::max(1, ystep() >> 16), pitch = (from.w * 4 + 15) / 16 * 16;
        if (ctx.cache != nullptr && ctx.cache->buffer != nullptr &&
            (ctx.cache->capacity != rows || ctx.cache->pitch != pitch)) {
            vexlor_cache_fini(ctx.cache);
            ctx.cache = nullptr;
        }
        if (ctx.cache == nullptr)
            vexlor_cache_init(&ctx.cache);
        return ctx.cache != nullptr;
    }
    static std::unique_ptr<uint32_t[]> words(uint64_t bytes)
    {
        if (bytes > PTRDIFF_MAX - 4)
            return nullptr;
        return std::unique_ptr<uint32_t[]>(new (std::nothrow)
                                               uint32_t[static_cast<std::size_t>(bytes / 4 + 1)]);
    }
    uint32_t row_bytes() const { return static_cast<uint32_t>(to.w) * pixel_bytes(dst); }

    /* Stores the columns shown of a finished row of `to`. */
    void store(rect shown, int32_t y, const uint8_t* row) const
    {
        row += static_cast<std::size_t>(shown.x - to.x) * pixel_bytes(dst);
        uint8_t* const out = at(dst, shown.x, y);
        const auto count = static_cast<uint32_t>(shown.w);
        const auto pixels = reinterpret_cast<const uint32_t*>(row);
        const uint32_t shift = vexlor_fmt_get_alpha_shift(dst.format);
        if (blended())
            vexlor_choose_1d_lerp_8888 (&ctx)(reinterpret_cast<uint32_t*>(out), pixels, count, shift, shift);
        else if (ctx.alpha_dst_op == VEXLOR_ALPHA_DST_ONE && rgb32(src))
            vexlor_writer_aone_8888(reinterpret_cast<uint32_t*>(out), pixels, count, shift, shift);
        else
            std::memcpy(out, row, std::size_t{count} * pixel_bytes(dst));
    }

    result filtered_rows(rect shown) const
    {
        const uint32_t pixel = pixel_bytes(src);
        const auto filter = (pixel == 4 ? vexlor_scale_choose_filter_8888
                                        : vexlor_scale_choose_filter_565)(&ctx, from.w, from.h, to.w, to.h);
        const auto line = words(row_bytes());
        if (!line)
            return result::out_of_memory;
        vexlor_filter_params params{0,
                                    xstep(),
                                    xstep() >> 1,
                                    ystep() >> 1,
                                    ystep() >> 17,
                                    ((ystep() >> 1) + 0x1000) >> 16,
                                    (xstep() >> 1) + 0x1000,
                                    static_cast<uint32_t>(to.w),
                                    src.stride};
        const uint8_t* const first = at(src, from.x, from.y);
        const uint8_t* const last = at(src, from.x + from.w - 1, from.y + from.h - 1);
        for (int32_t y = shown.y; y < shown.y + shown.h; ++y) {
            const int64_t place = (int64_t{from.y} << 16) + (int64_t{y} - to.y) * ystep();
            params.ypos = static_cast<uint32_t>(place);
            const uint8_t* const row = at(src, from.x, place >> 16);
            filter(first, last, row, row + static_cast<std::size_t>(from.w - 1) * pixel, &params, line.get());
            store(shown, y, reinterpret_cast<const uint8_t*>(line.get()));
        }
        return result::ok;
    }

    /* Calls run(source row, first row shown, number of rows) for neighbours that come from one source row. */
    template <class Run> result for_each_run(rect shown, Run run) const
    {
        for (int32_t y = shown.y, end = shown.y + shown.h; y < end;) {
            const int64_t row = nearest(int64_t{y} - to.y);
            int32_t count = 1;
            while (y + count < end && nearest(int64_t{y} + count - to.y) == row)
                ++count;
            const result r = run(static_cast<int32_t>(row), y, count);
            if (r != result::ok)
                return r;
            y += count;
        }
        return result::ok;
    }
    result runs(rect shown) const
    {
        return for_each_run(shown, [&](int32_t row, int32_t y, int32_t count) {
            return static_cast<result>(
                vexlor_scale(&ctx, &src, &dst, from.x, row, from.w, 1, to.x, y, to.w, count));
        });
    }
    result nearest_rows(rect shown) const
    {
        if (!blended() && ctx.memcpy_stream == nullptr)
            return result::ok;
        const auto memory = words(row_bytes());
        if (!memory)
            return result::out_of_memory;
        auto* const line = reinterpret_cast<uint8_t*>(memory.get());
        const vexlor_surface_desc strip{to.w, 1, row_bytes(), line, dst.format};
        return for_each_run(shown, [&](int32_t row, int32_t y, int32_t count) {
            result r = result::ok;
            if (blended())
                vexlor_1d_scale_opaque_nofilt_32(at(src, from.x, row), line, dst.format,
                                                 static_cast<uint32_t>(to.w), xstep() >> 1, xstep());
            else
                r = static_cast<result>(
                    vexlor_scale_opaque_nofilter(&ctx, &src, &strip, from.x, row, from.w, 1, 0, 0, to.w, 1));
            for (int32_t i = 0; r == result::ok && i < count; ++i)
                store(shown, y + i, line);
            return r;
        });
    }
    result part_of_whole(rect shown) const
    {
        const auto memory = words(uint64_t{row_bytes()} * static_cast<uint32_t>(to.h));
        if (!memory || !renew_cache())
            return result::out_of_memory;
        const vexlor_surface_desc picture{to.w, to.h, row_bytes(), reinterpret_cast<uint8_t*>(memory.get()),
                                          dst.format};
        result r;
        {
            const for_now plain(ctx.alpha_dst_op, uint32_t{VEXLOR_ALPHA_DST_BLEND}, blended());
            r = static_cast<result>(vexlor_scale_opaque_filter(&ctx, &src, &picture, from.x, from.y, from.w,
                                                               from.h, 0, 0, to.w, to.h));
        }
        for (int32_t y = shown.y; r == result::ok && y < shown.y + shown.h; ++y)
            store(shown, y, at(picture, 0, y - to.y));
        return r;
    }
};

/* The checks that a scale needs before any of its parts is drawn. */
inline result check(const scaling& s)
{
    if (!inside(s.from, s.src) || s.from.w > largest_size || s.from.h > largest_size || s.to.w < 1 ||
        s.to.h < 1 || s.to.w > largest_size || s.to.h > largest_size)
        return result::bad_rectangle;
    const bool loses_column = is_yuv(code(s.src)) && !is_yuv(code(s.dst)) && !s.filtered() && s.to.w % 2 != 0;
    if (splits_pair(s.src, s.from.x, s.from.w) || splits_pair(s.dst, s.to.x, s.to.w) || loses_column)
        return result::half_pair;
    return result::ok;
}

inline result scale(vexlor_context& ctx, const vexlor_surface_desc& src, rect from,
                    const vexlor_surface_desc& dst, rect to, rect shown)
{
    const scaling s{ctx, src, from, dst, to};
    if (const result r = check(s); r != result::ok)
        return r;
    if (shown == to) {
        if (!inside(to, dst))
            return result::bad_rectangle;
        if (!s.spills())
            return s.whole();
        if (overlap(src, from, dst, to))
            return result::overlap;
    } else if (shown.w != 0 && share_memory(src, from, dst, shown)) {
        return result::overlap;
    }
    const result r = s.verdict();
    return r != result::ok || shown.w == 0 ? r : s.part(shown);
}

} // namespace vexlor::detail

#endif

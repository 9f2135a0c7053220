/* Fills, copies and scales of vexlor.hpp, split over several contexts that draw at once.
 *
 *     std::vector<vexlor::throwing_context> crew(4);
 *     vexlor::draw_parallel(crew, photo, photo.bounds(), screen, screen.bounds());
 *
 * The bytes are those of the same call on crew[0] alone. A drawing is cut into bands of rows where that holds,
 * and drawn whole by crew[0] where it does not. Bands are drawn
 *
 *   fill, copy    at any row;
 *   scale         at any row too: each band takes its positions from the whole rectangles. Filtered scaling of
 *                 YUV is cut only where a row of `to` starts a row of `from`, which asks for a ratio with
 *                 an exact 16.16 step: from : to of 1:1, 1:2, 3:2 or 4:1 are split, 1:3 and 4:3 are drawn
 *                 whole. So is filtered scaling of all other formats: its bands would have to make each row
 *                 alone, and one call whose rows share their work is faster than many that do not.
 *
 * Drawn whole are also rectangles whose rows share memory, Catmull-Rom scaling of a single row, and anything too
 * small for the work to outweigh a band (parallel_pixels, on_threads::light_pixels).
 *
 * Threads are std::jthread: it comes with the language, so that a header that is installed with a C library
 * brings no dependency along, and it is joined when it goes out of scope, so that no drawing outlives its call.
 * A thread costs some tens of microseconds per call. Programs with a pool hand it in:
 *
 *     draw_parallel(crew, src, from, dst, to,
 *                   [](unsigned n, const auto& band) { tbb::parallel_for(0u, n, band); }); */
#ifndef VEXLOR_PARALLEL_HPP
#define VEXLOR_PARALLEL_HPP

#include "vexlor.hpp"

#include <atomic>
#include <numeric>
#include <system_error>
#include <thread>
#include <vector>

namespace vexlor {

/* The least number of destination pixels that is worth a band. */
constexpr int64_t parallel_pixels = 32768;

/* Calls band(0) ... band(n - 1), each once, at the same time, and returns when all have returned: the first on
 * the caller's thread, each other one on a thread of its own. Where the system has no more threads to give, the
 * caller's thread draws the rest, or, without exceptions, the program ends. */
struct on_threads {
    /* The same where a pixel takes less than a nanosecond, in all but filtered scaling: starting a thread costs as
     * much as filling that many. A runner that has no such member starts bands for little. */
    static constexpr int64_t light_pixels = 262144;

    template <class Band> void operator()(unsigned n, const Band& band) const
    {
        std::vector<std::jthread> threads;
        threads.reserve(n);
        unsigned next = 1;
        const auto start = [&] {
            for (; next < n; ++next)
                threads.emplace_back([&band, next] { band(next); });
        };
#if defined(__cpp_exceptions)
        try {
            start();
        } catch (const std::system_error&) {
        }
#else
        start();
#endif
        band(0u);
        for (; next < n; ++next)
            band(next);
    }
};

namespace detail {

template <class Run> constexpr int64_t least_pixels(bool light)
{
    if constexpr (requires { Run::light_pixels; })
        return light ? Run::light_pixels : parallel_pixels;
    else
        return parallel_pixels;
}

/* Draws `area` as bands of rows, whose number of rows is a multiple of `unit`: draw(context, band) for each. */
template <class Crew, class Run, class Draw>
result in_bands(Crew& crew, rect area, int32_t unit, bool light, const Run& run, const Draw& draw)
{
    const int64_t by_size = int64_t{area.w} * area.h / least_pixels<Run>(light);
    const auto n = static_cast<int32_t>(
        std::min({static_cast<int64_t>(std::size(crew)), int64_t{area.h} / unit, by_size}));
    vexlor_context& first = *crew[0].get();
    if (n < 2)
        return draw(first, area);
    for (int32_t i = 1; i < n; ++i) { // state and slots, not the cache
        vexlor_context& other = *crew[static_cast<std::size_t>(i)].get();
        vexlor_cache* const cache = other.cache;
        other = first;
        other.cache = cache;
    }
    const int32_t units = area.h / unit;
    const auto edge = [&](int32_t i) {
        return i == n ? area.h : static_cast<int32_t>(int64_t{units} * i / n) * unit;
    };
    std::atomic<result> outcome = result::ok;
    run(static_cast<unsigned>(n), [&](unsigned which) {
        const auto i = static_cast<int32_t>(which);
        const rect band{area.x, area.y + edge(i), area.w, edge(i + 1) - edge(i)};
        const result r = draw(*crew[which].get(), band);
        if (r != result::ok)
            outcome.store(r);
    });
    return outcome.load();
}

/* Rows of a filtered YUV scale from one place where both sides start a row to the next; 0: there is none. */
inline int32_t rows_in_step(const scaling& s)
{
    if ((int64_t{s.from.h} << 16) % s.to.h != 0)
        return 0;
    return 65536 / std::gcd(s.ystep(), 65536);
}

template <class Crew, class Run>
result parallel_scale(Crew& crew, const vexlor_surface_desc& src, rect from, const vexlor_surface_desc& dst,
                      rect to, const Run& run)
{
    vexlor_context& first = *crew[0].get();
    const scaling s{first, src, from, dst, to};
    if (check(s) != result::ok || !inside(to, dst) || share_memory(src, from, dst, to) ||
        (s.filtered() && !s.through_cache()))
        return scale(first, src, from, dst, to, to);
    const int32_t unit = s.through_cache() ? rows_in_step(s) : 1;
    if (unit == 0)
        return scale(first, src, from, dst, to, to);
    if (const result r = s.verdict(); r != result::ok)
        return r;
    return in_bands(crew, to, unit, !s.filtered(), run, [&](vexlor_context& ctx, rect band) {
        if (band == to)
            return scale(ctx, src, from, dst, to, to);
        if (!s.through_cache())
            return scaling{ctx, src, from, dst, to}.part(band);
        const auto source_row = [&](int32_t row) {
            return static_cast<int32_t>((int64_t{row} - to.y) * s.ystep() >> 16);
        };
        const int32_t top = source_row(band.y);
        const int32_t bottom = band.y + band.h == to.y + to.h ? from.h : source_row(band.y + band.h);
        return scaling{ctx, src, {from.x, from.y + top, from.w, bottom - top}, dst, band}.whole();
    });
}

} // namespace detail

/* As crew[0].fill(dst, area).
 * crew: a contiguous range, not empty, of basic_context. crew[0] holds the settings; the others take over its
 *       settings and slots. A slot that you replaced must bear being run by several threads on different rows.
 * run:  calls its second argument with 0 ... n - 1, in any order, at once or not (see on_threads).
 * Errors as for the single call, in the manner of crew[0]. With out_of_memory alone some bands may be drawn. */
template <class Crew, class Run = on_threads>
auto draw_parallel(Crew&& crew, const surface_view& dst, rect area, const Run& run = {})
{
    const auto draw = [&](vexlor_context& ctx, rect band) { return detail::fill(ctx, dst.desc(), band); };
    const bool bad = !detail::inside(area, dst.desc());
    return crew[0].report(bad ? result::bad_rectangle : detail::in_bands(crew, area, 1, true, run, draw));
}

/* As crew[0].copy(src, from, dst, to). */
template <class Crew, class Run = on_threads>
auto draw_parallel(Crew&& crew, const const_surface_view& src, rect from, const surface_view& dst, point to,
                   const Run& run = {})
{
    const rect target{to.x, to.y, from.w, from.h};
    const auto draw = [&](vexlor_context& ctx, rect band) {
        const rect part{from.x, from.y + (band.y - to.y), band.w, band.h};
        return detail::copy(ctx, src.desc(), part, dst.desc(), {band.x, band.y});
    };
    const bool bad = !detail::inside(from, src.desc()) || !detail::inside(target, dst.desc());
    if (bad || detail::share_memory(src.desc(), from, dst.desc(), target))
        return crew[0].report(detail::copy(*crew[0].get(), src.desc(), from, dst.desc(), to));
    return crew[0].report(detail::in_bands(crew, target, 1, true, run, draw));
}

/* As crew[0].scale(src, from, dst, to). */
template <class Crew, class Run = on_threads>
auto draw_parallel(Crew&& crew, const const_surface_view& src, rect from, const surface_view& dst, rect to,
                   const Run& run = {})
{
    return crew[0].report(detail::parallel_scale(crew, src.desc(), from, dst.desc(), to, run));
}

} // namespace vexlor

#endif

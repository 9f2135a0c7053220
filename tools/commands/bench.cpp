// vexlor bench: how fast the library is on this machine, with SIMD off and on, and by several threads at once.
#include "../context.h"
#include "../failure.h"
#include "../formats.h"
#include "../surface.h"
#include "commands.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vexlor_parallel.hpp>

namespace tool {

namespace {

struct Case {
    const char* name;
    uint32_t from, to;
    uint32_t alpha_op = VEXLOR_ALPHA_OP_NONE, alpha_src = VEXLOR_ALPHA_SRC_GLOBAL;
    uint32_t dst_op = VEXLOR_ALPHA_DST_BLEND;
    // Scaling, from a source of num / 4 of the size.
    int32_t num = 0;
    uint32_t filter = VEXLOR_FILTER_NONE;
};

constexpr uint32_t fill = 0; // as a source format
constexpr uint32_t r565 = VEXLOR_FMT_565, yuv = VEXLOR_FMT_U8Y8V8Y8, xrgb = VEXLOR_FMT_X8R8G8B8,
                   bgrx = VEXLOR_FMT_B8G8R8X8, bgra = VEXLOR_FMT_B8G8R8A8;
constexpr uint32_t none = VEXLOR_ALPHA_OP_NONE, test = VEXLOR_ALPHA_OP_TEST, blend = VEXLOR_ALPHA_OP_BLEND;
constexpr uint32_t weight = VEXLOR_ALPHA_SRC_GLOBAL, pixel = VEXLOR_ALPHA_SRC_PIXEL;
constexpr uint32_t nearest = VEXLOR_FILTER_NONE, mean = VEXLOR_FILTER_MEAN, catrom = VEXLOR_FILTER_CATROM;

constexpr Case cases[] = {
    {"fill B8G8R8X8", fill, bgrx},
    {"fill 565", fill, r565},
    {"fill B8G8R8A8, blended", fill, bgra, blend},
    {"copy B8G8R8X8", bgrx, bgrx},
    {"copy B8G8R8X8, alpha one", bgrx, bgra, none, weight, VEXLOR_ALPHA_DST_ONE},
    {"copy 565", r565, r565},
    {"copy U8Y8V8Y8 to B8G8R8X8", yuv, bgrx},
    {"copy U8Y8V8Y8 to X8R8G8B8", yuv, xrgb},
    {"copy B8G8R8A8 by alpha test", bgra, bgra, test, weight, VEXLOR_ALPHA_DST_REPLACE},
    {"blend B8G8R8A8 by its alpha", bgra, bgra, blend, pixel},
    {"blend B8G8R8A8 by its alpha, alpha one", bgra, bgra, blend, pixel, VEXLOR_ALPHA_DST_ONE},
    {"blend B8G8R8X8 by one weight", bgrx, bgrx, blend},
    {"blend 565 by one weight", r565, r565, blend},
    {"blend U8Y8V8Y8 over B8G8R8X8 by one weight", yuv, bgrx, blend},
    {"scale B8G8R8X8 up 2x, unfiltered", bgrx, bgrx, none, weight, 0, 2, nearest},
    {"scale B8G8R8X8 up 2x, linear", bgrx, bgrx, none, weight, 0, 2, mean},
    {"scale B8G8R8X8 up 2x, Catmull-Rom", bgrx, bgrx, none, weight, 0, 2, catrom},
    {"scale B8G8R8X8 down 2x, mean", bgrx, bgrx, none, weight, 0, 8, mean},
    {"scale B8G8R8X8 down 2x, Gaussian", bgrx, bgrx, none, weight, 0, 8, catrom},
    {"scale 565 up 2x, unfiltered", r565, r565, none, weight, 0, 2, nearest},
    {"scale U8Y8V8Y8 to B8G8R8X8 up 2x, unfiltered", yuv, bgrx, none, weight, 0, 2, nearest},
    {"scale U8Y8V8Y8 to B8G8R8X8 down 2x, mean", yuv, bgrx, none, weight, 0, 8, mean},
    {"scale B8G8R8A8 up 2x, linear, blended", bgra, bgra, blend, pixel, 0, 2, mean},
};

using Clock = std::chrono::steady_clock;
double since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

Surface random_surface(Size size, uint32_t format)
{
    Surface surface(size, format);
    uint32_t state = 1;
    for (size_t i = 0; i < surface.bytes(); ++i)
        surface.row(0)[i] = static_cast<uint8_t>((state = state * 1664525 + 1013904223) >> 24);
    return surface;
}

void set(vexlor_context* ctx, const Case& c)
{
    vexlor_context_set_color(ctx, 0x80FF4020);
    vexlor_context_set_alpha_op(ctx, c.alpha_op);
    vexlor_context_set_alpha_src(ctx, c.alpha_src);
    vexlor_context_set_alpha_dst_op(ctx, c.dst_op);
    vexlor_context_set_alpha_value(ctx, 20);
    vexlor_context_set_alpha_test(ctx, VEXLOR_ALPHA_TEST_GREATER_EQUAL);
    vexlor_context_set_alpha_ref(ctx, 128);
    vexlor_context_set_filter(ctx, c.filter);
}

vexlor::surface_view view(const Surface& surface)
{
    const vexlor_surface_desc& desc = *surface.desc();
    return {std::span(desc.pixels, surface.bytes()), desc.width, desc.height,
            static_cast<vexlor::format>(desc.format), desc.stride};
}

struct BenchCommand : Command {
    void declare(Options& options) override
    {
        options.parsed(
            "--size", size, parse_size, "WxH",
            "size of the surface that is drawn on (default: 1280x720). Scaling takes it from half or twice "
            "as much");
        options.number("--repeat", repeat, 1, 1000, "measurements of which the median counts (default: 5)");
        options.number(
            "--threads", threads, 2, 256,
            "also by draw_parallel over that many contexts, SIMD off, and how much faster that is");
        options.number("--time", time, 1, 10000, "milliseconds that a measurement draws for (default: 10)");
    }

    void run() override
    {
        const Size to = size.value_or(Size{1280, 720});
        std::printf("Millions of pixels drawn per second on %dx%d surfaces, median of %d:\n\n", to.width,
                    to.height, repeat);
        std::printf("%-47s%10s%10s", "", "SIMD off", "SIMD on");
        if (threads != 0)
            std::printf("%8d threads%7s", threads, "gain");
        std::printf("\n");
        for (const Case& c : cases) {
            const int32_t num = c.num == 0 ? 4 : c.num;
            // Even, for YUV.
            const Size from{std::max(2, to.width * num / 4 & ~1), std::max(1, to.height * num / 4)};
            const Surface source = random_surface(from, c.from == fill ? c.to : c.from);
            const Surface target = random_surface(to, c.to);
            std::vector<double> off, on, parallel;
            for (int32_t i = 0; i < repeat; ++i) { // taking turns: a busy moment hits both
                off.push_back(rate(c, source, target, simd_none));
                on.push_back(rate(c, source, target, simd_all));
                if (threads != 0)
                    parallel.push_back(rate_in_parallel(c, source, target));
            }
            std::printf("%-47s%10.0f%10.0f", c.name, median(off), median(on));
            if (threads != 0)
                std::printf("%16.0f%7.2f", median(parallel), median(parallel) / median(off));
            std::printf("\n");
            std::fflush(stdout);
        }
    }

private:
    static uint32_t draw(const Case& c, vexlor_context* ctx, const Surface& source, const Surface& target)
    {
        const auto [from_w, from_h] = source.size();
        const auto [w, h] = target.size();
        if (c.from == fill)
            return vexlor_fill(ctx, target.desc(), 0, 0, w, h);
        if (c.num == 0)
            return vexlor_copy(ctx, source.desc(), target.desc(), 0, 0, 0, 0, std::min(w, from_w), h);
        return vexlor_scale(ctx, source.desc(), target.desc(), 0, 0, from_w, from_h, 0, 0, w, h);
    }

    double rate(const Case& c, const Surface& source, const Surface& target, uint32_t simd) const
    {
        const Context ctx = new_context(simd);
        set(ctx.get(), c);
        return rate(c, target.size(), [&] { return draw(c, ctx.get(), source, target); });
    }

    double rate_in_parallel(const Case& c, const Surface& source, const Surface& target) const
    {
        std::vector<vexlor::context> crew;
        for (int32_t i = 0; i < threads; ++i) {
            vexlor::outcome<vexlor::context> made = vexlor::context::make();
            if (!made)
                throw std::bad_alloc();
            crew.push_back(*std::move(made));
        }
        set(crew[0].get(), c);
        const vexlor::surface_view from = view(source), to = view(target);
        const vexlor::rect part{0, 0, std::min(to.width(), from.width()), to.height()};
        return rate(c, target.size(), [&] {
            return static_cast<uint32_t>(
                c.from == fill ? vexlor::draw_parallel(crew, to, to.bounds())
                : c.num == 0   ? vexlor::draw_parallel(crew, from, part, to, vexlor::point{0, 0})
                               : vexlor::draw_parallel(crew, from, from.bounds(), to, to.bounds()));
        });
    }

    double rate(const Case& c, Size size_drawn, const std::function<uint32_t()>& draw_once) const
    {
        // The first call brings everything into the caches.
        if (const uint32_t result = draw_once(); result != VEXLOR_OK)
            throw Refused(c.name, result);
        const double pixels = double(size_drawn.width) * size_drawn.height;
        const auto start = Clock::now();
        int64_t drawn = 0;
        do {
            draw_once();
            ++drawn;
        } while (since(start) * 1e3 < time);
        return static_cast<double>(drawn) * pixels / since(start) / 1e6;
    }

    static double median(std::vector<double>& values)
    {
        std::ranges::sort(values);
        return (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
    }

    std::optional<Size> size;
    int32_t repeat = 5, time = 10, threads = 0;
};

} // namespace

const Entry bench_entry{"bench", "Measure the main operations on this machine, with SIMD off and on",
                        "  vexlor bench --size 1920x1080 --repeat 9\n"
                        "  vexlor bench --size 3840x2160 --threads 4",
                        make_command<BenchCommand>};

} // namespace tool

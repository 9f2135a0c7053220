// What all drawing commands share: where pixels come from and go to, the timed call, its report.
#pragma once

#include "context.h"
#include "options.h"
#include "surface.h"

#include <vexlor.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tool {

// A file with pixels: a PNG or JPEG picture, or a raw frame where a raw format is given.
struct Input {
    std::string file;
    uint32_t raw_format = 0; // 0: not raw
    std::optional<Size> raw_size;
    int32_t raw_stride = 0; // 0: rows without gaps

    // Declares --<prefix>format, --<prefix>size and --<prefix>stride.
    void declare_raw(Options& options, const std::string& prefix, const std::string& what);
    bool is_raw() const { return raw_format != 0; }
    Surface read_raw() const;
    Picture read() const; // either kind, as a picture
};

// One call of the library, and what the report says about it.
struct Drawing {
    std::string operation, pixels, area;
    Size drawn;
    std::function<void(vexlor_context*)> set_up; // the state of a new context
    std::function<uint32_t(vexlor_context*, const vexlor_surface_desc&)> call;
};

// The surface that is drawn on, how, and the file that it is written to.
struct Target {
    Input background; // no file: an empty canvas
    std::optional<Size> canvas;
    std::optional<Color> canvas_color;
    uint32_t format = 0; // 0: chosen by default_format
    std::string output;
    int32_t repeat = 1;
    uint32_t simd = simd_none;
    bool compare_simd = false;

    void declare(Options& options);
    // The surface before drawing. Without a format, `like` tells the byte order. Without background and
    // canvas it is an empty one of size `otherwise`, transparent when `alpha` says so.
    Surface make(uint32_t like, Size otherwise, bool alpha) const;
    // Draws `repeat` times, each time with a new context on a fresh copy of `before`, writes the file and
    // prints the report.
    void draw(const Surface& before, const Drawing& drawing) const;
};

// 565 for 565; a 32-bit format in the byte order of a 32-bit one; for all others B8G8R8X8 or B8G8R8A8.
uint32_t default_format(uint32_t like, bool alpha);

// The options and the work that copy, blend, test and scale have in common.
struct Transfer {
    explicit Transfer(bool scaling = false) : scales(scaling) {}

    bool scales; // to a rectangle of another size
    Input source;
    uint32_t source_format = 0;    // 0: chosen to fit the target
    bool needs_alpha = false;      // then the chosen one has an alpha channel
    int32_t premultiplied_by = no; // no, own_alpha, or a weight from 0 to 255
    std::string alpha;
    std::optional<Rect> rect;
    std::optional<Point> at;
    std::optional<Size> scaled_size;
    std::optional<Rect> to_rect;
    bool within = false;
    Target target;

    static constexpr int32_t no = -2, own_alpha = -1;

    void declare(Options& options);
    void run(const std::string& operation, const std::function<void(vexlor_context*)>& set_up) const;

private:
    Surface read_source() const;
    Rect destination(Size drawn) const;
};

} // namespace tool

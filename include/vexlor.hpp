/* libvexlor for C++20: a thin checked layer over vexlor.h, in this header alone.
 *
 * It draws what the C calls draw, byte for byte, and refuses or mends what they leave to their caller:
 *
 *  - Surfaces are views over a span, and exist only when size, stride and format fit into its memory.
 *  - Nothing outside a rectangle is ever written. Fills are checked against all four edges; copies of 565
 *    rows of odd width carry no pixel along, and enlarged 565 rows bring none with them.
 *  - Fills paint alike with SIMD on and off.
 *  - Filtered YUV scaling always starts from a row cache that fits, so its rows never lag.
 *  - YUV 4:2:2 rectangles consist of whole pairs.
 *  - Formats, filters and alpha settings are enums.
 *
 *     std::vector<uint32_t> pixels(640 * 480);
 *     vexlor::surface_view screen(pixels, 640, 480, vexlor::format::b8g8r8x8);
 *     vexlor::throwing_context ctx;
 *     ctx.set_color(0x00345C).fill(screen, {0, 0, 640, 480});
 *
 * Errors are results or exceptions, as you like: `context` returns a `result`, `throwing_context` throws an
 * `error` that holds one. Views are made by make(), which returns an `outcome`, or by a constructor that throws.
 * With -fno-exceptions (or its like) the throwing half is absent and all else is the same; no function that
 * returns a result throws, but for what std::jthread may do (see vexlor_parallel.hpp).
 *
 * Units are pixels for sizes, places and widths, bytes for strides. A refused call has written nothing.
 * Whole drawings over several threads: vexlor_parallel.hpp. */
#ifndef VEXLOR_HPP
#define VEXLOR_HPP

#include "vexlor.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <ranges>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vexlor {

/* ---- Results -------------------------------------------------------------------------------------------------- */

/* How a call ended: the codes of vexlor.h, and from 100 on those of this layer. */
enum class [[nodiscard]] result : uint32_t{
    ok = VEXLOR_OK,
    null_pointer = VEXLOR_NULL_POINTER,
    stride_too_short = VEXLOR_STRIDE_TOO_SHORT,
    not_convertible = VEXLOR_NOT_CONVERTIBLE,
    unsupported_format = VEXLOR_UNSUPPORTED_FORMAT,
    no_source_alpha = VEXLOR_NO_SOURCE_ALPHA,
    bad_rectangle = VEXLOR_BAD_RECTANGLE,
    overlap = VEXLOR_OVERLAP,
    unsupported_alpha = VEXLOR_UNSUPPORTED_ALPHA,
    unsupported_fill = VEXLOR_UNSUPPORTED_FILL,
    unknown_format = 100,
    bad_size,
    memory_too_short,
    misaligned,
    half_pair,
    quarter_fill,
    out_of_memory,
};

constexpr std::string_view to_string(result r)
{
    switch (r) {
    case result::ok: return "ok";
    case result::null_pointer: return "a context or a surface is missing";
    case result::stride_too_short: return "a row of pixels is longer than the stride";
    case result::not_convertible: return "the two formats cannot be combined";
    case result::unsupported_format: return "the operation does not know the format";
    case result::no_source_alpha: return "the source has no alpha channel";
    case result::bad_rectangle: return "a rectangle is empty or reaches past its surface";
    case result::overlap: return "the rectangles overlap on one surface";
    case result::unsupported_alpha: return "this combination of alpha settings is not supported";
    case result::unsupported_fill: return "fills are opaque or blended by the global alpha";
    case result::unknown_format: return "the format code is unknown";
    case result::bad_size: return "a width or height is below 1 or above 32767";
    case result::memory_too_short: return "the memory is shorter than the surface";
    case result::misaligned: return "rows do not start at a multiple of the pixel's size";
    case result::half_pair: return "a YUV 4:2:2 width or left edge is odd";
    case result::quarter_fill: return "an opaque fill with alpha_destination::one would paint a quarter only";
    case result::out_of_memory: return "no memory";
    }
    return "unknown result";
}

#if defined(__cpp_exceptions)
/* What throwing_context and the view constructors throw. what() is to_string(code()). */
class error : public std::exception {
public:
    explicit error(result code) : reason(code) {}
    result code() const noexcept { return reason; }
    const char* what() const noexcept override { return to_string(reason).data(); }

private:
    result reason;
};
#endif

/* A value, or the result that explains why there is none. Look before you dereference. */
template <class T> class [[nodiscard]] outcome {
public:
    outcome(T value) : held(std::move(value)) {}
    outcome(result why) : reason(why) {} /* never ok */
    explicit operator bool() const { return held.has_value(); }
    result error() const { return reason; } /* ok when there is a value */
    T& operator*() & { return *held; }
    T&& operator*() && { return *std::move(held); }
    const T& operator*() const& { return *held; }
    T* operator->() { return &*held; }
    const T* operator->() const { return &*held; }

private:
    std::optional<T> held;
    result reason = result::ok;
};

/* ---- Names of the C header's numbers ---------------------------------------------------------------------------- */

/* Memory byte order, lowest address first, as in the byte-order chart of vexlor.h. */
enum class format : uint32_t {
    rgb565 = VEXLOR_FMT_565,
    y8v8y8u8 = VEXLOR_FMT_Y8V8Y8U8,
    u8y8v8y8 = VEXLOR_FMT_U8Y8V8Y8,
    x8r8g8b8 = VEXLOR_FMT_X8R8G8B8,
    a8r8g8b8 = VEXLOR_FMT_A8R8G8B8,
    b8g8r8x8 = VEXLOR_FMT_B8G8R8X8,
    b8g8r8a8 = VEXLOR_FMT_B8G8R8A8,
};
enum class filter : uint32_t {
    none = VEXLOR_FILTER_NONE,
    mean = VEXLOR_FILTER_MEAN,
    catrom = VEXLOR_FILTER_CATROM
};
enum class alpha_mode : uint32_t {
    straight = VEXLOR_ALPHA_STRAIGHT,
    premultiplied = VEXLOR_ALPHA_PREMULTIPLIED
};
enum class alpha_op : uint32_t {
    none = VEXLOR_ALPHA_OP_NONE,
    test = VEXLOR_ALPHA_OP_TEST,
    blend = VEXLOR_ALPHA_OP_BLEND
};
enum class alpha_source : uint32_t { global = VEXLOR_ALPHA_SRC_GLOBAL, pixel = VEXLOR_ALPHA_SRC_PIXEL };
enum class alpha_destination : uint32_t {
    blend = VEXLOR_ALPHA_DST_BLEND,
    replace = VEXLOR_ALPHA_DST_REPLACE,
    one = VEXLOR_ALPHA_DST_ONE
};
enum class alpha_test : uint32_t {
    less = VEXLOR_ALPHA_TEST_LESS,
    less_equal = VEXLOR_ALPHA_TEST_LESS_EQUAL,
    equal = VEXLOR_ALPHA_TEST_EQUAL,
    greater_equal = VEXLOR_ALPHA_TEST_GREATER_EQUAL,
    greater = VEXLOR_ALPHA_TEST_GREATER,
    not_equal = VEXLOR_ALPHA_TEST_NOT_EQUAL
};

/* "B8G8R8A8" and so on; empty for a code that is none of the seven. */
constexpr std::string_view to_string(format f)
{
    switch (f) {
    case format::rgb565: return "565";
    case format::y8v8y8u8: return "Y8V8Y8U8";
    case format::u8y8v8y8: return "U8Y8V8Y8";
    case format::x8r8g8b8: return "X8R8G8B8";
    case format::a8r8g8b8: return "A8R8G8B8";
    case format::b8g8r8x8: return "B8G8R8X8";
    case format::b8g8r8a8: return "B8G8R8A8";
    }
    return {};
}
constexpr std::string_view to_string(filter f)
{
    return f == filter::none ? "none" : f == filter::catrom ? "catrom" : "mean";
}
constexpr std::string_view to_string(alpha_mode m)
{
    return m == alpha_mode::straight ? "straight" : "premultiplied";
}
constexpr std::string_view to_string(alpha_op op)
{
    return op == alpha_op::none ? "none" : op == alpha_op::test ? "test" : "blend";
}
constexpr std::string_view to_string(alpha_source s)
{
    return s == alpha_source::global ? "global" : "pixel";
}
constexpr std::string_view to_string(alpha_destination d)
{
    return d == alpha_destination::blend ? "blend" : d == alpha_destination::replace ? "replace" : "one";
}
constexpr std::string_view to_string(alpha_test t)
{
    constexpr std::string_view names[] = {"<", "<=", "==", ">=", ">", "!="};
    return static_cast<uint32_t>(t) < std::size(names) ? names[static_cast<uint32_t>(t)] : "never";
}
constexpr bool is_known(format f) { return !to_string(f).empty(); }
constexpr bool is_yuv(format f) { return f == format::y8v8y8u8 || f == format::u8y8v8y8; }
/* 2 or 4. */
constexpr uint32_t bytes_per_pixel(format f) { return (static_cast<uint32_t>(f) & 0x3F) >> 3; }

/* ---- Places ------------------------------------------------------------------------------------------------------ */

struct point {
    int32_t x, y;
    bool operator==(const point&) const = default;
};
struct rect {
    int32_t x, y, w, h;
    bool operator==(const rect&) const = default;
};

/* The common part; w and h are 0 when there is none. Any numbers: sums do not wrap. */
constexpr rect intersection(rect a, rect b)
{
    const int32_t x = std::max(a.x, b.x), y = std::max(a.y, b.y);
    const int64_t w = std::min(int64_t{a.x} + a.w, int64_t{b.x} + b.w) - x;
    const int64_t h = std::min(int64_t{a.y} + a.h, int64_t{b.y} + b.h) - y;
    if (w <= 0 || h <= 0)
        return {x, y, 0, 0};
    return {x, y, static_cast<int32_t>(w), static_cast<int32_t>(h)};
}

/* ---- Surfaces ---------------------------------------------------------------------------------------------------- */

/* Widths, heights and the sizes of scaled rectangles end here: positions are 16.16 fixed point. */
constexpr int32_t largest_size = 32767;

/* A vector, array or span of bytes or pixels that does not go away with the call. */
template <class R>
concept pixel_memory = std::ranges::contiguous_range<R> && std::ranges::sized_range<R> &&
    std::ranges::borrowed_range<R> && std::is_trivially_copyable_v<std::ranges::range_value_t<R>>;
template <class R>
concept writable_memory =
    pixel_memory<R> && !std::is_const_v<std::remove_reference_t<std::ranges::range_reference_t<R>>>;

/* A surface to read from: borrowed memory that holds `height` rows of `width` pixels. Copies refer to the
 * same memory, which must outlive them. */
class const_surface_view {
public:
    /* memory   bytes or pixels; at least (height - 1) * stride + width * bytes per pixel bytes
     * width    1 to 32767 pixels, even in the YUV formats; height: 1 to 32767 rows
     * code     one of the seven formats
     * stride   bytes from row to row, at least width * bytes per pixel; 0 (default): exactly that
     *
     * Rows must start at multiples of 4 in the 32-bit formats, of 2 in the others.
     * Errors, in this order: unknown_format, bad_size, half_pair, stride_too_short, misaligned,
     * memory_too_short. */
    template <pixel_memory R>
    static outcome<const_surface_view> make(R&& memory, int32_t width, int32_t height, format code,
                                            std::size_t stride = 0)
    {
        const_surface_view view;
        const result r = view.fit(std::as_bytes(std::span(memory)), width, height, code, stride);
        return r == result::ok ? outcome<const_surface_view>(view) : r;
    }
#if defined(__cpp_exceptions)
    /* As make(); throws the error. */
    template <pixel_memory R>
    const_surface_view(R&& memory, int32_t width, int32_t height, format code, std::size_t stride = 0)
        : const_surface_view(*checked(make(memory, width, height, code, stride)))
    {}
#endif
    int32_t width() const { return described.width; }
    int32_t height() const { return described.height; }
    uint32_t stride() const { return described.stride; }
    format code() const { return static_cast<format>(described.format); }
    rect bounds() const { return {0, 0, width(), height()}; }
    /* For calls of the C interface. */
    const vexlor_surface_desc& desc() const { return described; }

protected:
    const_surface_view() = default;
    result fit(std::span<const std::byte> memory, int32_t width, int32_t height, format code,
               std::size_t stride)
    {
        if (!is_known(code))
            return result::unknown_format;
        if (width < 1 || width > largest_size || height < 1 || height > largest_size)
            return result::bad_size;
        if (is_yuv(code) && width % 2 != 0)
            return result::half_pair;
        const std::size_t row = static_cast<std::size_t>(width) * bytes_per_pixel(code);
        if (stride == 0)
            stride = row;
        if (stride < row || stride > UINT32_MAX)
            return result::stride_too_short;
        if ((reinterpret_cast<std::uintptr_t>(memory.data()) | stride) % bytes_per_pixel(code) != 0)
            return result::misaligned;
        if (uint64_t{stride} * (static_cast<uint32_t>(height) - 1) + row > memory.size())
            return result::memory_too_short;
        // The C interface has one descriptor for both; sources are only read.
        auto* const pixels = reinterpret_cast<uint8_t*>(const_cast<std::byte*>(memory.data()));
        described = {width, height, static_cast<uint32_t>(stride), pixels, static_cast<uint32_t>(code)};
        return result::ok;
    }
#if defined(__cpp_exceptions)
    template <class T> static outcome<T> checked(outcome<T> made)
    {
        if (!made)
            throw vexlor::error(made.error());
        return made;
    }
#endif

private:
    vexlor_surface_desc described{};
};

/* A surface to draw on; a source, too. */
class surface_view : public const_surface_view {
public:
    /* As const_surface_view::make, over memory that may be written. */
    template <writable_memory R>
    static outcome<surface_view> make(R&& memory, int32_t width, int32_t height, format code,
                                      std::size_t stride = 0)
    {
        surface_view view;
        const result r = view.fit(std::as_bytes(std::span(memory)), width, height, code, stride);
        return r == result::ok ? outcome<surface_view>(view) : r;
    }
#if defined(__cpp_exceptions)
    template <writable_memory R>
    surface_view(R&& memory, int32_t width, int32_t height, format code, std::size_t stride = 0)
        : surface_view(*checked(make(memory, width, height, code, stride)))
    {}
#endif

private:
    surface_view() = default;
};

/* ---- Error policies ----------------------------------------------------------------------------------------------- */

/* Drawing returns its result. */
struct returned {
    static result report(result r) { return r; }
};
#if defined(__cpp_exceptions)
/* Drawing returns nothing, and throws an error where the result is not ok. */
struct thrown {
    static void report(result r)
    {
        if (r != result::ok)
            throw error(r);
    }
};
#endif

} // namespace vexlor

#include "vexlor_detail.hpp"

namespace vexlor {

/* ---- Context ------------------------------------------------------------------------------------------------------- */

/* Drawing state and routines; owns a vexlor_context. Move-only; one thread at a time. A moved-from context may
 * only be destroyed or assigned to. */
template <class Errors> class basic_context {
public:
    /* Error: out_of_memory. */
    static outcome<basic_context> make()
    {
        basic_context made{detail::owned_context(detail::create())};
        if (!made.owned || !made.owned->cache)
            return result::out_of_memory;
        return made;
    }
#if defined(__cpp_exceptions)
    /* Throws an error: out_of_memory. */
    basic_context() : owned(detail::create())
    {
        if (!owned || !owned->cache)
            throw vexlor::error(result::out_of_memory);
    }
#endif
    /* What a call on this context makes of a result: gives it back, or throws. */
    static auto report(result r) { return Errors::report(r); }
    /* For calls of the C interface, and for the routine slots. It stays owned by this object. */
    vexlor_context* get() { return owned.get(); }

    /* Settings, all 0, none or opaque at first; each returns *this. A combination that means nothing is refused
     * by the drawing call. */
    basic_context& set_simd(bool on) { return vexlor_context_set_simd(get(), on), *this; }
    basic_context& set_filter(filter f) { return owned->filter = static_cast<uint32_t>(f), *this; }
    /* A pixel of the destination's format; of 16 bits the low half counts. A YUV surface takes one pixel's two
     * bytes for both pixels of a pair, so that U equals V. */
    basic_context& set_color(uint32_t pixel) { return owned->color = pixel, *this; }
    basic_context& set_alpha_mode(alpha_mode m)
    {
        return owned->alpha_mode = static_cast<uint32_t>(m), *this;
    }
    basic_context& set_alpha_op(alpha_op op) { return owned->alpha_op = static_cast<uint32_t>(op), *this; }
    /* 0 to 255; 565 blends have a scale of their own (see vexlor_1d_copy_blend_over_gbl_565). */
    basic_context& set_alpha_value(uint8_t a) { return owned->alpha_value = a, *this; }
    basic_context& set_alpha_source(alpha_source s)
    {
        return owned->alpha_src = static_cast<uint32_t>(s), *this;
    }
    basic_context& set_alpha_destination(alpha_destination d)
    {
        return owned->alpha_dst_op = static_cast<uint32_t>(d), *this;
    }
    basic_context& set_alpha_test(alpha_test t, uint8_t reference)
    {
        owned->alpha_test = static_cast<uint32_t>(t);
        owned->alpha_ref = reference;
        return *this;
    }

    /* Paints `area` of dst with the color: written (alpha_op::none) or blended by alpha_value (alpha_op::blend).
     * Errors: bad_rectangle where area is empty or reaches past any edge; half_pair where a YUV area has an odd
     * x or w; quarter_fill: for an opaque alpha byte put it into the color; and those of vexlor_fill. */
    auto fill(const surface_view& dst, rect area) { return report(detail::fill(*owned, dst.desc(), area)); }
    /* The same for the part of area that lies on dst; ok where there is none. w and h: 0 or more. */
    auto fill_clipped(const surface_view& dst, rect area)
    {
        const rect part = intersection(area, dst.bounds());
        const bool bad = area.w < 0 || area.h < 0;
        return report(bad                          ? result::bad_rectangle
                      : part.w == 0 || part.h == 0 ? result::ok
                                                   : detail::fill(*owned, dst.desc(), part));
    }

    /* Transfers `from` of src to the area of the same size at `to` of dst, as vexlor_copy does.
     * Errors: half_pair where a YUV rectangle has an odd x or w; overlap also for opaque copies with
     * alpha_destination::one; and those of vexlor_copy. */
    auto copy(const const_surface_view& src, rect from, const surface_view& dst, point to)
    {
        return report(detail::copy(*owned, src.desc(), from, dst.desc(), to));
    }
    /* The same for the pixels of `from` that lie on src and whose places lie on dst; ok where there are none.
     * Every pixel keeps its place, and an edge may run between the two pixels of a pair. w and h: 0 or more.
     * (With SIMD on, YUV into X8R8G8B8 and A8R8G8B8 is converted in blocks that begin where the visible row does:
     * channels may differ by 1, and the X byte by more, from those of the whole copy.) */
    auto copy_clipped(const const_surface_view& src, rect from, const surface_view& dst, point to)
    {
        return report(detail::copy_clipped(*owned, src.desc(), from, dst.desc(), to));
    }

    /* Stretches or shrinks `from` of src into `to` of dst, as vexlor_scale does on a context whose row cache
     * fits. w and h of both: 1 to 32767.
     * Errors: half_pair where a YUV rectangle has an odd x or w, and where YUV is scaled unfiltered into an odd
     * width; out_of_memory; and those of vexlor_scale. */
    auto scale(const const_surface_view& src, rect from, const surface_view& dst, rect to)
    {
        return report(detail::scale(*owned, src.desc(), from, dst.desc(), to, to));
    }
    /* The same seen through dst's edges: `to` may lie anywhere, partly or wholly outside, and each of its pixels
     * that lies on dst becomes exactly what a scale of all of it, onto a surface that is large enough, makes of
     * it. So a zoomed picture slides past an edge without wobbling. The source rectangle stays as it is: it is
     * neither cut nor rounded, the ratio and all positions are those of `from` and `to` whole. It must therefore
     * lie on src: bad_rectangle otherwise. ok where no pixel of `to` is visible. src and dst must not share
     * memory, but for rectangles that need no clipping.
     *
     * Costs the visible rows, at their full width where columns are cut, and one row of memory. Filtered YUV,
     * and alpha-blended or opaque Catmull-Rom of a one-row source, takes to.w * to.h pixels of memory instead
     * when it is cut. */
    auto scale_clipped(const const_surface_view& src, rect from, const surface_view& dst, rect to)
    {
        return report(
            detail::scale(*owned, src.desc(), from, dst.desc(), to, intersection(to, dst.bounds())));
    }

private:
    explicit basic_context(detail::owned_context made) : owned(std::move(made)) {}
    detail::owned_context owned;
};

using context = basic_context<returned>;
#if defined(__cpp_exceptions)
using throwing_context = basic_context<thrown>;
#endif

} // namespace vexlor

#endif

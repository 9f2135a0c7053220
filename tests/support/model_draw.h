// Models of the drawing calls: the result code, then every byte that the call leaves in the surfaces' memory.
#pragma once

#include "model_memory.h"
#include "model_yuv.h"
#include "vexlor.h"

namespace model {

// A surface as the library sees it, and the memory that stands for desc.pixels; with none only the code is worked out.
struct Surface {
    vexlor_surface_desc desc;
    uint8_t* memory;

    uint32_t bpp() const { return (desc.format & 0x3F) / 8; }
    uint8_t* at(int32_t x, int32_t y) const { return memory + size_t(y) * desc.stride + size_t(x) * bpp(); }
    // Behind the last pixel.
    uint8_t* end() const { return at(desc.width, desc.height - 1); }
};

inline bool is_rgb(uint32_t f)
{
    return f == 0x20000020 || f == 0x60000020 || f == 0xA0000020 || f == 0xE0000020;
}
inline bool is_yuv(uint32_t f) { return f == 0x00000050 || f == 0x80000050; }
inline uint32_t alpha_shift(uint32_t f) { return f == 0xA0000020 || f == 0xE0000020 ? 24 : 0; }
inline bool equivalent(uint32_t a, uint32_t b)
{
    return a == b || ((a & b & 0x20000000) != 0 && alpha_shift(a) == alpha_shift(b));
}
inline bool convertible(uint32_t a, uint32_t b, int32_t w)
{
    return equivalent(a, b) || (is_yuv(a) && is_rgb(b) && w % 2 == 0);
}
inline int32_t sum(int32_t a, int32_t b)
{
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

inline uint32_t fill(const vexlor_context* ctx, const Surface* dst, int32_t x, int32_t y, int32_t w,
                     int32_t h)
{
    if (ctx == nullptr || dst == nullptr)
        return 1;
    if (x < 0 || y < 0 || w <= 0 || h <= 0)
        return 6;
    const uint32_t format = dst->desc.format, op = ctx->alpha_dst_op, shift = alpha_shift(format);
    if (ctx->alpha_op == 0) {
        uint32_t color = dst->bpp() == 2 ? (ctx->color & 0xFFFF) * 0x10001 : ctx->color;
        uint32_t bytes = static_cast<uint32_t>(w) * dst->bpp();
        if ((format & 0x20000000) != 0 && op > 1) {
            if (op > 2)
                return 8;
            if (!is_rgb(format))
                return 4;
            color |= alpha_bits(shift);
            bytes = static_cast<uint32_t>(w);
        }
        for (int32_t row = 0; row < h && dst->memory != nullptr; ++row)
            set(dst->at(x, y + row), color, bytes);
        return 0;
    }
    if (ctx->alpha_op != 2 || ctx->alpha_src != 0)
        return 9;
    if (!is_rgb(format))
        return 4;
    if (op > 2)
        return 8;
    const Unit units[] = {fill<Alpha::blended>, fill<Alpha::replaced>, fill<Alpha::one>};
    const RowArgs args{.g = raised(ctx->alpha_value), .shift = shift, .color = ctx->color};
    for (int32_t row = 0; row < h && dst->memory != nullptr; ++row)
        for (int32_t i = 0; i < w; ++i)
            units[op](nullptr, dst->at(x + i, y + row), args);
    return 0;
}

struct Copy {
    const vexlor_context* ctx;
    const Surface *src, *dst;
    int32_t sx, sy, dx, dy, w, h;

    uint32_t run() const
    {
        if (ctx == nullptr || src == nullptr || dst == nullptr)
            return 1;
        if (sx < 0 || sy < 0 || dx < 0 || dy < 0 || w <= 0 || h <= 0 || sum(sx, w) > src->desc.width ||
            sum(sy, h) > src->desc.height || sum(dx, w) > dst->desc.width || sum(dy, h) > dst->desc.height)
            return 6;
        const bool overlap =
            same_surface() && dx < sum(sx, w) && sx < sum(dx, w) && dy < sum(sy, h) && sy < sum(dy, h);
        if (ctx->alpha_op == 0)
            return plain(overlap);
        if (ctx->alpha_op == 1 || (ctx->alpha_op == 2 && ctx->alpha_src == 1))
            return by_source_alpha(overlap);
        return ctx->alpha_op == 2 && ctx->alpha_src == 0 ? global_blend(overlap) : 8;
    }

private:
    uint32_t from() const { return src->desc.format; }
    uint32_t to() const { return dst->desc.format; }
    bool same_surface() const
    {
        const vexlor_surface_desc &a = src->desc, &b = dst->desc;
        return a.pixels == b.pixels && a.width == b.width && a.height == b.height && a.stride == b.stride &&
               a.format == b.format;
    }
    RowArgs args() const
    {
        return {raised(ctx->alpha_value), alpha_shift(from()), ctx->alpha_test, ctx->alpha_ref, 0};
    }

    // Calls draw(source row, destination row) per row; for rectangles whose sums wrapped, and for equivalent
    // formats with pixels of two sizes, never.
    template <class Draw> uint32_t rows(bool upwards, Draw draw) const
    {
        const auto fits = [](int64_t at, int64_t length, int64_t limit) { return at + length <= limit; };
        if (src->memory != nullptr && dst->memory != nullptr && fits(sx, w, src->desc.width) &&
            fits(sy, h, src->desc.height) && fits(dx, w, dst->desc.width) && fits(dy, h, dst->desc.height) &&
            !(equivalent(from(), to()) && src->bpp() != dst->bpp()))
            for (int32_t i = 0; i < h; ++i) {
                const int32_t row = upwards ? h - 1 - i : i;
                draw(src->at(sx, sy + row), dst->at(dx, dy + row));
            }
        return 0;
    }
    uint32_t units(Unit unit) const
    {
        const int32_t pixels = is_yuv(from()) ? 2 : 1;
        return rows(false, [&](const uint8_t* s, uint8_t* d) {
            for (int32_t i = 0; i + pixels <= w; i += pixels)
                unit(s + size_t(i) * src->bpp(), d + size_t(i) * dst->bpp(), args());
        });
    }

    uint32_t plain(bool overlap) const
    {
        if (!convertible(from(), to(), w))
            return 3;
        const uint32_t bytes = static_cast<uint32_t>(w) * src->bpp();
        if (bytes > src->desc.stride || static_cast<uint32_t>(w) * dst->bpp() > dst->desc.stride)
            return 2;
        if (!equivalent(from(), to())) {
            const Unit decoders[2][2] = {{decode<Y8V8Y8U8, X8R8G8B8>, decode<Y8V8Y8U8, B8G8R8X8>},
                                         {decode<U8Y8V8Y8, X8R8G8B8>, decode<U8Y8V8Y8, B8G8R8X8>}};
            return units(decoders[from() == 0x80000050][alpha_shift(to()) == 24]);
        }
        if ((to() & 0x20000000) != 0 && ctx->alpha_dst_op > 1)
            return ctx->alpha_dst_op > 2 ? 8 : is_rgb(to()) ? units(opaque_aone) : 4;
        if (overlap && sy == dy)
            return rows(false, [&](const uint8_t* s, uint8_t* d) { std::memmove(d, s, bytes); });
        // The last words of a row go behind its end, but not behind the surface's: then the row ends exactly.
        return rows(overlap && sy < dy, [&](const uint8_t* s, uint8_t* d) {
            const size_t reach = copied(bytes), whole = bytes / 4 * 4;
            const bool exact = s + reach > src->end() || d + reach > dst->end();
            copy_words(d, s, exact ? bytes / 4 * 4 : bytes);
            if (exact)
                std::memmove(d + whole, s + whole, bytes - whole);
        });
    }

    uint32_t by_source_alpha(bool overlap) const
    {
        if (!equivalent(from(), to()))
            return 3;
        if ((from() & 0x3F) != 32)
            return 4;
        if ((from() & 0x40000000) == 0)
            return 5;
        if (overlap)
            return 7;
        if (ctx->alpha_op == 1)
            return ctx->alpha_dst_op == 1 ? units(alpha_test) : 8;
        return by_state({{model::src<straight, Alpha::blended>, model::src<premultiplied, Alpha::blended>},
                         {model::src<straight, Alpha::replaced>, model::src<premultiplied, Alpha::replaced>},
                         {model::src<straight, Alpha::one>, model::src<premultiplied, Alpha::one>}});
    }

    uint32_t global_blend(bool overlap) const
    {
        if (!convertible(from(), to(), w))
            return 3;
        if (overlap)
            return 7;
        const Unit blends[2][2] = {{blend_to_rgb<Y8V8Y8U8, X8R8G8B8>, blend_to_rgb<Y8V8Y8U8, B8G8R8X8>},
                                   {blend_to_rgb<U8Y8V8Y8, X8R8G8B8>, blend_to_rgb<U8Y8V8Y8, B8G8R8X8>}};
        if (!equivalent(from(), to()))
            return units(blends[from() == 0x80000050][alpha_shift(to()) == 24]);
        if (from() == 0x10)
            return units(gbl_565);
        if (!is_rgb(from()))
            return 4;
        return by_state({{gbl<straight, Alpha::blended>, gbl<premultiplied, Alpha::blended>},
                         {gbl<straight, Alpha::replaced>, gbl<premultiplied, Alpha::replaced>},
                         {gbl<straight, Alpha::one>, gbl<premultiplied, Alpha::one>}});
    }

    uint32_t by_state(const Unit (&table)[3][2]) const
    {
        const bool known = ctx->alpha_dst_op <= 2 && ctx->alpha_mode <= 1;
        return known ? units(table[ctx->alpha_dst_op][ctx->alpha_mode]) : 8;
    }
};

} // namespace model

// What the pictures of the documentation are drawn on: surfaces that own their memory, words in a font of 3 x 5 dots,
// magnified pixels, and PNG files. All drawing is done by the library itself.
#pragma once

#include <vexlor.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct Rect {
    int32_t x, y, w, h;
};

// A surface of any format; its rows start at multiples of 16 bytes, `room` pixels may follow each.
class Surface {
public:
    Surface(int32_t w, int32_t h, uint32_t format, int32_t room = 0)
    {
        const auto row = static_cast<size_t>(w + room) * ((format & 0x3F) >> 3);
        const size_t stride = (row + 15) / 16 * 16;
        memory_.resize(stride * static_cast<size_t>(h) + 16);
        auto* at = memory_.data();
        at += (16 - reinterpret_cast<uintptr_t>(at) % 16) % 16;
        vexlor_surface_desc_init(&desc_, w, h, static_cast<uint32_t>(stride), at, format);
    }
    Surface(Surface&&) = default;
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    const vexlor_surface_desc* desc() const { return &desc_; }
    int32_t width() const { return desc_.width; }
    int32_t height() const { return desc_.height; }
    Rect all() const { return {0, 0, desc_.width, desc_.height}; }
    template <class T = uint32_t> T* row(int32_t y) const
    {
        return reinterpret_cast<T*>(desc_.pixels + static_cast<size_t>(y) * desc_.stride);
    }

private:
    vexlor_surface_desc desc_{};
    std::vector<uint8_t> memory_;
};

inline void require(uint32_t result)
{
    if (result != VEXLOR_OK) {
        std::cerr << "pictures: the library refused a drawing with code " << result << '\n';
        std::exit(1);
    }
}

struct Destroy {
    void operator()(vexlor_context* ctx) const { vexlor_context_destroy(ctx); }
};

// A context, and the three calls on whole rectangles.
class Context {
public:
    Context()
    {
        vexlor_context* made = nullptr;
        vexlor_context_create(&made);
        context_.reset(made);
        if (!made)
            std::exit(1);
    }
    vexlor_context* operator->() const { return context_.get(); }
    vexlor_context* get() const { return context_.get(); }
    void fill(const Surface& dst, Rect r, uint32_t color) const
    {
        vexlor_context_set_color(get(), color);
        require(vexlor_fill(get(), dst.desc(), r.x, r.y, r.w, r.h));
    }
    void copy(const Surface& src, Rect r, const Surface& dst, int32_t x, int32_t y) const
    {
        require(vexlor_copy(get(), src.desc(), dst.desc(), r.x, r.y, x, y, r.w, r.h));
    }
    void scale(const Surface& src, Rect from, const Surface& dst, Rect to) const
    {
        require(vexlor_scale(get(), src.desc(), dst.desc(), from.x, from.y, from.w, from.h, to.x, to.y, to.w,
                             to.h));
    }

private:
    std::unique_ptr<vexlor_context, Destroy> context_;
};

constexpr uint32_t rgb(uint32_t r, uint32_t g, uint32_t b) { return 0xFF000000u | r << 16 | g << 8 | b; }
constexpr uint32_t grey(uint32_t v) { return rgb(v, v, v); }
constexpr uint16_t to_565(uint32_t p)
{
    return static_cast<uint16_t>((p >> 8 & 0xF800) | (p >> 5 & 0x07E0) | (p >> 3 & 0x1F));
}
constexpr uint32_t from_565(uint16_t p)
{
    const uint32_t r = p >> 11, g = p >> 5 & 63u, b = p & 31u;
    return rgb(r << 3 | r >> 2, g << 2 | g >> 4, b << 3 | b >> 2);
}

// Letters and digits, five rows of three dots from the top, most significant first.
inline uint32_t dots(char c)
{
    static constexpr std::string_view known = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:,-+=/.()%";
    static constexpr std::array<uint16_t, known.size()> glyphs = {
        025755, 065656, 034443, 065556, 074647, 074644, 034553, 055755, 072227, 011152, 055655, 044447,
        057755, 065555, 025552, 065644, 025563, 065655, 034216, 072222, 055557, 055552, 055775, 055255,
        055222, 071247, 075557, 026227, 061247, 061216, 055711, 074616, 034757, 071222, 075757, 075716,
        002020, 000024, 000700, 002720, 007070, 011244, 000002, 024442, 042224, 051245};
    const size_t at = known.find(c);
    return at == std::string_view::npos ? 0 : glyphs[at];
}

// The picture itself, B8G8R8X8, with captions.
class Page : public Surface {
public:
    Page(int32_t w, int32_t h) : Surface(w, h, VEXLOR_FMT_B8G8R8X8) { pen_.fill(*this, all(), paper); }

    void write(int32_t x, int32_t y, std::string_view words, uint32_t color = grey(40)) const
    {
        for (const char c : words) {
            for (int32_t dot = 0; dot < 15; ++dot)
                if (dots(c) >> (14 - dot) & 1)
                    pen_.fill(*this, {x + dot % 3 * 2, y + dot / 3 * 2, 2, 2}, color);
            x += 8;
        }
    }
    // Pixels of any known format, each as a square of `zoom` dots, with thin lines between from 8 dots on.
    void show(const Surface& from, Rect r, int32_t x, int32_t y, int32_t zoom = 1) const
    {
        const int32_t line = zoom >= 8 ? 1 : 0;
        for (int32_t j = 0; j < r.h; ++j)
            for (int32_t i = 0; i < r.w; ++i)
                pen_.fill(*this, {x + i * zoom, y + j * zoom, zoom - line, zoom - line},
                          pixel(from, r.x + i, r.y + j));
    }
    // A whole surface, and words below it.
    void panel(const Surface& from, int32_t x, int32_t y, std::string_view words, int32_t zoom = 1) const
    {
        show(from, from.all(), x, y, zoom);
        write(x, y + from.height() * zoom + 8, words);
    }
    void frame(Rect r, uint32_t color = grey(40)) const
    {
        pen_.fill(*this, {r.x - 1, r.y - 1, r.w + 2, 1}, color);
        pen_.fill(*this, {r.x - 1, r.y + r.h, r.w + 2, 1}, color);
        pen_.fill(*this, {r.x - 1, r.y, 1, r.h}, color);
        pen_.fill(*this, {r.x + r.w, r.y, 1, r.h}, color);
    }
    // Colour of a pixel, alpha not shown.
    static uint32_t pixel(const Surface& s, int32_t x, int32_t y)
    {
        switch (s.desc()->format) {
        case VEXLOR_FMT_565: return from_565(s.row<uint16_t>(y)[x]);
        case VEXLOR_FMT_X8R8G8B8:
        case VEXLOR_FMT_A8R8G8B8: {
            const uint32_t p = s.row(y)[x];
            return rgb(p >> 8 & 255, p >> 16 & 255, p >> 24);
        }
        case VEXLOR_FMT_Y8V8Y8U8:
        case VEXLOR_FMT_U8Y8V8Y8: {
            uint32_t pair[2];
            (s.desc()->format == VEXLOR_FMT_Y8V8Y8U8
                 ? vexlor_1d_Y8V8Y8U8_2_B8G8R8X8
                 : vexlor_1d_U8Y8V8Y8_2_B8G8R8X8)(s.row(y) + x / 2, pair, 2);
            return pair[x % 2];
        }
        default: return s.row(y)[x] | 0xFF000000u;
        }
    }

    static constexpr uint32_t paper = grey(250);

private:
    Context pen_;
};

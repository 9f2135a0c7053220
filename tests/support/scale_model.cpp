// Goes through each call as through a recipe: pixel after pixel, row after row, with places instead of addresses.
#include "scale_model.h"

#include <algorithm>
#include <utility>

namespace model {
namespace {

bool one_surface(const Surface& a, const Surface& b)
{
    return a.desc.pixels == b.desc.pixels && a.desc.width == b.desc.width && a.desc.height == b.desc.height &&
           a.desc.stride == b.desc.stride && a.desc.format == b.desc.format;
}

bool inside(const Surface& s, int64_t x, int64_t y, int64_t w, int64_t h)
{
    return w > 0 && h > 0 && x + w <= s.desc.width && y + h <= s.desc.height;
}

int64_t place(const Surface& s, int64_t x, int64_t y) { return y * s.desc.stride + x * s.bpp(); }
int64_t end_of(const Surface& s) { return s.end() - s.memory; }

uint32_t driver_refusal(Driver driver, const vexlor_context& ctx, const Surface& src, const Surface& dst,
                        const Rectangles& r)
{
    const uint32_t format = src.desc.format;
    const bool equal = equivalent(format, dst.desc.format), rgb = is_rgb(format),
               has_alpha = (format >> 30 & 1) != 0;
    const bool alpha_known = ctx.alpha_dst_op <= 2 && ctx.alpha_mode <= 1;
    switch (driver) {
    case Driver::blend_nofilter:
        return !equal ? 3 : (format & 0x3F) != 32 ? 4 : !has_alpha ? 5 : !rgb ? 4 : alpha_known ? 0 : 8;
    case Driver::blend_filter: return !equal ? 3 : !has_alpha ? 5 : !rgb ? 4 : alpha_known ? 0 : 8;
    default: break;
    }
    if (!convertible(format, dst.desc.format, r.sw))
        return 3;
    if (rgb)
        return ctx.alpha_dst_op > 2 ? 8 : 0;
    if (is_yuv(format))
        return driver == Driver::opaque_nofilter && equal && r.dw == 1 ? 6 : 0;
    return format == 0x10 ? 0 : 4;
}

// The blend of one pixel by the source's own alpha. Both formats have one alpha shift.
void blend_pixel(const vexlor_context& ctx, uint32_t shift, uint32_t pixel, uint8_t* d)
{
    const Unit units[3][2] = {{src<straight, Alpha::blended>, src<premultiplied, Alpha::blended>},
                              {src<straight, Alpha::replaced>, src<premultiplied, Alpha::replaced>},
                              {src<straight, Alpha::one>, src<premultiplied, Alpha::one>}};
    uint8_t s[4];
    store(s, pixel);
    units[ctx.alpha_dst_op][ctx.alpha_mode](s, d, {.shift = shift});
}

Unit decoder(uint32_t from, uint32_t to)
{
    const bool luma_first = from == 0x50, blue_first = alpha_shift(to) == 24;
    if (luma_first)
        return blue_first ? decode<Y8V8Y8U8, B8G8R8X8> : decode<Y8V8Y8U8, X8R8G8B8>;
    return blue_first ? decode<U8Y8V8Y8, B8G8R8X8> : decode<U8Y8V8Y8, X8R8G8B8>;
}

// A word of a YUV row; at the end of an odd width half of it may lie behind the surface and reads as its other half.
void load_pair(const Surface& s, int64_t at, uint8_t* pair)
{
    for (int64_t i = 0; i < 4; ++i)
        pair[i] = s.memory[at + i < end_of(s) ? at + i : at + i - 2];
}

// Rows of the destination that show the same source row as the row above are copies of it.
void repeat_row(const Surface& dst, int64_t at, int64_t bytes)
{
    bytes = std::min(bytes, end_of(dst) - at);
    uint8_t* const row = dst.memory + at;
    const int64_t whole = bytes / 4 * 4;
    copy_words(row, row - dst.desc.stride, static_cast<uint32_t>(whole));
    std::copy_n(row + whole - dst.desc.stride, bytes - whole, row + whole);
}

void nearest(const vexlor_context& ctx, const Surface& src, const Surface& dst, const Rectangles& r,
             bool blend)
{
    const uint32_t format = src.desc.format, shift = alpha_shift(dst.desc.format);
    const bool yuv = is_yuv(format), to_yuv = yuv && is_yuv(dst.desc.format);
    // Units: 32-bit pixels and pairs of YUV pixels, 565 pixels.
    const int64_t unit = format == 0x10 ? 2 : 4, out = yuv && !to_yuv ? 8 : unit,
                  count = yuv ? r.dw / 2 : r.dw;
    const int64_t across = to_yuv ? (int64_t{r.sw / 2} << 16) / (r.dw / 2) : (int64_t{r.sw} << 16) / r.dw;
    const int64_t down = (int64_t{r.sh} << 16) / r.dh;
    const int64_t left = int64_t{yuv ? r.sx / 2 : r.sx} << 16, top = int64_t{r.sy} << 16;
    for (int64_t j = 0, previous = -1; j < r.dh; ++j) {
        const int64_t y = (top + (down >> 1) + j * down) >> 16;
        const int64_t at = to_yuv ? place(dst, 0, r.dy + j) + r.dx / 2 * 4 : place(dst, r.dx, r.dy + j);
        if (!blend && y == std::exchange(previous, y)) {
            repeat_row(dst, at, 4 * (to_yuv ? count : r.dw));
            continue;
        }
        for (int64_t i = 0; i < count; ++i) {
            const int64_t from = place(src, 0, y) + ((left + (across >> 1) + i * across) >> 16) * unit;
            uint8_t* const d = dst.memory + at + i * out;
            uint8_t s[4];
            if (format == 0x10)
                store(d, load<uint16_t>(src.memory + from));
            else
                load_pair(src, from, s);
            if (to_yuv)
                store(d, load(s));
            else if (yuv)
                decoder(format, dst.desc.format)(s, d, {});
            else if (blend)
                blend_pixel(ctx, shift, load(s), d);
            else if (format != 0x10)
                store(d, load(s) | (ctx.alpha_dst_op == 2 ? alpha_bits(shift) : 0));
        }
    }
}

int32_t vertical_step(const Rectangles& r) { return (r.sh << 16) / r.dh; }

Filter prepare(const vexlor_context& ctx, const Rectangles& r, int size)
{
    const int32_t step_x = (r.sw << 16) / r.dw, step_y = vertical_step(r);
    Filter f = {};
    f.x = kernel(ctx.filter, r.sw, r.dw);
    f.y = kernel(ctx.filter, r.sh, r.dh);
    f.size = size;
    f.params = {static_cast<uint32_t>(r.sy) << 16,
                step_x,
                step_x >> 1,
                step_y >> 1,
                step_y >> 17,
                ((step_y >> 1) + 4096) >> 16,
                (step_x >> 1) + 4096,
                static_cast<uint32_t>(r.dw),
                0};
    return f;
}

// 32-bit pixels and 565. Some filters look a stride beyond a rectangle of one row: before the surface they find the
// column of its first row, behind it its last pixel again and again, as these were when the destination row began.
void filter_surface(const vexlor_context& ctx, const Surface& src, const Surface& dst, const Rectangles& r,
                    bool blend)
{
    const int64_t size = src.bpp(), end = end_of(src), stride = src.desc.stride;
    std::vector<uint8_t> first_row, last_pixel;
    const Bytes bytes = [&](int64_t at) {
        if (at >= 0 && at < end)
            return src.memory[at];
        const int64_t column = at + stride;
        return at < 0 && column < end
                   ? first_row[static_cast<size_t>(column)]
                   : last_pixel[static_cast<size_t>(((at < 0 ? column : at) - end) % size)];
    };
    Filter f = prepare(ctx, r, static_cast<int>(size));
    f.params.stride = src.desc.stride;
    f.first = place(src, r.sx, r.sy);
    f.last = place(src, r.sx + r.sw - 1, r.sy + r.sh - 1);
    std::vector<uint32_t> row(static_cast<size_t>(r.dw));
    for (int32_t j = 0; j < r.dh; ++j, f.params.ypos += static_cast<uint32_t>(vertical_step(r))) {
        first_row.assign(src.memory, src.memory + std::min(stride, end));
        last_pixel.assign(src.memory + end - size, src.memory + end);
        f.row = place(src, r.sx, f.params.ypos >> 16);
        f.row_end = f.row + (r.sw - 1) * size;
        uint8_t* d = dst.at(r.dx, r.dy + j);
        for (uint32_t i = 0; i < row.size(); ++i) {
            row[i] = resample(f, bytes, i);
            if (size == 2)
                store(d + 2 * i, static_cast<uint16_t>(row[i]));
        }
        const uint32_t shift = alpha_shift(dst.desc.format);
        for (uint32_t i = 0; i < row.size() && size == 4; ++i)
            if (blend)
                blend_pixel(ctx, shift, row[i], d + 4 * i);
            else
                store(d + 4 * i, row[i] | (ctx.alpha_dst_op == 2 ? alpha_bits(shift) : 0));
    }
}

} // namespace

int64_t RowCache::update(const Convert& convert, int64_t row_bytes, int64_t stride, int64_t rows,
                         int64_t first)
{
    const int64_t need = (row_bytes + 15) / 16 * 16, end = first + rows * stride;
    const auto convert_from = [&](int64_t source, int64_t to, int64_t apart) {
        for (; source < end; source += stride, to += apart)
            convert(source, to);
    };
    if (pitch_ < need || rows > capacity_) {
        memory = {};
        last_row_ = (rows - 1) * need;
        convert_from(first, 0, need);
    } else if (!first_source_) {
        convert_from(first, 0, pitch_);
    } else if (first > *first_source_) {
        int64_t k = 0;
        while (first - k * stride > *first_source_ && k * pitch_ <= last_row_)
            ++k;
        int64_t kept = 0;
        for (; (k + kept) * pitch_ <= last_row_; ++kept)
            memory.copy(kept * pitch_, (k + kept) * pitch_, pitch_);
        convert_from(first + (rows - k) * stride, kept * pitch_, pitch_);
    }
    pitch_ = std::max(pitch_, need);
    capacity_ = std::max(capacity_, rows);
    first_source_ = first;
    // A filter may look one row further than the band.
    memory.copy(-pitch_, 0, pitch_);
    if (rows * pitch_ > last_row_)
        memory.copy(rows * pitch_, (rows - 1) * pitch_, pitch_);
    return pitch_;
}

void Scaler::filter_yuv(const vexlor_context& ctx, const Surface& src, const Surface& dst,
                        const Rectangles& r)
{
    const uint32_t from = src.desc.format, to = dst.desc.format;
    const Unit convert_in = decoder(from, to);
    const Unit convert_out = from == 0x50 ? encode<X8R8G8B8, Y8V8Y8U8> : encode<X8R8G8B8, U8Y8V8Y8>;
    const int64_t end = end_of(src), pairs = src.desc.width / 2;
    // The whole width is converted, wherever the row starts. Behind the surface its last four bytes come again and again.
    const auto convert = [&](int64_t at, int64_t into) {
        for (int64_t i = 0; i < pairs; ++i) {
            uint8_t pair[4], pixels[8];
            for (int64_t b = 0; b < 4; ++b) {
                const int64_t from_byte = at + 4 * i + b;
                pair[b] = src.memory[from_byte < end ? from_byte : end - 4 + (from_byte - end) % 4];
            }
            convert_in(pair, pixels, {});
            for (int64_t b = 0; b < 8; ++b)
                cache_.memory[into + 8 * i + b] = pixels[b];
        }
    };
    const auto rows = static_cast<int16_t>(vertical_step(r) >> 16);
    const Bytes bytes = [&](int64_t at) { return cache_.memory[at]; };
    Filter f = prepare(ctx, r, 4);
    std::vector<uint8_t> row(static_cast<size_t>(r.dw) * 4);
    cache_.reset();
    for (int32_t j = 0; j < r.dh; ++j, f.params.ypos += static_cast<uint32_t>(vertical_step(r))) {
        const int64_t pitch =
            cache_.update(convert, int64_t{r.sw} * 4, src.desc.stride, std::max<int64_t>(rows, 1),
                          place(src, r.sx, f.params.ypos >> 16));
        f.params.stride = static_cast<uint32_t>(pitch);
        f.last = pitch * rows;
        f.row_end = (int64_t{r.sw} - 2) * 4;
        for (uint32_t i = 0; i < row.size() / 4; ++i)
            store(&row[4 * i], resample(f, bytes, i));
        uint8_t* const d = dst.at(r.dx, r.dy + j);
        if (is_rgb(to))
            std::copy(row.begin(), row.end(), d);
        else
            for (size_t i = 0; i + 8 <= row.size(); i += 8)
                convert_out(&row[i], d + i / 2, {});
    }
}

uint32_t Scaler::drive(Driver driver, const vexlor_context& ctx, const Surface& src, const Surface& dst,
                       const Rectangles& r)
{
    const uint32_t code = driver_refusal(driver, ctx, src, dst, r);
    const bool filtered = driver == Driver::opaque_filter || driver == Driver::blend_filter;
    const bool blended = driver == Driver::blend_nofilter || driver == Driver::blend_filter;
    const uint32_t format = src.desc.format, to = dst.desc.format;
    const bool two_sizes = equivalent(src.desc.format, dst.desc.format) && src.bpp() != dst.bpp();
    const bool known = src.memory != nullptr && dst.memory != nullptr;
    if (code != 0 || !known || two_sizes || !inside(src, r.sx, r.sy, r.sw, r.sh) ||
        !inside(dst, r.dx, r.dy, r.dw, r.dh))
        return code;
    if (!filtered) {
        if (blended || ctx.memcpy_stream != nullptr)
            nearest(ctx, src, dst, r, blended);
    } else if (!is_yuv(format)) {
        filter_surface(ctx, src, dst, r, blended);
    } else {
        const size_t luma_first = format == 0x50 ? 1 : 0;
        const size_t pair =
            is_yuv(to) ? 1 - luma_first : 4 - 2 * luma_first + (alpha_shift(to) == 24 ? 1 : 0);
        const auto& slots = ctx.conversions;
        if (ctx.memcpy != nullptr && slots[2 * pair] != nullptr && slots[2 * pair + 1] != nullptr)
            filter_yuv(ctx, src, dst, r);
    }
    return 0;
}

uint32_t Scaler::refusal(const vexlor_context* ctx, const Surface* src, const Surface* dst,
                         const Rectangles& r, Driver& driver)
{
    if (ctx == nullptr || src == nullptr || dst == nullptr)
        return 1;
    if (std::min({r.sx, r.sy, r.dx, r.dy}) < 0 || std::min({r.sw, r.sh, r.dw, r.dh}) <= 0 ||
        sum(r.sx, r.sw) > src->desc.width || sum(r.sy, r.sh) > src->desc.height ||
        sum(r.dx, r.dw) > dst->desc.width || sum(r.dy, r.dh) > dst->desc.height)
        return 6;
    if (one_surface(*src, *dst) && r.dx < sum(r.sx, r.sw) && r.sx < sum(r.dx, r.dw) &&
        r.dy < sum(r.sy, r.sh) && r.sy < sum(r.dy, r.dh))
        return 7;
    if (ctx->alpha_op > 2 || (ctx->alpha_op == 2 && ctx->alpha_src > 1))
        return 8;
    const bool blended = ctx->alpha_op == 2 && ctx->alpha_src == 1;
    if (ctx->filter == 0)
        driver = blended ? Driver::blend_nofilter : Driver::opaque_nofilter;
    else
        driver = blended ? Driver::blend_filter : Driver::opaque_filter;
    return 0;
}

uint32_t Scaler::scale(const vexlor_context* ctx, const Surface* src, const Surface* dst, const Rectangles& r)
{
    Driver driver = Driver::opaque_nofilter;
    const uint32_t code = refusal(ctx, src, dst, r, driver);
    return code != 0 ? code : drive(driver, *ctx, *src, *dst, r);
}

} // namespace model

#include "board.h"

#include "context.h"
#include "failure.h"
#include "font.h"

#include <algorithm>

namespace tool {

namespace {

constexpr uint32_t format = VEXLOR_FMT_B8G8R8X8;
constexpr Color background{22, 34, 52, 255};
constexpr int32_t gap = 20, line = 20, title_line = 44; // pixels; labels are twice as large as the font

void require(uint32_t result)
{
    if (result != VEXLOR_OK)
        throw Refused("sheet", result);
}

// Writes by the alpha test: what is black stays as it is.
void write_text(vexlor_context* ctx, const Surface& target, const std::string& text, Point at, int32_t times)
{
    const Surface letters = text_surface(text, VEXLOR_FMT_B8G8R8A8);
    const auto [width, height] = letters.size();
    const Surface large({width * times, height * times}, VEXLOR_FMT_B8G8R8A8);
    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_NONE);
    require(vexlor_scale(ctx, letters.desc(), large.desc(), 0, 0, width, height, 0, 0, width * times,
                         height * times));
    vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_TEST);
    vexlor_context_set_alpha_test(ctx, VEXLOR_ALPHA_TEST_GREATER);
    vexlor_context_set_alpha_dst_op(ctx, VEXLOR_ALPHA_DST_REPLACE);
    int32_t x = at.x, y = at.y, w = width * times, h = height * times;
    vexlor_surface_clip(target.desc(), &x, &y, &w, &h);
    if (w > 0 && h > 0)
        require(vexlor_copy(ctx, large.desc(), target.desc(), 0, 0, x, y, w, h));
}

} // namespace

Surface text_surface(const std::string& text, uint32_t pixel_format)
{
    Picture picture = plain_picture(text_size(text), {0, 0, 0, 0});
    for (int32_t y = 0; y < picture.size.height; ++y)
        for (int32_t x = 0; x < picture.size.width; ++x)
            if (const auto i = static_cast<size_t>(x / glyph_width);
                i < text.size() && font_pixel(text[i], x % glyph_width, y))
                std::fill_n(picture.row(y) + size_t{4} * static_cast<size_t>(x), 4, uint8_t{255});
    return pack(picture, pixel_format);
}

void Board::add(const std::string& label, const Surface& cell)
{
    cells_.push_back({split(label, '\n'), pack(unpack(cell), format)});
}

// Each row is as high, and each column as wide, as its largest cell.
Picture Board::draw() const
{
    const auto columns = static_cast<size_t>(columns_);
    std::vector<int32_t> widths(columns), heights((cells_.size() + columns - 1) / columns);
    for (size_t i = 0; i < cells_.size(); ++i) {
        const auto [width, height] = cells_[i].pixels.size();
        int32_t& widest = widths[i % columns];
        widest = std::max(widest, width);
        for (const std::string& text : cells_[i].label)
            widest = std::max(widest, text_size(text).width * 2);
        int32_t& highest = heights[i / columns];
        highest = std::max(highest, height + static_cast<int32_t>(cells_[i].label.size()) * line);
    }
    Size size{gap, gap + title_line};
    for (const int32_t width : widths)
        size.width += width + gap;
    for (const int32_t height : heights)
        size.height += height + gap;
    size.width = std::max(size.width, text_size(title_).width * 3 + 2 * gap);

    const Surface board = pack(plain_picture(size, background), format);
    const Context ctx = new_context();
    write_text(ctx.get(), board, title_, {gap, gap}, 3);
    Point at{gap, gap + title_line};
    for (size_t i = 0; i < cells_.size(); ++i) {
        const Cell& cell = cells_[i];
        const auto [width, height] = cell.pixels.size();
        vexlor_context_set_alpha_op(ctx.get(), VEXLOR_ALPHA_OP_NONE);
        require(vexlor_copy(ctx.get(), cell.pixels.desc(), board.desc(), 0, 0, at.x, at.y, width, height));
        for (size_t k = 0; k < cell.label.size(); ++k)
            write_text(ctx.get(), board, cell.label[k],
                       {at.x, at.y + height + static_cast<int32_t>(k) * line + 4}, 2);
        at.x += widths[i % columns] + gap;
        if ((i + 1) % columns == 0)
            at = {gap, at.y + heights[i / columns] + gap};
    }
    return unpack(board);
}

} // namespace tool

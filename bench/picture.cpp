// Content of pictures, and how they look from afar.
#include "picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>

namespace bench {
namespace {

constexpr int block = 16;
constexpr size_t page = 4096;
constexpr size_t margin = 512; // some peers read or write whole vectors behind the last pixel

// A small generator, so that content does not depend on the standard library.
class Noise {
public:
    explicit Noise(int seed = 0) : state_(0x9E3779B97F4A7C15u + static_cast<uint64_t>(seed)) { next(); }
    uint32_t next()
    {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<uint32_t>(state_ >> 33);
    }
    int below(int n) { return static_cast<int>(next() % static_cast<uint32_t>(n)); }

private:
    uint64_t state_;
};

struct Color {
    int b, g, r, a;
};

// Where red, green, blue and alpha sit in the memory of a 32-bit pixel.
struct Order {
    int b, g, r, a;
};
Order order(uint32_t format)
{
    return vexlor_fmt_get_alpha_shift(format) == 24 ? Order{0, 1, 2, 3} : Order{3, 2, 1, 0};
}
bool is_yuv(uint32_t format) { return (format & 0x40) != 0; }

void store(uint8_t* at, uint32_t format, const Color& c)
{
    if (format == VEXLOR_FMT_565) {
        const auto pixel = static_cast<uint16_t>((c.r >> 3) << 11 | (c.g >> 2) << 5 | c.b >> 3);
        std::memcpy(at, &pixel, sizeof pixel);
        return;
    }
    const Order o = order(format);
    at[o.b] = static_cast<uint8_t>(c.b);
    at[o.g] = static_cast<uint8_t>(c.g);
    at[o.r] = static_cast<uint8_t>(c.r);
    at[o.a] = static_cast<uint8_t>(c.a);
}

Color load(const uint8_t* at, uint32_t format)
{
    if (format == VEXLOR_FMT_565) {
        uint16_t pixel = 0;
        std::memcpy(&pixel, at, sizeof pixel);
        return {(pixel & 31) * 255 / 31, (pixel >> 5 & 63) * 255 / 63, (pixel >> 11) * 255 / 31, 0};
    }
    const Order o = order(format);
    return {at[o.b], at[o.g], at[o.r], at[o.a]};
}

// One row's alpha in the manner of an interface: twelve rows share their runs, as lines of text do.
void interface_alpha(std::vector<uint8_t>& row, int y)
{
    Noise noise(y / 12);
    const size_t width = row.size();
    size_t x = 0;
    const auto run = [&](int mean, auto value) {
        const int low = mean / 2;
        for (int n = low + noise.below(2 * (mean - low) + 1); n > 0 && x < width; --n)
            row[x++] = static_cast<uint8_t>(value());
    };
    const auto edge = [&] { return 1 + noise.below(254); };
    while (x < width) {
        run(56, [] { return 255; });
        run(2, edge);
        run(20, [] { return 0; });
        run(2, edge);
    }
}

int gradient(int at, int of) { return 32 + 190 * at / std::max(of, 1); }

} // namespace

void Picture::Free::operator()(uint8_t* memory) const { std::free(memory); }

Picture::Picture(int width, int height, uint32_t format, size_t offset)
{
    const uint32_t stride = static_cast<uint32_t>(width) * ((format & 0x3F) >> 3);
    const size_t size = offset + stride * static_cast<size_t>(height) + margin;
    memory_.reset(static_cast<uint8_t*>(std::aligned_alloc(page, (size + page - 1) / page * page)));
    if (!memory_)
        throw std::bad_alloc();
    std::memset(memory_.get(), 0, size);
    vexlor_surface_desc_init(&surface_, width, height, stride, memory_.get() + offset, format);
}

void paint(const Picture& picture, Content content, bool premultiplied)
{
    Noise noise;
    const uint32_t format = picture.format();
    const int width = picture.width();
    std::vector<uint8_t> alpha(static_cast<size_t>(width));
    for (int y = 0; y < picture.height(); ++y) {
        uint8_t* row = picture.row(y);
        if (is_yuv(format)) {
            // Both orders alternate chroma and luma; which chroma is which does not matter here.
            const int luma = format == VEXLOR_FMT_U8Y8V8Y8 ? 1 : 0;
            for (int x = 0; x < 2 * width; ++x) {
                const int chroma = 96 + 64 * (x & 2 ? y : 0) / picture.height();
                row[x] = static_cast<uint8_t>(((x & 1) == luma ? gradient(x / 2, width) : chroma) +
                                              noise.below(8));
            }
            continue;
        }
        if (content == Content::interface)
            interface_alpha(alpha, y);
        else
            for (uint8_t& a : alpha)
                a = static_cast<uint8_t>(noise.below(256));
        for (int x = 0; x < width; ++x) {
            const int across = gradient(x, width), down = gradient(y, picture.height()), n = noise.below(16);
            Color c{across + n, down + n, 222 - across + n, alpha[static_cast<size_t>(x)]};
            if (premultiplied)
                c = {c.b * c.a / 255, c.g * c.a / 255, c.r * c.a / 255, c.a};
            store(row + static_cast<ptrdiff_t>(x) * ((format & 0x3F) >> 3), format, c);
        }
    }
}

void paint_backdrop(const Picture& picture)
{
    const uint32_t format = picture.format();
    const int width = picture.width(), unit = static_cast<int>((format & 0x3F) >> 3);
    for (int y = 0; y < picture.height(); ++y) {
        uint8_t* row = picture.row(y);
        if (is_yuv(format)) {
            std::memset(row, 20 + y % 64, static_cast<size_t>(width) * 2);
            continue;
        }
        for (int x = 0; x < width; ++x) {
            const int across = gradient(width - x, width);
            store(row + x * unit, format,
                  {across, 250 - across, gradient(picture.height() - y, picture.height()), 77});
        }
    }
}

size_t blocks_across(const Picture& picture)
{
    return static_cast<size_t>((picture.width() + block - 1) / block);
}

std::vector<double> blocks(const Picture& picture, uint32_t format)
{
    const int width = picture.width(), height = picture.height(),
              unit = static_cast<int>((format & 0x3F) >> 3);
    std::vector<double> means;
    for (int top = 0; top < height; top += block) {
        for (int left = 0; left < width; left += block) {
            std::array<long, 4> sums{};
            const int bottom = std::min(top + block, height), right = std::min(left + block, width);
            for (int y = top; y < bottom; ++y) {
                for (int x = left; x < right; ++x) {
                    const uint8_t* at = picture.row(y) + x * unit;
                    if (is_yuv(format)) {
                        const int luma = format == VEXLOR_FMT_U8Y8V8Y8 ? 1 : 0;
                        sums[1] += at[luma];
                        sums[x & 1 ? 0 : 2] += 2 * at[1 - luma];
                        continue;
                    }
                    const Color c = load(at, format);
                    sums[0] += c.b;
                    sums[1] += c.g;
                    sums[2] += c.r;
                    sums[3] += c.a;
                }
            }
            for (const long sum : sums)
                means.push_back(static_cast<double>(sum) / ((bottom - top) * (right - left)));
        }
    }
    return means;
}

} // namespace bench

// Box and linear kernels in whole numbers, Gaussian and Catmull-Rom kernels in doubles whose every step is rounded: on
// an x87, which calculates in more bits, a volatile variable cuts each sum and product to a double and each stored
// result to a single.
#include "filter_model.h"

#include "model_blend.h"
#include <algorithm>
#include <cmath>
#include <span>

namespace model {
namespace {

// A colour field: its lowest bit, its largest value, and by which fraction a mean falls short of the sum.
struct Field {
    uint32_t bit, most, times, over;
    double to_unit, from_unit;

    uint32_t of(uint32_t pixel) const { return pixel >> bit & most; }
};
constexpr double inv255 = 0x1.010102p-8, inv63 = 0x1.041042p-6, inv31 = 0x1.08421p-5, inv65535 = 0x1.0001p-16;
constexpr Field fields_8888[] = {{24, 255, 127, 256, inv255, 255},
                                 {16, 255, 127, 256, inv255, 255},
                                 {8, 255, 127, 256, inv255, 255},
                                 {0, 255, 127, 256, inv255, 255}};
constexpr Field fields_565[] = {
    {11, 31, 15, 32, inv31, 31}, {5, 63, 31, 64, inv63, 63}, {0, 31, 15, 32, inv31, 31}};

std::span<const Field> fields(int size)
{
    if (size == 4)
        return fields_8888;
    return fields_565;
}

uint32_t mean(uint32_t a, uint32_t b, int size)
{
    uint32_t result = 0;
    for (const Field& f : fields(size))
        result |= (f.of(a) + f.of(b)) * f.times / f.over << f.bit;
    return result;
}

uint32_t lerp(uint32_t a, uint32_t b, int64_t position, int size)
{
    const auto fraction = static_cast<uint32_t>(position >> 8 & 255);
    uint8_t from[4], to[4];
    store(from, b);
    store(to, a);
    if (size == 4)
        straight(from, to, raised(fraction));
    else
        gbl_565(from, to, {.g = raised(fraction)});
    return size == 4 ? load(to) : load<uint16_t>(to);
}

uint32_t box_or_linear(const Filter& filter, const Bytes& bytes, uint32_t i)
{
    const vexlor_filter_params& p = filter.params;
    const int size = filter.size;
    const int64_t acc = int64_t{i} * p.xstep;
    const bool box_x = filter.x == Kernel::mean, box_y = filter.y == Kernel::mean;
    const int64_t down = box_y ? int64_t{p.yhalf_rows} * p.stride : 0;
    const int64_t end = filter.row_end + down;

    int64_t p0 = filter.row + down + ((acc >> 16) + (box_x ? p.xhalf >> 16 : 0)) * size;
    int64_t p1 = p0 + size;
    if (box_x)
        p0 = std::min(p0, end);
    p1 = std::min(p1, end);
    const auto across = [&](int64_t left, int64_t right) {
        const uint32_t a = load_pixel(bytes, left, size), b = load_pixel(bytes, right, size);
        return box_x ? mean(a, b, size) : lerp(a, b, acc, size);
    };
    const uint32_t upper = across(p0, p1);
    if (p0 + p.stride > filter.last)
        return box_y ? mean(upper, upper, size) : upper;
    const bool lower_right_missing = box_x && box_y && size == 4 && p1 + p.stride > filter.last;
    const uint32_t lower = across(p0 + p.stride, lower_right_missing ? p1 : p1 + p.stride);
    return box_y ? mean(upper, lower, size) : lerp(upper, lower, p.ypos, size);
}

float single(double value)
{
    const volatile float stored = static_cast<float>(value);
    return stored;
}

// A double that is one after every operation.
class Double {
public:
    Double(double value)
    {
        const volatile double stored = value;
        value_ = stored;
    }
    float rounded() const { return single(value_); }
    friend Double operator+(Double a, Double b) { return a.value_ + b.value_; }
    friend Double operator-(Double a, Double b) { return a.value_ - b.value_; }
    friend Double operator*(Double a, Double b) { return a.value_ * b.value_; }

private:
    double value_;
};

// The weights of taps -1, 0, +1 and, of a Catmull-Rom kernel, +2, whose sum is halved and clamped.
struct Weights {
    std::array<float, 4> of;
    size_t taps;

    Weights(Kernel kernel, int64_t position) : of{0.25f, 0.5f, 0.25f}, taps(3)
    {
        if (kernel == Kernel::gauss)
            return;
        const Double t = single(static_cast<double>(position & 0xFFFF) * inv65535);
        const Double weights[] = {((2 - t) * t - 1) * t, (3 * t - 5) * (t * t) + 2, ((4 - 3 * t) * t + 1) * t,
                                  (t - 1) * (t * t)};
        std::transform(std::begin(weights), std::end(weights), of.begin(),
                       [](Double w) { return w.rounded(); });
        taps = 4;
    }
    float sum(const std::array<float, 4>& colours) const
    {
        Double total = Double(of[0]) * colours[0];
        for (size_t i = 1; i < taps; ++i)
            total = total + Double(of[i]) * colours[i];
        return taps == 3 ? total.rounded() : std::clamp((total * 0.5).rounded(), 0.0f, 1.0f);
    }
};

uint32_t gauss_or_catrom(const Filter& filter, const Bytes& bytes, uint32_t i)
{
    const vexlor_filter_params& p = filter.params;
    const int64_t acc = int64_t{i} * p.xstep, stride = p.stride, size = filter.size;
    const bool both_gauss = filter.x == Kernel::gauss && filter.y == Kernel::gauss;
    const int64_t k = (acc / 65536 * 65536 + (both_gauss ? p.xcentre : p.xhalf)) >> 16;
    const Weights across(filter.x, acc), down(filter.y, p.ypos);

    int64_t top = filter.row + ((filter.y == Kernel::gauss ? p.ycentre_rows : p.yhalf_rows) - 1) * stride;
    int64_t top_end = filter.row_end + (top - filter.row);
    if (top_end < filter.first) {
        top = filter.first;
        top_end = filter.first + stride - size;
    }
    std::array<float, 4> column[4] = {}; // per channel, the results of the rows
    for (size_t j = 0; j < down.taps; ++j) {
        int64_t start = top + static_cast<int64_t>(j) * stride;
        int64_t end = j == 0 ? top_end : start + (filter.row_end - filter.row);
        if (start > filter.last) {
            end = filter.last;
            start = end + size - stride;
        }
        std::array<float, 4> taps[4] = {};
        for (size_t t = 0; t < across.taps; ++t) {
            int64_t place = std::min(start + (k - 1 + static_cast<int64_t>(t)) * size, end);
            if (t == 0)
                place = std::max(place, start);
            const std::array<float, 4> colour = unpack(load_pixel(bytes, place, filter.size), filter.size);
            for (size_t channel = 0; channel < 4; ++channel)
                taps[channel][t] = colour[channel];
        }
        for (size_t channel = 0; channel < 4; ++channel)
            column[channel][j] = across.sum(taps[channel]);
    }
    std::array<float, 4> result;
    for (size_t channel = 0; channel < 4; ++channel)
        result[channel] = down.sum(column[channel]);
    return pack(result, filter.size);
}

} // namespace

Kernel kernel(uint32_t filter, int32_t from, int32_t to)
{
    const auto shifted = static_cast<int32_t>(static_cast<uint32_t>(to) << 16);
    const bool enlarged = shifted / from > 65536;
    if (filter == 2)
        return enlarged ? Kernel::catrom : Kernel::gauss;
    return enlarged ? Kernel::linear : Kernel::mean;
}

uint32_t resample(const Filter& filter, const Bytes& bytes, uint32_t i)
{
    const bool integer = filter.x == Kernel::mean || filter.x == Kernel::linear;
    return integer ? box_or_linear(filter, bytes, i) : gauss_or_catrom(filter, bytes, i);
}

uint32_t load_pixel(const Bytes& bytes, int64_t place, int size)
{
    uint32_t pixel = 0;
    for (int i = 0; i < size; ++i)
        pixel |= static_cast<uint32_t>(bytes(place + i)) << 8 * i;
    return pixel;
}

std::array<float, 4> unpack(uint32_t pixel, int size)
{
    std::array<float, 4> channels = {};
    for (size_t i = 0; const Field& f : fields(size))
        channels[i++] = single(f.of(pixel) * f.to_unit);
    return channels;
}

uint32_t pack(const std::array<float, 4>& channels, int size)
{
    uint32_t pixel = 0;
    for (size_t i = 0; const Field& f : fields(size)) {
        const double product = std::trunc(channels[i++] * f.from_unit);
        if (product > -0x1p63 && product < 0x1p63)
            pixel |= static_cast<uint32_t>(static_cast<int64_t>(product)) << f.bit;
    }
    return pixel;
}

} // namespace model

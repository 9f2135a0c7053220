// Models of the filters: one pixel at a time, one colour field at a time, from memory that need not be there: whoever
// calls says what byte lies at a place.
#pragma once

#include "vexlor.h"
#include <array>
#include <functional>

namespace model {

using Bytes = std::function<uint8_t(int64_t place)>;

enum class Kernel { mean, linear, gauss, catrom };

// A call of a filter. Places count bytes from wherever `Bytes` counts from.
struct Filter {
    Kernel x, y;
    int size; // bytes of a pixel: 4, or 2 for 565
    int64_t first, last, row, row_end;
    vexlor_filter_params params;
};

// The kernel of an axis for a context's filter value and the axis' two lengths.
Kernel kernel(uint32_t filter, int32_t from, int32_t to);
// Pixel i of the row.
uint32_t resample(const Filter& filter, const Bytes& bytes, uint32_t i);

uint32_t load_pixel(const Bytes& bytes, int64_t place, int size);
std::array<float, 4> unpack(uint32_t pixel, int size);
uint32_t pack(const std::array<float, 4>& channels, int size);

} // namespace model

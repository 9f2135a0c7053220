// A model of the row cache that works on memory without limits, and the two routines that it is driven with, which write
// down their calls.
#pragma once

#include "recorder.h"
#include <cstring>
#include <vector>

namespace model::cache {

inline int32_t in_unit, out_unit, unit_pixels;

// Stands in for the converters, for units of any size.
inline void write_units(const uint8_t* s, uint8_t* d, int32_t count)
{
    for (int32_t i = 0; i < count / unit_pixels; ++i)
        for (int32_t j = 0; j < out_unit; ++j)
            *d++ = static_cast<uint8_t>(s[i * in_unit + j % in_unit] + 85 * (j / in_unit));
}
inline void convert(const void* s, void* d, int32_t count)
{
    record(true, d, s, count);
    write_units(static_cast<const uint8_t*>(s), static_cast<uint8_t*>(d), count);
}
inline void copy(void* d, const void* s, uint32_t bytes)
{
    record(false, d, s, bytes);
    std::memcpy(d, s, bytes);
}

struct Model {
    static constexpr int64_t origin = 2048; // of the buffer in memory

    int64_t pitch = 0, capacity = 0, last_row = 0;
    uintptr_t first_source = 0;
    bool allocated = false;
    std::vector<uint8_t> memory;
    std::vector<Call> calls; // rows of the buffer by their distance from its begin

    // `source` stands for the band's first unit.
    int64_t update(const uint8_t* source, int64_t span, int32_t count, int64_t stride, int64_t rows)
    {
        const int64_t need = (out_unit / in_unit * span + 15) / 16 * 16;
        const auto first = reinterpret_cast<uintptr_t>(source);
        int64_t used = pitch;
        const auto convert_from = [&](int64_t row, int64_t to) {
            for (; row < rows; ++row, to += used) {
                calls.push_back({1, static_cast<uint64_t>(to), number(source + row * stride), number(count)});
                write_units(source + row * stride, at(to), count);
            }
        };
        calls.clear();
        if (!allocated || pitch < need || rows > capacity) {
            allocated = true;
            memory.assign(1 << 15, 0);
            used = need;
            last_row = (rows - 1) * need;
            convert_from(0, 0);
        } else if (first_source == 0) {
            convert_from(0, 0);
        } else if (first < first_source) {
            for (int64_t row = 0; row <= last_row; row += used)
                move(row, row);
        } else if (first > first_source) {
            int64_t k = 0, to = 0;
            while (first - static_cast<uintptr_t>(k * stride) > first_source && k * used <= last_row)
                ++k;
            for (; k * used + to <= last_row; to += used)
                move(to, k * used + to);
            convert_from(rows - k, to);
        }
        pitch = std::max(pitch, used);
        capacity = std::max(capacity, rows);
        first_source = first;
        std::memcpy(at(-pitch), at(0), static_cast<size_t>(pitch));
        if (reaches_end(rows))
            std::memcpy(at(rows * pitch), at((rows - 1) * pitch), static_cast<size_t>(pitch));
        return pitch;
    }
    bool reaches_end(int64_t rows) const { return rows * pitch > last_row; }
    uint8_t* at(int64_t place) { return memory.data() + origin + place; }

private:
    void move(int64_t to, int64_t from)
    {
        calls.push_back(
            {0, static_cast<uint64_t>(to), static_cast<uint64_t>(from), static_cast<uint64_t>(pitch)});
        std::memmove(at(to), at(from), static_cast<size_t>(pitch));
    }
};

} // namespace model::cache

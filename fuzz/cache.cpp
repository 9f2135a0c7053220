// Sequences of updates of one row cache: the calls that it makes and every byte that it promises, as the model has them;
// arguments without meaning leave it empty.
#include "input.h"
#include "support/cache_model.h"

#include <algorithm>

namespace {

constexpr int64_t height = 24;
constexpr uint32_t most_stride = 200;

struct Walk {
    Walk() : picture(most_stride * (height + 8))
    {
        for (size_t i = 0; i < picture.size(); ++i)
            picture[i] = static_cast<uint8_t>(i * 0x9E3779B1u >> 17);
        vexlor_cache_init(&cache);
        calls.clear();
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk() { vexlor_cache_fini(cache); }

    std::vector<uint8_t> picture;
    vexlor_cache* cache = nullptr;
    model::cache::Model model;
};

// Units, rows and places of any size, of which one at least makes no sense.
void update_without_meaning(fuzz::Input& input, Walk& walk)
{
    int32_t in = input.extent(8), out = input.extent(16), rows = input.extent(5);
    uint8_t* first = walk.picture.data() + 64;
    uint8_t* last = first + (input.one_in(4) ? -64 : static_cast<int32_t>(input.byte()));
    const int64_t span = last - first + int64_t{in};
    if (rows >= 1 && in >= 1 && out >= in && span >= 1 && out / in * span <= INT32_MAX - 15)
        rows = -rows;
    const int32_t pitch = vexlor_cache_update(walk.cache, model::cache::convert, model::cache::copy, in, out,
                                              input.extent(20), input.word(), rows, &first, &last);
    fuzz::require(pitch == 0 && first == nullptr && last == nullptr && calls.empty(),
                  "a band out of nothing");
    fuzz::require(walk.cache->buffer == nullptr && walk.cache->first_source == nullptr,
                  "the cache is not empty");
    walk.model = {};
}

void update(fuzz::Input& input, Walk& walk, uint32_t stride, int32_t row)
{
    using model::cache::in_unit, model::cache::out_unit, model::cache::unit_pixels;
    const int32_t rows = 1 + static_cast<int32_t>(input.below(6)),
                  span_units = 1 + static_cast<int32_t>(input.below(20));
    const auto left = static_cast<int64_t>(input.below(4));
    const int32_t count =
        static_cast<int32_t>(input.below(24)) * unit_pixels + static_cast<int32_t>(input.below(2));
    uint8_t* const source = walk.picture.data() + row * int64_t{stride} + left * in_unit;
    uint8_t *first = source, *last = source + (span_units - 1) * in_unit;
    const int64_t span = int64_t{span_units} * in_unit;
    const int32_t pitch = vexlor_cache_update(walk.cache, model::cache::convert, model::cache::copy, in_unit,
                                              out_unit, count, stride, rows, &first, &last);
    const vexlor_cache& cache = *walk.cache;
    for (Call& call : calls) {
        call[1] -= number(cache.buffer);
        call[2] -= call[0] != 0 ? 0 : number(cache.buffer);
    }
    fuzz::require(pitch == walk.model.update(source, span, count, stride, rows), "another pitch");
    fuzz::require(calls == walk.model.calls, "other calls");
    fuzz::require(first == cache.buffer && last - first == out_unit / in_unit * span - out_unit,
                  "another band");
    fuzz::require(cache.pitch == pitch && cache.capacity == walk.model.capacity &&
                      number(cache.buffer) % 16 == 0,
                  "another buffer");
    const int64_t bytes = pitch * (rows + int64_t{walk.model.reaches_end(rows)} + 1);
    fuzz::require(std::equal(cache.buffer - pitch, cache.buffer - pitch + bytes, walk.model.at(-pitch)),
                  "other rows");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    Walk walk;
    constexpr int32_t units[][3] = {{4, 8, 2}, {4, 4, 1}, {2, 4, 1}, {2, 7, 1}, {1, 3, 1}, {4, 16, 2}};
    const auto& [in, out, pixels] = units[input.below(6)];
    model::cache::in_unit = in;
    model::cache::out_unit = out;
    model::cache::unit_pixels = pixels;
    const uint32_t stride = 1 + input.byte() % most_stride;
    int32_t row = static_cast<int32_t>(input.below(height));
    for (int step = 0; step < 24 && input.more(); ++step) {
        calls.clear();
        const uint32_t kind = input.byte();
        if (kind >= 0xF0) {
            update_without_meaning(input, walk);
        } else if (kind >= 0xE0) {
            vexlor_cache_reset(walk.cache);
            walk.model.first_source = 0;
        } else {
            row = std::clamp(row + static_cast<int32_t>(kind % 8) - 2, 0, static_cast<int32_t>(height) - 1);
            update(input, walk, stride, row);
        }
    }
    return 0;
}

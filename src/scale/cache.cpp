// The row cache: a band of converted source rows that moves down a surface.
//
// Memory: the buffer lies inside a block of its own, with one pitch of room in front of it. Filters look one
// row before and one row behind the band, and converters write whole source rows into buffer rows that may be
// narrower; both stay inside the block. The block opens with its size, so that a zero-filled record is an
// empty cache.
#include "scale/cache.h"

#include <malloc.h>
#include <stdlib.h>
#include <string.h>

using namespace vexlor;

namespace {

constexpr size_t alignment = 64; // lines of the processor's caches: rows begin there where the pitch allows

struct alignas(alignment) BlockHeader {
    size_t room; // bytes from the buffer's start to the block's end
};

// The pitch changes only where a block is made, so it finds the block's start again.
BlockHeader* block_of(const vexlor_cache& cache)
{
    return reinterpret_cast<BlockHeader*>(cache.buffer - cache.pitch) - 1;
}

// Zero-filled; null without memory, or where the sizes exceed the address space.
u8* make_buffer(i64 pitch, u64 room)
{
    const u64 size = sizeof(BlockHeader) + static_cast<u64>(pitch) + room;
    if (pitch > INT32_MAX || size > PTRDIFF_MAX)
        return nullptr;
    auto* block = static_cast<BlockHeader*>(memalign(alignment, static_cast<size_t>(size)));
    if (!block)
        return nullptr;
    memset(block, 0, static_cast<size_t>(size));
    block->room = static_cast<size_t>(room);
    return reinterpret_cast<u8*>(block + 1) + pitch;
}

void drop_buffer(vexlor_cache& cache)
{
    if (cache.buffer)
        free(block_of(cache));
    cache = {};
}

// Larger memory for the same rows.
bool enlarge(vexlor_cache& cache, u64 room)
{
    u8* const buffer = make_buffer(cache.pitch, room);
    if (!buffer)
        return false;
    BlockHeader* const old = block_of(cache);
    memcpy(buffer - cache.pitch, cache.buffer - cache.pitch, static_cast<size_t>(cache.pitch) + old->room);
    cache.last_row = buffer + (cache.last_row - cache.buffer);
    cache.buffer = buffer;
    free(old);
    return true;
}

struct Band {
    vexlor_convert_fn convert;
    vexlor_memcpy_fn copy;
    i32 in_unit;
    i32 count;
    u32 stride;
    i32 rows;
    uintptr_t first; // address of the first source row
    const CacheUse& use;

    uintptr_t end() const { return first + bytes_of(rows, stride); }

    // Converts the source rows from `row` on up to the band's end.
    void convert_from(uintptr_t row, u8* to, i32 pitch) const
    {
        for (; row < end(); row += stride, to += pitch)
            convert(readable(reinterpret_cast<const u8*>(row)), to, count);
    }

    void convert_whole(u8* to, i32 pitch) const
    {
        for (i32 i = use.first_read; i < rows && i - use.first_read < use.rows_read; ++i)
            convert(readable(reinterpret_cast<const u8*>(first + bytes_of(i, stride))), to + i64{i} * pitch,
                    count);
    }

    // The row itself, or a copy that ends as the converter will.
    const u8* readable(const u8* row) const
    {
        const SourceBound* const bound = use.bound;
        const uintptr_t read = bytes_of(count / 2, static_cast<u32>(in_unit));
        if (!bound || count < 2 || moved(row, read) <= bound->end)
            return row;
        const auto owned = static_cast<uintptr_t>(bound->end - row);
        const auto unit = static_cast<uintptr_t>(in_unit);
        memcpy(bound->scratch, row, owned);
        for (uintptr_t i = owned; i < read; ++i)
            bound->scratch[i] = i < unit ? *(bound->end - (unit - (i - owned))) : bound->scratch[i - unit];
        return bound->scratch;
    }
};

// The band starts below the held one: keep the rows they share, as far as the buffer has them, and convert
// the rest.
void move_down(const vexlor_cache& cache, const Band& band)
{
    const i32 pitch = cache.pitch;
    const auto held = reinterpret_cast<uintptr_t>(cache.first_source);
    i32 k = 0;
    bool kept = true;
    while (kept && band.first - bytes_of(k, band.stride) > held) {
        ++k;
        kept = i64{k} * pitch <= cache.last_row - cache.buffer;
    }
    if (!kept && k == band.rows)
        return band.convert_whole(cache.buffer, pitch);
    u8* to = cache.buffer;
    if (kept)
        for (u8* from = cache.buffer + i64{k} * pitch; from <= cache.last_row; from += pitch, to += pitch)
            band.copy(to, from, static_cast<u32>(pitch));
    // rows - k is negative where the buffer holds more rows than the band has: the rows above the band come
    // along.
    band.convert_from(band.first + bytes_of(i64{band.rows} - k, band.stride), to, pitch);
}

// A filter's taps reach one row over the band at either end.
void repeat_edge_rows(const vexlor_cache& cache, i32 rows)
{
    const auto pitch = static_cast<size_t>(cache.pitch);
    memcpy(cache.buffer - pitch, cache.buffer, pitch);
    u8* const behind = cache.buffer + static_cast<size_t>(rows) * pitch;
    if (ends_behind(cache, rows))
        memcpy(behind, behind - pitch, pitch);
}

// Brings the band into the buffer; false without memory.
bool load_band(vexlor_cache& cache, const Band& band, i64 need, u64 out_unit)
{
    const i32 rows_held = band.rows > cache.capacity ? band.rows : cache.capacity;
    const i64 pitch = need > cache.pitch ? need : cache.pitch;
    // All held rows, the one behind them, and what the last of them is written beyond its end.
    const u64 room = static_cast<u64>(pitch) * (static_cast<u64>(rows_held) + 1) +
                     static_cast<u64>(band.count > 0 ? band.count : 0) * out_unit;
    const auto held = reinterpret_cast<uintptr_t>(cache.first_source);

    if (!cache.buffer || cache.pitch < need || band.rows > cache.capacity) {
        u8* const buffer = make_buffer(pitch, room);
        if (!buffer)
            return false;
        if (cache.buffer)
            free(block_of(cache));
        cache.pitch = static_cast<i32>(pitch);
        cache.capacity = rows_held;
        cache.buffer = buffer;
        cache.last_row = buffer + (i64{band.rows} - 1) * need;
        band.convert_whole(buffer, static_cast<i32>(need)); // packed, though the pitch may be larger
        return true;
    }
    if (block_of(cache)->room < room && !enlarge(cache, room))
        return false;
    if (held == 0)
        band.convert_whole(cache.buffer, cache.pitch);
    else if (band.first < held)
        for (u8* row = cache.buffer; row <= cache.last_row; row += cache.pitch)
            band.copy(row, row,
                      static_cast<u32>(cache.pitch)); // keeps what it holds: no filter walks upwards
    else if (band.first > held)
        move_down(cache, band);
    return true;
}

} // namespace

bool vexlor::is_regular(const vexlor_cache& cache)
{
    return cache.last_row - cache.buffer == (i64{cache.capacity} - 1) * cache.pitch;
}

bool vexlor::ends_behind(const vexlor_cache& cache, i32 rows)
{
    return i64{rows} * cache.pitch > cache.last_row - cache.buffer;
}

void vexlor_cache_init(vexlor_cache** out) { *out = static_cast<vexlor_cache*>(calloc(1, sizeof **out)); }

void vexlor_cache_fini(vexlor_cache* cache)
{
    if (!cache)
        return;
    drop_buffer(*cache);
    free(cache);
}

void vexlor_cache_reset(vexlor_cache* cache) { cache->first_source = nullptr; }

i32 vexlor::update_cache(vexlor_cache& cache, vexlor_convert_fn convert, vexlor_memcpy_fn copy, i32 in_unit,
                         i32 out_unit, i32 count, u32 stride, i32 rows, u8** first, u8** last,
                         const CacheUse& use)
{
    const auto band_first = reinterpret_cast<uintptr_t>(*first);
    const i64 span = i64{static_cast<intptr_t>(reinterpret_cast<uintptr_t>(*last) - band_first)} + in_unit;
    const bool sane = rows >= 1 && in_unit >= 1 && out_unit >= in_unit && span >= 1 && span <= INT32_MAX;
    const i64 out_bytes = sane ? out_unit / in_unit * span : 0;
    const i64 need = (out_bytes + 15) / 16 * 16;
    const Band band{convert, copy, in_unit, count, stride, rows, band_first, use};
    if (!sane || need > INT32_MAX || !load_band(cache, band, need, static_cast<u64>(out_unit))) {
        drop_buffer(cache);
        *first = *last = nullptr;
        return 0;
    }
    cache.first_source = *first;
    // In a cache that is not regular, the row behind may be one that it holds.
    if (use.edges || !is_regular(cache))
        repeat_edge_rows(cache, rows);
    *first = cache.buffer;
    *last = cache.buffer + out_bytes - out_unit;
    return cache.pitch;
}

int32_t vexlor_cache_update(vexlor_cache* cache, vexlor_convert_fn convert, vexlor_memcpy_fn copy,
                            int32_t in_unit, int32_t out_unit, int32_t count, uint32_t stride, int32_t rows,
                            uint8_t** first, uint8_t** last)
{
    return update_cache(*cache, convert, copy, in_unit, out_unit, count, stride, rows, first, last, {});
}

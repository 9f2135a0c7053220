// The row cache's update for a source whose end is known.
#pragma once

#include "base.h"

namespace vexlor {

// A converter reads whole source rows from the band's first unit on, which may pass the end of the surface.
// Such a row is converted from scratch memory of count pairs at least: its owned bytes, then the last owned
// pair repeated.
struct SourceBound {
    const u8* end; // one past the last owned byte
    u8* scratch;   // (count / 2) * in_unit bytes
};

// What an update is for. What nobody reads may be left as it is: the rows before and behind the band, and rows of a band
// that the next one replaces.
struct CacheUse {
    const SourceBound* bound = nullptr;
    bool edges = true;
    i32 first_read = 0, rows_read = INT32_MAX; // of a band that is converted whole
};

// Whether the cache's rows lie one pitch apart up to the last one. It may have been made for narrower ones.
bool is_regular(const vexlor_cache& cache);
// Whether a band of so many rows ends where the cache's rows do.
bool ends_behind(const vexlor_cache& cache, i32 rows);

// vexlor_cache_update for one use.
i32 update_cache(vexlor_cache& cache, vexlor_convert_fn convert, vexlor_memcpy_fn copy, i32 in_unit,
                 i32 out_unit, i32 count, u32 stride, i32 rows, u8** first, u8** last, const CacheUse& use);

} // namespace vexlor

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

// vexlor_cache_update, with a bound, null for none. Without edges the rows before and behind the band are not made.
i32 update_cache(vexlor_cache& cache, vexlor_convert_fn convert, vexlor_memcpy_fn copy, i32 in_unit,
                 i32 out_unit, i32 count, u32 stride, i32 rows, u8** first, u8** last,
                 const SourceBound* bound, bool with_edges);

} // namespace vexlor

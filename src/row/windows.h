// Windows of a row of pixels: so many pixels from any one on, for permutes to pick from. They are read where they lie
// inside the row. Those that reach beyond its end come from a copy of the end, with the last pixel repeated.
#pragma once

#include "base.h"

#include <string.h>

namespace vexlor {
namespace {

template <class Word> struct SourceRow {
    const u8* start;
    ptrdiff_t last; // index of the last pixel
    const u8* at(i64 index) const { return moved(start, bytes_of(index, sizeof(Word))); }
    // An index, or the last one.
    ptrdiff_t inside(size_t index) const
    {
        const auto most = static_cast<size_t>(last);
        return static_cast<ptrdiff_t>(index < most ? index : most);
    }
};

// From any pixel up to the last one.
template <class Word, u32 Length> class Windows {
public:
    explicit Windows(const SourceRow<Word>& source)
        : row(source), from(row.last >= ptrdiff_t{Length} ? row.last + 1 - ptrdiff_t{Length} : 0)
    {
        const Word pixel = load<Word>(row.at(row.last));
        for (u32 i = Length; i < 2 * Length; ++i)
            end[i] = pixel;
        if (row.last + 1 >= ptrdiff_t{Length})
            memcpy(end, row.at(from), sizeof end / 2);
        else
            for (u32 i = 0; i < Length; ++i)
                end[i] = load<Word>(row.at(row.inside(i)));
    }
    const u8* operator()(auto at) const
    {
        return at < from ? row.at(at) : reinterpret_cast<const u8*>(end + (at - from));
    }

private:
    const SourceRow<Word>& row;
    ptrdiff_t from;
    Word end[2 * Length];
};

} // namespace
} // namespace vexlor

// The checkers of row routines: a routine and its model draw the same rows, the one in memory, the other in the twin.
#pragma once

#include "arena.h"
#include "row_table.h"

inline RowArgs random_args(Random& random)
{
    constexpr uint32_t shifts[] = {0, 0, 24, 24, 8, 16, 5, 28, 32, 56, 0xFFFFFFF8};
    constexpr uint32_t references[] = {0, 1, 127, 128, 254, 255, 256, 0xFFFFFFFF};
    constexpr uint32_t pads[] = {0, 0, 1, 2, 4, 20};
    RowArgs a{random.weight(256), random.pick(shifts),
              random.below(8),    random.one_in(2) ? random.pick(references) : random.below(256),
              random.next(),      random.pick(shifts)};
    a.x = random.one_in(4) ? random.between(0, 4) << 16 : random.between(0, 0x4FFFF);
    constexpr int32_t steps[] = {0,      1,       0x2000,  0x4000,  0x6000,  0x7FFF,  0x8000, 0x8001,
                                 0xFFFF, 0x10000, 0x10001, 0x1FFFF, 0x20000, 0x20001, -1,     -0x10000};
    a.step = random.one_in(4) ? random.pick(steps) : random.between(0, random.one_in(2) ? 0x20000 : 0x60000);
    a.width = 1 + random.below(130);
    a.rows = static_cast<uint32_t>(a.x >> 16) + 1 + random.below(3);
    a.pad = random.pick(pads);
    a.twist = random.one_in(3) ? random.next() : 0;
    return a;
}

// The exported routine, null, and the tables of all sets that this processor has.
inline std::vector<const vexlor::Kernels*> all_sets()
{
    std::vector<const vexlor::Kernels*> sets = {nullptr};
    for (const vexlor::Set set : {vexlor::Set::baseline, vexlor::Set::avx2, vexlor::Set::avx512})
        if (const vexlor::Kernels* const kernels = vexlor::kernels_of(set))
            sets.push_back(kernels);
    return sets;
}

// A long row of chosen pixels through every routine of a kind and every set; prepare(i, s, d) makes unit i of it.
template <class Prepare> void sweep(Kind kind, uint32_t units, const RowArgs& args, Prepare prepare)
{
    const uint32_t pixels = kind == Kind::decode || kind == Kind::encode || kind == Kind::blend_yuv ? 2 : 1;
    const uint32_t n = units * pixels;
    static const std::vector<const vexlor::Kernels*> sets = all_sets();
    std::vector<uint8_t> s, d, expected, drawn;
    for (const AnyRow& row : row_table::all) {
        if (row.kind != kind)
            continue;
        const size_t s_bytes = row.src_bytes(n, args), d_bytes = row.dst_bytes(n, args);
        if (s.size() != s_bytes || d.size() != d_bytes) {
            s.resize(s_bytes);
            d.resize(d_bytes);
            for (uint32_t i = 0; i < units; ++i)
                prepare(i, s.data() + i * (s_bytes / units), d.data() + i * (d_bytes / units));
        }
        expected = d;
        row.model(s.data(), expected.data(), n, args);
        for (const vexlor::Kernels* const set : sets) {
            if (row.in_every_set != (set != nullptr))
                continue; // what is exported is one of the sets
            drawn = d;
            row.routine(set, s.data(), drawn.data(), n, args);
            if (drawn == expected)
                continue;
            const auto [is, should] = std::mismatch(drawn.begin(), drawn.end(), expected.begin());
            FAIL() << "row " << &row - row_table::all << ", g " << args.g << ", byte " << is - drawn.begin()
                   << " is " << int{*is} << ", expected " << int{*should};
        }
    }
}

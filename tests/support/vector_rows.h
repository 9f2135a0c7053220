// The checker of vector rows: whole blocks of 16 bytes at 16-byte boundaries of the destination have one
// model, the pixels before and behind them another.
#pragma once

#include "rows.h"

struct VectorCase {
    RowCase row; // its unit is the model of head and tail
    model::Unit body;
};

// The control and status word of the vector unit, whose header 32-bit builds may not use.
inline uint32_t mxcsr()
{
    uint32_t word;
    asm volatile("stmxcsr %0" : "=m"(word));
    return word;
}
inline void set_mxcsr(uint32_t word) { asm volatile("ldmxcsr %0" : : "m"(word)); }
constexpr uint32_t no_denormals = 0x8040;

inline bool at_boundary(const void* p) { return reinterpret_cast<uintptr_t>(p) % 16 == 0; }

inline void run_vector_model(const VectorCase& c, const uint8_t* s, uint8_t* d, uint32_t units,
                             const RowArgs& args)
{
    for (uint32_t block = 16 / c.row.shape.dst_bytes; units != 0;) {
        const bool body = at_boundary(d) && units >= block;
        for (uint32_t i = body ? block : 1; i != 0; --i, --units) {
            (body ? c.body : c.row.unit)(s, d, args);
            s += c.row.shape.src_bytes;
            d += c.row.shape.dst_bytes;
        }
    }
}

// Up to three blocks between the longest head and tail, in exact memory at every alignment.
template <size_t N> void check_vector_rows(const VectorCase (&cases)[N])
{
    constexpr uint32_t shifts[] = {0, 24, 24, 8, 16, 5, 28, 32, 56, 0xFFFFFFF8};
    Random random(20);
    Arena src, dst;
    for (const VectorCase& c : cases)
        // From -3 where counts have a sign.
        for (uint32_t n = c.row.shape.signed_count ? ~2u : 0; n != 20; ++n)
            for (uint32_t i = 0; i < 512; ++i) {
                const uint32_t units = n < 20 ? n / c.row.shape.pixels : 0;
                const Side side = i < 256 ? Side::end : Side::begin;
                uint8_t* const s = src.place(units * c.row.shape.src_bytes, side, i % 16);
                uint8_t* const d = dst.place(units * c.row.shape.dst_bytes, side, i / 16 % 16);
                src.randomize(random);
                dst.randomize(random);
                const RowArgs args{.g = random.weight(256), .shift = random.pick(shifts)};
                c.row.routine(s, d, n, args);
                run_vector_model(c, src.twin(s), dst.twin(d), units, args);
                ASSERT_TRUE(src.same() && dst.same_as_twin(d))
                    << "row " << &c - cases << ", count " << n << ", places " << i << ", g " << args.g
                    << ", shift " << args.shift;
            }
}

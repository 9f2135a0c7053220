// Row routines of every kind and every instruction set: any count, place and argument, rows of exactly the memory that
// they may touch, and the bytes of the model.
#include "input.h"
#include "support/row_table.h"

#include <memory>

namespace {

// Two equal rows of their own, so that their ends are watched, at one place modulo 16.
struct Twins {
    Twins(fuzz::Input& input, size_t bytes) : offset(input.below(16)), size(offset + bytes)
    {
        const uint32_t seed = input.byte();
        for (size_t i = 0; i < size; ++i)
            memory[0][i] = static_cast<uint8_t>(i % 4 != 0 && input.more() ? input.byte()
                                                                           : (i + seed) * 0x9E3779B1u >> 17);
        std::memcpy(memory[1].get(), memory[0].get(), size);
    }
    uint8_t* at(int which) { return memory[which].get() + offset; }
    bool same() const { return std::memcmp(memory[0].get(), memory[1].get(), size) == 0; }

    size_t offset, size;
    std::unique_ptr<uint8_t[]> memory[2] = {std::unique_ptr<uint8_t[]>(new uint8_t[size]),
                                            std::unique_ptr<uint8_t[]>(new uint8_t[size])};
};

RowArgs choose_args(fuzz::Input& input)
{
    RowArgs a{input.byte() + input.below(2), input.one_in(4) ? input.word() : input.below(2) * 24,
              input.below(8), input.byte(), input.word()};
    a.dst_shift = input.below(2) * 24;
    a.x = static_cast<int32_t>(input.word() % 0x50000);
    a.step = static_cast<int32_t>(input.word() % 0x40000) - 0x10000;
    a.width = 1 + input.byte() % 64;
    a.rows = static_cast<uint32_t>(a.x >> 16) + 1 + input.below(4);
    a.pad = input.below(16);
    a.twist = input.one_in(4) ? input.word() : 0;
    return a;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    const AnyRow& row = row_table::all[input.below(std::size(row_table::all))];
    uint32_t n = input.byte() + (row.most > 255 ? input.byte() : 0);
    if (row.signed_count && input.one_in(16))
        n = 0u - n;
    const RowArgs args = choose_args(input);
    constexpr vexlor::Set sets[] = {vexlor::Set::baseline, vexlor::Set::avx2, vexlor::Set::avx512};
    const vexlor::Kernels* const set = input.one_in(4) ? nullptr : vexlor::kernels_of(input.pick(sets));
    Twins s(input, row.src_bytes(n, args)), d(input, row.dst_bytes(n, args));
    if (!row.model(s.at(1), d.at(1), n, args))
        return 0;
    row.routine(set, s.at(0), d.at(0), n, args);
    fuzz::require(s.same(), "the source has changed");
    fuzz::require(d.same(), "other bytes");
    return 0;
}

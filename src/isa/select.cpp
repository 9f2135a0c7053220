// Which set serves. The resolver runs in the dynamic linker, before anything of the process is set up: it calls nothing
// outside this file and is compiled without sanitizers. Afterwards the choice is a read-only word of the relocated
// library. A build of the baseline alone needs none of this.
#include "isa/kernels.h"

#include <cpuid.h>

using namespace vexlor;

#define IN_LINKER __attribute__((no_sanitize("address", "undefined", "thread")))

namespace {

// Null for sets that were left out of the build.
constexpr const Kernels* tables[] = {
    &baseline_kernels,
#if defined(VEXLOR_WITH_AVX2)
    &avx2_kernels,
#else
    nullptr,
#endif
#if defined(VEXLOR_WITH_AVX512)
    &avx512_kernels,
#else
    nullptr,
#endif
};

IN_LINKER inline bool has_all(u32 word, u32 bits) { return (word & bits) == bits; }

// What the operating system saves of a thread: SSE and AVX registers are bits 1 and 2, those of AVX-512 bits 5 to 7.
IN_LINKER inline u32 saved_registers()
{
    u32 low = 0, high = 0;
    asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

IN_LINKER bool runs(Set set)
{
    if (set == Set::baseline)
        return true;
    u32 a = 0, b = 0, c = 0, d = 0;
    if (!__get_cpuid(1, &a, &b, &c, &d) || !has_all(c, bit_OSXSAVE | bit_AVX | bit_FMA))
        return false;
    if (!__get_cpuid_count(7, 0, &a, &b, &c, &d) || !has_all(b, bit_AVX2) ||
        !has_all(saved_registers(), 0x06))
        return false;
    return set == Set::avx2 || (has_all(b, bit_AVX512F | bit_AVX512BW | bit_AVX512VL | bit_AVX512DQ) &&
                                has_all(c, bit_AVX512VBMI) && has_all(saved_registers(), 0xE6));
}

} // namespace

const Kernels* vexlor::kernels_of(Set set) { return runs(set) ? tables[static_cast<u32>(set)] : nullptr; }

#if defined(VEXLOR_WITH_AVX2) || defined(VEXLOR_WITH_AVX512)

namespace {

template <const Kernels& Table> const Kernels& served() { return Table; }

} // namespace

extern "C" {
using Served = const Kernels&();
__attribute__((used)) IN_LINKER static Served* vexlor_resolve_kernels()
{
#if defined(VEXLOR_WITH_AVX512)
    if (runs(Set::avx512))
        return served<avx512_kernels>;
#endif
#if defined(VEXLOR_WITH_AVX2)
    if (runs(Set::avx2))
        return served<avx2_kernels>;
#endif
    return served<baseline_kernels>;
}
}

__attribute__((ifunc("vexlor_resolve_kernels"))) const Kernels& vexlor::kernels();

#else

const Kernels& vexlor::kernels() { return baseline_kernels; }

#endif

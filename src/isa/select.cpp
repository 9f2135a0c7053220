// Which set serves. The compiler's run-time library has asked the processor, and whether the operating system saves the
// wider registers, before any of the program's code runs; a call looks at that answer, a few cached loads.
#include "isa/kernels.h"

using namespace vexlor;

namespace {

bool runs(Set set)
{
    switch (set) {
    case Set::avx512:
        return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
               __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq") &&
               __builtin_cpu_supports("avx512vbmi") && runs(Set::avx2);
    case Set::avx2: return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    case Set::baseline: break;
    }
    return true;
}

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

constexpr const Kernels* table_of(Set set) { return tables[static_cast<u32>(set)]; }

} // namespace

const Kernels* vexlor::kernels_of(Set set) { return runs(set) ? table_of(set) : nullptr; }

const Kernels* vexlor::wider_kernels()
{
    const Kernels* const best = kernels_of(Set::avx512);
    return best ? best : kernels_of(Set::avx2);
}

const Kernels& vexlor::kernels()
{
    const Kernels* const wider = wider_kernels();
    return wider ? *wider : baseline_kernels;
}

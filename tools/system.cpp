#include "system.h"

#include "context.h"
#include "isa/kernels.h"

namespace tool {

std::string kernel_sets()
{
    constexpr struct {
        vexlor::Set set;
        const char* name;
    } sets[] = {
        {vexlor::Set::baseline, "baseline"}, {vexlor::Set::avx2, "AVX2"}, {vexlor::Set::avx512, "AVX-512"}};
    std::string names, serving;
    for (const auto& [set, name] : sets) {
        const vexlor::Kernels* const kernels = vexlor::kernels_of(set);
        if (kernels == nullptr)
            continue;
        names += names.empty() ? name : std::string(", ") + name;
        if (kernels == &vexlor::kernels())
            serving = name;
    }
    return serving + " (of " + names + ")";
}

std::string simd_sets()
{
    const Context simd = new_context(simd_all);
    const bool sse = uses(*simd, simd_sse), sse2 = uses(*simd, simd_sse2);
    return sse && sse2 ? "SSE, SSE2" : sse ? "SSE" : sse2 ? "SSE2" : "no SSE";
}

std::string compiler()
{
#if defined(__clang__)
    return "clang " __clang_version__;
#else
    return "g++ " __VERSION__;
#endif
}

} // namespace tool

// vexlor info: what the library makes of this machine.
#include "../context.h"
#include "commands.h"
#include "isa/kernels.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace tool {

namespace {

// The instruction sets that row kernels were built for and this processor has; the last one serves.
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

struct InfoCommand : Command {
    void declare(Options&) override {}

    void run() override
    {
        const Context portable = new_context(), simd = new_context(simd_all);
        const bool sse = uses(*simd, simd_sse), sse2 = uses(*simd, simd_sse2);
        std::printf("version      %s\n", VEXLOR_TOOL_VERSION);
        std::printf("word size    %zu bits\n", sizeof(void*) * 8);
        std::printf("processor    %s\n", sse && sse2 ? "SSE, SSE2" : sse ? "SSE" : sse2 ? "SSE2" : "no SSE");

        std::printf("row kernels  %s\n", kernel_sets().c_str());

        constexpr const char* line = "%-39s  %-50s  %s\n";
        std::putchar('\n');
        std::printf(line, "slot", "routine", "with SIMD on");
        const std::vector<Slot> off = slots_of(*portable), on = slots_of(*simd);
        for (size_t i = 0; i < off.size(); ++i)
            std::printf(line, off[i].name.c_str(), off[i].routine,
                        std::string_view(off[i].routine) == on[i].routine ? "the same" : on[i].routine);
    }
};

} // namespace

const Entry info_entry{"info", "Print what the processor has and which routines the library uses on it",
                       "  vexlor info", make_command<InfoCommand>};

} // namespace tool

// vexlor info: what the library makes of this machine.
#include "../context.h"
#include "../system.h"
#include "commands.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace tool {

namespace {

struct InfoCommand : Command {
    void declare(Options&) override {}

    void run() override
    {
        const Context portable = new_context(), simd = new_context(simd_all);
        std::printf("version      %s\n", VEXLOR_TOOL_VERSION);
        std::printf("word size    %zu bits\n", sizeof(void*) * 8);
        std::printf("processor    %s\n", simd_sets().c_str());
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

// vexlor report: all that a bug report needs to say about the library, its build and the machine.
#include "../context.h"
#include "../system.h"
#include "commands.h"
#include "golden/golden.h"
#include "golden/stored.h"

#include <cstdio>
#include <fstream>
#include <string_view>
#include <sys/utsname.h>

namespace tool {

namespace {

// The first value of a key of /proc/cpuinfo, where there is such a file.
std::string cpuinfo(std::string_view key)
{
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(key) && line.find(": ") != std::string::npos)
            return line.substr(line.find(": ") + 2);
    return "unknown";
}

std::string operating_system()
{
    utsname name;
    if (::uname(&name) != 0)
        return "unknown";
    return std::string(name.sysname) + " " + name.release + " " + name.machine;
}

struct ReportCommand : Command {
    void declare(Options&) override {}

    void run() override
    {
        constexpr const char* line = "%-13s%s\n";
        std::printf(line, "version", "libvexlor " VEXLOR_TOOL_VERSION);
        std::printf(line, "compiler", compiler().c_str());
        std::printf(line, "build", VEXLOR_TOOL_BUILD);
        std::printf("%-13s%zu bits\n", "word size", sizeof(void*) * 8);
        std::printf(line, "system", operating_system().c_str());
        std::printf(line, "processor", cpuinfo("model name").c_str());
        std::printf(line, "flags", cpuinfo("flags").c_str());
        std::printf(line, "SIMD on", simd_sets().c_str());
        std::printf(line, "row kernels", kernel_sets().c_str());
        print_slots();

        const golden::Verdict verdict = golden::compare(golden::draw_all(), golden::stored_table());
        status = verdict.differences.empty() ? 0 : 1;
        std::printf("checksums    %d compared, %zu differ\n", verdict.compared, verdict.differences.size());
        for (const std::string& difference : verdict.differences)
            std::printf("    %s\n", difference.c_str());
    }

private:
    // The slots whose routine SIMD changes; the others always hold the portable one of their name.
    static void print_slots()
    {
        const std::vector<Slot> off = slots_of(*new_context(simd_none)),
                                on = slots_of(*new_context(simd_all));
        size_t same = 0;
        for (size_t i = 0; i < off.size(); ++i) {
            const bool changes = std::string_view(off[i].routine) != on[i].routine;
            same += !changes;
            if (changes)
                std::printf("slot         %s: %s\n", off[i].name.c_str(), on[i].routine);
        }
        std::printf("slots        %zu others, the same with SIMD off and on\n", same);
    }
};

} // namespace

const Entry report_entry{
    "report",
    "Print what a bug report needs; exit status 1 when the library draws other bytes than it "
    "should",
    "  vexlor report >report.txt", make_command<ReportCommand>};

} // namespace tool

// vexlor manual: the manual page, written from the same declarations as the help texts.
#include "../pages.h"
#include "commands.h"

#include <cstdio>

namespace tool {

namespace {

void print(const Description& command)
{
    std::string arguments;
    for (const OptionInfo& option : command.options)
        if (option.is_argument())
            arguments.append(option.required ? " " : " [")
                .append(option.form)
                .append(option.required ? "" : "]");
    std::printf(".SS vexlor %s%s\n%s.\n", command.name.c_str(), troff(arguments).c_str(),
                troff(command.summary).c_str());
    for (const OptionInfo& option : command.options)
        print_manual(option);
    std::printf(".PP\nExample:\n.PP\n.nf\n%s\n.fi\n", troff(command.example).c_str());
}

struct ManualCommand : Command {
    void declare(Options&) override {}

    void run() override
    {
        std::printf(
            ".TH VEXLOR 1 \"\" \"libvexlor " VEXLOR_TOOL_VERSION "\" \"User Commands\"\n"
            ".SH NAME\nvexlor \\- fill, copy, blend, convert and scale pictures in software\n"
            ".SH SYNOPSIS\n.B vexlor\n.I COMMAND\n.RI [ OPTIONS ]\n"
            ".SH DESCRIPTION\n"
            "Draws with libvexlor on pictures (PNG, JPEG) and raw frames, measures it and checks it. Each\n"
            "drawing command prints one line, with the time of the library's call alone. The formats'\n"
            "names are those that\n.B vexlor formats\nprints. Every command knows\n.BR \\-\\-help .\n"
            ".SH COMMANDS\n");
        for (const Description& command : describe(all_entries()))
            print(command);
        std::printf(
            ".SH EXIT STATUS\n.TP\n0\nDone; of diff: equal.\n.TP\n1\nRefused by the library, with the "
            "result\n"
            "code's name and meaning; of diff: different; of sum and report: other checksums.\n"
            ".TP\n2\nBad usage, or a file that cannot be used.\n"
            ".SH FILES\nOutputs are written beside their final name and renamed when they are complete.\n"
            ".SH SEE ALSO\n.BR vexlor\\-view (1)\n");
    }
};

} // namespace

const Entry manual_entry{"manual", "Print the manual page, in troff", "  vexlor manual | man -l -",
                         make_command<ManualCommand>};

} // namespace tool

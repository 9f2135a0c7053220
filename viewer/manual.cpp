#include "manual.h"

#include "failure.h"
#include "model.h"
#include "pages.h"

#include <cstdio>

namespace view {

void print_manual(const std::vector<tool::OptionInfo>& options)
{
    std::printf(
        ".TH VEXLOR-VIEW 1 \"\" \"libvexlor " VEXLOR_TOOL_VERSION "\" \"User Commands\"\n"
        ".SH NAME\nvexlor\\-view \\- look at pictures and raw streams as libvexlor draws them\n"
        ".SH SYNOPSIS\n.B vexlor\\-view\n.RI [ OPTIONS ]\n.I FILE\n"
        ".SH DESCRIPTION\n%s\n"
        "Two sides, A and B, have settings of their own; a bar between them can be dragged, and their\n"
        "difference can be shown amplified. The C calls that draw what is seen stand on the screen.\n"
        ".SH OPTIONS\n",
        tool::troff(summary).c_str());
    for (const tool::OptionInfo& option : options)
        tool::print_manual(option);
    std::printf(".SH KEYS\n");
    for (const KeyHelp& key : key_help())
        std::printf(".TP\n.B %s\n%s\n", tool::troff(key.names).c_str(), tool::troff(key.text).c_str());
    std::printf(".PP\nThe pointer drags the sprite, the wipe bar or the zoomed picture.\n"
                ".SH EXIT STATUS\n.TP\n0\nDone.\n.TP\n2\nBad usage, or a file that cannot be used.\n"
                ".SH EXAMPLE\n.nf\n%s\n.fi\n"
                ".SH SEE ALSO\n.BR vexlor (1)\n",
                tool::troff(example).c_str());
}

void print_completion(const std::string& shell, const std::vector<tool::OptionInfo>& options)
{
    if (shell == "zsh") {
        std::printf("#compdef vexlor-view\n");
        tool::print_zsh_arguments(options);
    } else if (shell == "bash") {
        const tool::BashOptions bash = tool::bash_options(options);
        std::printf("# bash completion of vexlor-view\n"
                    "_vexlor_view()\n{\n"
                    "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} words=\n"
                    "    local options='--version %s'\n"
                    "    COMPREPLY=()\n"
                    "    case $prev in\n%s    esac\n"
                    "%scomplete -o default -F _vexlor_view vexlor-view\n",
                    bash.names.c_str(), bash.cases.c_str(), tool::bash_answer);
    } else {
        throw tool::Failure("--completion", "'" + shell + "' is none of bash|zsh");
    }
}

} // namespace view

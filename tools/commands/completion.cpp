// vexlor completion: what shells need to complete commands, options and their words.
#include "../pages.h"
#include "commands.h"

#include <cstdio>

namespace tool {

namespace {

void print_bash(const std::vector<Description>& commands)
{
    std::string names;
    for (const Description& command : commands)
        names += " " + command.name;
    std::printf("# bash completion of vexlor\n"
                "_vexlor()\n{\n"
                "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} words= options=\n"
                "    COMPREPLY=()\n"
                "    if [ \"$COMP_CWORD\" = 1 ]; then\n"
                "        COMPREPLY=($(compgen -W '--help --version%s' -- \"$cur\"))\n"
                "        return\n"
                "    fi\n"
                "    case ${COMP_WORDS[1]} in\n",
                names.c_str());
    for (const Description& command : commands) {
        const BashOptions options = bash_options(command.options);
        std::printf("    %s)\n        options='%s'\n", command.name.c_str(), options.names.c_str());
        if (!options.first.empty())
            std::printf("        [ \"$COMP_CWORD\" = 2 ] && words='%s'\n", options.first.c_str());
        if (!options.cases.empty())
            std::printf("        case $prev in\n%s        esac\n", options.cases.c_str());
        std::printf("        ;;\n");
    }
    std::printf("    esac\n%scomplete -o default -F _vexlor vexlor\n", bash_answer);
}

void print_zsh(const std::vector<Description>& commands)
{
    std::printf("#compdef vexlor\n"
                "if (( CURRENT == 2 )); then\n    local -a commands=(\n");
    for (const Description& command : commands)
        std::printf("        '%s:%s'\n", command.name.c_str(), zsh_text(command.summary).c_str());
    std::printf("    )\n    _describe command commands\n    return\nfi\n"
                "local command=$words[2]\nshift words\n(( CURRENT-- ))\ncase $command in\n");
    for (const Description& command : commands) {
        std::printf("%s)\n", command.name.c_str());
        print_zsh_arguments(command.options);
        std::printf("    ;;\n");
    }
    std::printf("esac\n");
}

struct CompletionCommand : Command {
    void declare(Options& options) override
    {
        options.word("!shell", shell, {"bash", "zsh"}, "for which shell");
    }

    void run() override
    {
        const std::vector<Description> commands = describe(all_entries());
        if (shell == 0)
            print_bash(commands);
        else
            print_zsh(commands);
    }

private:
    uint32_t shell = 0;
};

} // namespace

const Entry completion_entry{"completion", "Print the completion of commands and options for a shell",
                             "  . <(vexlor completion bash)", make_command<CompletionCommand>};

} // namespace tool

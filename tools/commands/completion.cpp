// vexlor completion: what shells need to complete commands, options and their words.
#include "commands.h"

#include <cstdio>

namespace tool {

namespace {

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

// "-o,--output" as "-o|--output" and the like.
std::string names_with(const OptionInfo& option, const char* between)
{
    std::string names = option.names;
    if (const size_t comma = names.find(','); comma != std::string::npos)
        names.replace(comma, 1, between);
    return names;
}

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
        std::string options = "--help", cases, first;
        for (const OptionInfo& option : command.options) {
            if (!option.is_argument())
                options.append(" ").append(names_with(option, " "));
            else if (first.empty() && !option.words.empty())
                first = joined(option.words);
            if (!option.is_argument() && !option.words.empty())
                cases.append("        ")
                    .append(names_with(option, "|"))
                    .append(") words='")
                    .append(joined(option.words))
                    .append("' ;;\n");
        }
        std::printf("    %s)\n        options='%s'\n", command.name.c_str(), options.c_str());
        if (!first.empty())
            std::printf("        [ \"$COMP_CWORD\" = 2 ] && words='%s'\n", first.c_str());
        if (!cases.empty())
            std::printf("        case $prev in\n%s        esac\n", cases.c_str());
        std::printf("        ;;\n");
    }
    std::printf("    esac\n"
                "    case $cur in\n"
                "    -*) COMPREPLY=($(compgen -W \"$options\" -- \"$cur\")) ;;\n"
                "    *) [ -z \"$words\" ] || COMPREPLY=($(compgen -W \"$words\" -- \"$cur\")) ;;\n"
                "    esac\n"
                "}\n"
                "complete -o default -F _vexlor vexlor\n");
}

// Text inside single quotes, as _arguments takes it.
std::string zsh_text(const std::string& text)
{
    std::string result;
    for (const char c : text)
        result += c == '\''                          ? "'\\''"
                  : c == '[' || c == ']' || c == ':' ? std::string("\\") + c
                                                     : std::string(1, c);
    return result;
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
        std::printf("%s)\n    _arguments '--help'", command.name.c_str());
        for (const OptionInfo& option : command.options) {
            const std::string values =
                option.words.empty() ? "_files" : std::string("(").append(joined(option.words)).append(")");
            const std::string help = zsh_text(option.help);
            if (option.is_argument())
                std::printf(" \\\n        ':%s:%s'", option.names.c_str(), values.c_str());
            else if (option.form.empty())
                std::printf(" \\\n        '%s[%s]'", long_name(option).c_str(), help.c_str());
            else
                std::printf(" \\\n        '%s[%s]:value:%s'", long_name(option).c_str(), help.c_str(),
                            values.c_str());
        }
        std::printf("\n    ;;\n");
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

#include "pages.h"

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

} // namespace

std::string troff(const std::string& text)
{
    std::string result;
    bool line_start = true;
    for (const char c : text) {
        if (line_start && (c == '.' || c == '\''))
            result += "\\&";
        result += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
        line_start = c == '\n';
    }
    return result;
}

void print_manual(const OptionInfo& option)
{
    std::printf(".TP\n\\fB%s\\fR%s%s%s%s\n%s%s\n", troff(option.names).c_str(),
                option.form.empty() ? "" : " ", option.form.empty() ? "" : "\\fI", troff(option.form).c_str(),
                option.form.empty() ? "" : "\\fR", troff(option.help).c_str(),
                option.required ? " (required)" : "");
}

BashOptions bash_options(const std::vector<OptionInfo>& options)
{
    BashOptions made{"--help", {}, {}};
    for (const OptionInfo& option : options) {
        if (!option.is_argument())
            made.names.append(" ").append(names_with(option, " "));
        else if (made.first.empty() && !option.words.empty())
            made.first = joined(option.words);
        if (!option.is_argument() && !option.words.empty())
            made.cases.append("        ")
                .append(names_with(option, "|"))
                .append(") words='")
                .append(joined(option.words))
                .append("' ;;\n");
    }
    return made;
}

const char* const bash_answer =
    "    case $cur in\n"
    "    -*) COMPREPLY=($(compgen -W \"$options\" -- \"$cur\")) ;;\n"
    "    *) [ -z \"$words\" ] || COMPREPLY=($(compgen -W \"$words\" -- \"$cur\")) ;;\n"
    "    esac\n"
    "}\n";

std::string zsh_text(const std::string& text)
{
    std::string result;
    for (const char c : text)
        result += c == '\''                          ? "'\\''"
                  : c == '[' || c == ']' || c == ':' ? std::string("\\") + c
                                                     : std::string(1, c);
    return result;
}

void print_zsh_arguments(const std::vector<OptionInfo>& options)
{
    std::printf("    _arguments '--help'");
    for (const OptionInfo& option : options) {
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
    std::printf("\n");
}

} // namespace tool

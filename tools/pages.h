// Manual pages and shells' completions, piece by piece, from the declarations that help texts are made of.
#pragma once

#include "options.h"

#include <string>
#include <vector>

namespace tool {

// Text for troff: no character of it is a command.
std::string troff(const std::string& text);
void print_manual(const OptionInfo& option);

// What bash needs to know of options: their names; the words that may follow one, as cases of its name; the words that
// the first argument may be.
struct BashOptions {
    std::string names, cases, first;
};
BashOptions bash_options(const std::vector<OptionInfo>& options);
// The last lines of a function that has set cur, words and options.
extern const char* const bash_answer;

std::string zsh_text(const std::string& text); // inside single quotes, as _arguments takes it
void print_zsh_arguments(const std::vector<OptionInfo>& options);

} // namespace tool

// The options of a command, declared by name with the place where the value goes. options.cpp alone knows the
// parser behind it.
#pragma once

#include "parse.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

// An option as help, manual and completion show it.
struct OptionInfo {
    std::string names; // "-o,--output", or "source" for an argument
    std::string form;  // of the value; empty for a flag
    std::string help;
    bool required = false;
    std::vector<std::string> words; // the values, where they are words

    bool is_argument() const { return !names.starts_with('-'); }
};

// The last name, which is the long one.
std::string long_name(const OptionInfo& option);

class Options {
public:
    // Options are noted in `list`, and become those of `app` when there is one.
    Options(CLI::App* app, std::vector<OptionInfo>& list) : app_(app), list_(list) {}

    // Names: "--rect", "-o,--output", or "picture" for an argument without an option. A leading "!" makes it
    // required.
    void text(const std::string& name, std::string& value, const std::string& form, const std::string& help);
    void flag(const std::string& name, bool& value, const std::string& help);
    void number(const std::string& name, int32_t& value, int32_t low, int32_t high, const std::string& help);
    void format(const std::string& name, uint32_t& code, const std::string& help);
    // One of the words, which become their position in the list.
    void word(const std::string& name, uint32_t& value, std::initializer_list<const char*> words,
              const std::string& help);
    // A value that `parse` reads; it throws BadValue.
    template <class Value>
    void parsed(const std::string& name, std::optional<Value>& value, Value (*parse)(const std::string&),
                const std::string& form, const std::string& help)
    {
        add(name, form, help, [&value, parse](const std::string& text) { value = parse(text); });
    }

private:
    void add(const std::string& name, const std::string& form, const std::string& help,
             const std::function<void(const std::string&)>& store);

    CLI::App* app_;
    std::vector<OptionInfo>& list_;
};

} // namespace tool

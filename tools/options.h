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

namespace CLI {
class App;
}

namespace tool {

class Options {
public:
    explicit Options(CLI::App& app) : app_(app) {}

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

    CLI::App& app_;
};

} // namespace tool

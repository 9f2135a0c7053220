#include "options.h"

#include "commands/commands.h"
#include "failure.h"
#include "formats.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <cstdio>
#include <sstream>
#include <vector>

namespace tool {

void Options::add(const std::string& name, const std::string& form, const std::string& help,
                  const std::function<void(const std::string&)>& store)
{
    const bool required = name.starts_with('!');
    const std::string plain = name.substr(required ? 1 : 0);
    const std::function<void(const std::string&)> checked = [plain, store](const std::string& text) {
        try {
            store(text);
        } catch (const BadValue& bad) {
            throw Failure(plain, bad.what());
        }
    };
    list_.push_back({plain, form, help, required, {}});
    if (app_ != nullptr)
        app_->add_option_function(plain, checked, help)->type_name(form)->required(required);
}

std::string long_name(const OptionInfo& option) { return option.names.substr(option.names.rfind(',') + 1); }

void Options::text(const std::string& name, std::string& value, const std::string& form,
                   const std::string& help)
{
    add(name, form, help, [&value](const std::string& text) { value = text; });
}

void Options::flag(const std::string& name, bool& value, const std::string& help)
{
    list_.push_back({name, "", help, false, {}});
    if (app_ != nullptr)
        app_->add_flag(name, value, help);
}

void Options::number(const std::string& name, int32_t& value, int32_t low, int32_t high,
                     const std::string& help)
{
    add(name, "N", help,
        [&value, low, high](const std::string& text) { value = parse_integer(text, low, high); });
}

void Options::format(const std::string& name, uint32_t& code, const std::string& help)
{
    add(name, "FORMAT", help, [&code](const std::string& text) { code = format_named(text); });
    for (const Format& known : formats)
        list_.back().words.emplace_back(known.name);
}

void Options::word(const std::string& name, uint32_t& value, std::initializer_list<const char*> words,
                   const std::string& help)
{
    std::string list;
    for (const char* word : words)
        list += (list.empty() ? "" : "|") + std::string(word);
    const std::vector<std::string> known(words.begin(), words.end());
    add(name, list, help, [&value, known, list](const std::string& text) {
        const auto found = std::ranges::find(known, text);
        if (found == known.end())
            throw BadValue("'" + text + "' is none of " + list);
        value = static_cast<uint32_t>(found - known.begin());
    });
    list_.back().words = known;
}

int run_command(int argc, char** argv, std::span<const Entry* const> entries)
{
    CLI::App app("vexlor fills, copies, blends, converts and scales pictures with libvexlor.\n"
                 "Exit status: 0 done, 1 refused by the library, 2 bad usage or file.");
    app.name("vexlor");
    app.set_version_flag("--version", "vexlor " VEXLOR_TOOL_VERSION);
    app.require_subcommand(1);
    std::vector<std::unique_ptr<Command>> commands;
    int status = 0;
    for (const Entry* entry : entries) {
        CLI::App* sub = app.add_subcommand(entry->name, entry->summary);
        sub->footer(std::string("Example:\n") + entry->example);
        Command* command = commands.emplace_back(entry->make()).get();
        std::vector<OptionInfo> list;
        Options options(sub, list);
        command->declare(options);
        sub->callback([command, &status] {
            command->run();
            status = command->status;
        });
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream help; // or the version, where that was asked for
        if (app.exit(error, help, help) != 0)
            throw Failure("usage", std::string(error.what()) + " (vexlor COMMAND --help tells more)");
        const std::string text = help.str();
        std::printf("%s%s", text.c_str(), text.ends_with('\n') ? "" : "\n");
    }
    return status;
}

std::vector<Description> describe(std::span<const Entry* const> entries)
{
    std::vector<Description> descriptions;
    for (const Entry* entry : entries) {
        Description& made =
            descriptions.emplace_back(Description{entry->name, entry->summary, entry->example, {}});
        Options options(nullptr, made.options);
        entry->make()->declare(options);
    }
    return descriptions;
}

} // namespace tool

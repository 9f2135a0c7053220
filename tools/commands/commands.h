// The subcommands. Each file of this folder defines one entry; commands.cpp lists them.
#pragma once

#include "../options.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tool {

struct Command {
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;
    virtual void declare(Options& options) = 0;
    virtual void run() = 0;
    int status = 0; // exit status; a command that finds something to be so sets 1
};

struct Entry {
    const char* name;
    const char* summary;
    const char* example; // the end of the help text
    std::unique_ptr<Command> (*make)();
};

template <class C> std::unique_ptr<Command> make_command() { return std::make_unique<C>(); }

extern const Entry info_entry, formats_entry, fill_entry, copy_entry, convert_entry, blend_entry, test_entry,
    scale_entry, diff_entry, sum_entry, bench_entry, sheet_entry, play_entry, scene_entry, report_entry,
    manual_entry, completion_entry;

// In the order of the help text.
std::span<const Entry* const> all_entries();

// Reads the arguments, runs the command that they choose and returns its exit status.
int run_command(int argc, char** argv, std::span<const Entry* const> entries);

// What can be said about a command without running it.
struct Description {
    std::string name, summary, example;
    std::vector<OptionInfo> options;
};
std::vector<Description> describe(std::span<const Entry* const> entries);

} // namespace tool

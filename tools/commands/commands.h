// The subcommands. Each file of this folder defines one entry; main.cpp lists them.
#pragma once

#include "../options.h"

#include <memory>
#include <span>

namespace tool {

struct Command {
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;
    virtual void declare(Options& options) = 0;
    virtual void run() = 0;
};

struct Entry {
    const char* name;
    const char* summary;
    const char* example; // the end of the help text
    std::unique_ptr<Command> (*make)();
};

template <class C> std::unique_ptr<Command> make_command() { return std::make_unique<C>(); }

extern const Entry formats_entry, fill_entry, copy_entry, blend_entry, test_entry, scale_entry, info_entry,
    scene_entry;

// Reads the arguments and runs the command that they choose.
void run_command(int argc, char** argv, std::span<const Entry* const> entries);

} // namespace tool

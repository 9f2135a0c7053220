// The ways in which a command ends early. main() makes of each one line on standard error and an exit status.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tool {

// A file or an option that cannot be used: "vexlor: SUBJECT: reason", exit status 2.
struct Failure : std::runtime_error {
    Failure(const std::string& subject, const std::string& reason)
        : std::runtime_error(subject + ": " + reason)
    {}
};

// A text that is no value of its option; becomes a Failure about that option.
struct BadValue : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A drawing call that the library refused: exit status 1.
struct Refused : std::runtime_error {
    Refused(const std::string& operation, uint32_t result);
};

} // namespace tool

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

// Runs `make`, turning a BadValue into a Failure about the subject.
template <class Make> auto about(const std::string& subject, Make make)
{
    try {
        return make();
    } catch (const BadValue& bad) {
        throw Failure(subject, bad.what());
    }
}

// A drawing call that the library refused: exit status 1.
struct Refused : std::runtime_error {
    // `advice` says what would have been accepted.
    Refused(const std::string& operation, uint32_t result, const std::string& advice = {});
};

} // namespace tool

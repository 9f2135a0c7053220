// vexlor: the command-line tool. Runs the command that the arguments choose, and turns every way of failing
// into one line and an exit status: 1 refused by the library, 2 bad usage or file.
#include "commands/commands.h"
#include "failure.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

namespace {

using namespace tool;

// Some messages come from libraries and may have several lines.
int complain(std::string message, int status)
{
    for (char& c : message)
        c = static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    std::fprintf(stderr, "vexlor: %s\n", message.c_str());
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGXFSZ, SIG_IGN); // a write past the file size limit fails as any other does
    try {
        const int status = run_command(argc, argv, all_entries());
        if (std::fflush(stdout) != 0)
            throw Failure("standard output", std::strerror(errno));
        return status;
    } catch (const Refused& refused) {
        return complain(refused.what(), 1);
    } catch (const std::bad_alloc&) {
        return complain("not enough memory", 2);
    } catch (const std::exception& error) {
        return complain(error.what(), 2);
    }
}

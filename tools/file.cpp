#include "file.h"

#include "failure.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tool {

namespace {

[[noreturn]] void fail(const std::string& name, int error)
{
    throw Failure(shown(name), std::strerror(error));
}

// Where a file is being written now, for interruptions: a signal handler can remove it.
char being_written[4096];

extern "C" void remove_and_stop(int signal)
{
    if (being_written[0] != '\0')
        ::unlink(being_written);
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

constexpr int interruptions[] = {SIGINT, SIGTERM, SIGHUP};

// Interruptions wait while a temporary file is there and the handler does not know it.
class Uninterrupted {
public:
    Uninterrupted()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : interruptions)
            sigaddset(&signals, signal);
        sigprocmask(SIG_BLOCK, &signals, &before_);
    }
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;
    ~Uninterrupted() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_;
};

// An interruption that the program was started to ignore stays ignored.
void remove_when_interrupted(const std::string& name)
{
    name.copy(being_written, sizeof being_written - 1);
    for (const int signal : interruptions)
        if (::signal(signal, remove_and_stop) == SIG_IGN)
            ::signal(signal, SIG_IGN);
}

struct Place {
    std::string name; // where links lead
    bool direct;      // a device or a pipe: nothing to be renamed
    mode_t mode;
};

// A new file has the permissions that the umask gives, one that is replaced keeps its own.
Place place_of(const std::string& name)
{
    if (name == "-")
        return {name, true, 0};
    struct stat old;
    if (::stat(name.c_str(), &old) == 0) {
        const bool direct = S_ISCHR(old.st_mode) || S_ISBLK(old.st_mode) || S_ISFIFO(old.st_mode);
        if (!direct && !S_ISREG(old.st_mode))
            throw Failure(name, "is not a regular file, so it is not replaced");
        std::error_code error;
        const std::string target = std::filesystem::canonical(name, error).string();
        return {direct || error ? name : target, direct, old.st_mode & 07777};
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return {name, false, 0666 & ~mask};
}

void close(int fd)
{
    if (fd > STDERR_FILENO)
        ::close(fd);
}

} // namespace

std::string shown(const std::string& name) { return name == "-" ? "standard input" : name; }

InputFile::InputFile(const std::string& name)
    : name_(name), fd_(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (fd_ < 0)
        fail(name, errno);
}

InputFile::~InputFile() { close(fd_); }

size_t InputFile::read(std::span<uint8_t> bytes)
{
    size_t size = 0;
    while (size < bytes.size()) {
        const ssize_t got = ::read(fd_, bytes.data() + size, bytes.size() - size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            fail(name_, errno);
        if (got == 0)
            break;
        size += static_cast<size_t>(got);
    }
    return size;
}

std::optional<int64_t> InputFile::size() const
{
    struct stat status;
    if (::fstat(fd_, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return int64_t{status.st_size};
}

std::vector<uint8_t> read_file(const std::string& name, size_t limit)
{
    InputFile file(name);
    std::vector<uint8_t> bytes;
    for (size_t size = 0;;) {
        bytes.resize(std::min(limit + 1, std::max<size_t>(size * 2, size_t{1} << 16)));
        size += file.read(std::span(bytes).subspan(size));
        if (size > limit)
            throw Failure(shown(name), "has more than " + std::to_string(limit) + " bytes");
        if (size < bytes.size()) {
            bytes.resize(size);
            return bytes;
        }
    }
}

OutputFile::OutputFile(const std::string& name) : name_(name == "-" ? "standard output" : name)
{
    const Place place = place_of(name);
    target_ = place.name;
    mode_ = place.mode;
    if (place.direct) {
        fd_ = name == "-" ? STDOUT_FILENO : ::open(name.c_str(), O_WRONLY | O_CLOEXEC);
    } else {
        std::string beside = target_ + ".XXXXXX";
        const Uninterrupted uninterrupted;
        fd_ = ::mkstemp(beside.data());
        if (fd_ >= 0) {
            beside_ = beside;
            remove_when_interrupted(beside_);
        }
    }
    if (fd_ < 0)
        fail(name_, errno);
}

OutputFile::~OutputFile()
{
    close(fd_);
    if (beside_.empty())
        return;
    ::unlink(beside_.c_str());
    being_written[0] = '\0';
}

void OutputFile::write(std::span<const uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            fail(name_, errno);
        bytes = bytes.subspan(static_cast<size_t>(written));
    }
}

void OutputFile::finish()
{
    if (beside_.empty())
        return;
    if (::fchmod(fd_, mode_) != 0 || ::rename(beside_.c_str(), target_.c_str()) != 0)
        fail(name_, errno);
    beside_.clear();
    being_written[0] = '\0';
}

void write_file(const std::string& name, std::span<const uint8_t> bytes)
{
    OutputFile file(name);
    file.write(bytes);
    file.finish();
}

} // namespace tool

#include "file.h"

#include "failure.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tool {

namespace {

[[noreturn]] void fail(const std::string& name, int error)
{
    throw Failure(shown(name), std::strerror(error));
}

struct Descriptor {
    int fd;
    explicit Descriptor(int descriptor) : fd(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (fd > STDERR_FILENO)
            ::close(fd);
    }
};

// Interruptions wait until the temporary file is renamed or removed.
class Uninterrupted {
public:
    Uninterrupted()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&signals, signal);
        sigprocmask(SIG_BLOCK, &signals, &before);
    }
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;
    ~Uninterrupted() { sigprocmask(SIG_SETMASK, &before, nullptr); }

private:
    sigset_t before;
};

int write_all(int fd, std::span<const uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return errno;
        bytes = bytes.subspan(static_cast<size_t>(written));
    }
    return 0;
}

// A new file has the permissions that the umask gives, one that is replaced keeps its own.
mode_t permissions(const std::string& name)
{
    struct stat old;
    if (::stat(name.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode))
            throw Failure(name, "is not a regular file, so it is not replaced");
        return old.st_mode & 07777;
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

std::string shown(const std::string& name) { return name == "-" ? "standard input" : name; }

std::vector<uint8_t> read_file(const std::string& name, size_t limit)
{
    const Descriptor file(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.fd < 0)
        fail(name, errno);
    std::vector<uint8_t> bytes;
    for (size_t size = 0;;) {
        bytes.resize(std::min(limit + 1, std::max<size_t>(size * 2, size_t{1} << 16)));
        const ssize_t got = ::read(file.fd, bytes.data() + size, bytes.size() - size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            fail(name, errno);
        size += static_cast<size_t>(got);
        if (size > limit)
            throw Failure(shown(name), "has more than " + std::to_string(limit) + " bytes");
        if (got == 0) {
            bytes.resize(size);
            return bytes;
        }
    }
}

void write_file(const std::string& name, std::span<const uint8_t> bytes)
{
    const mode_t mode = permissions(name);
    const Uninterrupted uninterrupted;
    std::string beside = name + ".XXXXXX";
    const Descriptor file(::mkstemp(beside.data()));
    if (file.fd < 0)
        fail(name, errno);
    int error = write_all(file.fd, bytes);
    if (error == 0 && (::fchmod(file.fd, mode) != 0 || ::rename(beside.c_str(), name.c_str()) != 0))
        error = errno;
    if (error != 0) {
        ::unlink(beside.c_str());
        fail(name, error);
    }
}

} // namespace tool

#include "raw_stream.h"

#include "failure.h"
#include "file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace view {

RawStream::RawStream(const std::string& name, uint32_t format, tool::Size size)
    : name_(tool::shown(name)), format_(format), size_(size),
      fd_(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC))
{
    struct stat file;
    if (fd_ < 0 || ::fstat(fd_, &file) != 0)
        throw tool::Failure(name_, std::strerror(errno));
    if (S_ISDIR(file.st_mode))
        throw tool::Failure(name_, std::strerror(EISDIR));
    rewinds_ = S_ISREG(file.st_mode);
    const auto frame = static_cast<int64_t>(blank().bytes());
    if (rewinds_ && (file.st_size == 0 || file.st_size % frame != 0))
        throw tool::Failure(name_, "has " + std::to_string(file.st_size) +
                                       " bytes, which is no multiple of a " + "frame's " +
                                       std::to_string(frame));
}

RawStream::~RawStream()
{
    if (fd_ > STDERR_FILENO)
        ::close(fd_);
}

bool RawStream::read_bytes(uint8_t* to, size_t count, int stop, size_t& got) const
{
    while (got < count) {
        pollfd waits[2] = {{fd_, POLLIN, 0}, {stop, POLLIN, 0}}; // a negative descriptor is passed over
        if (::poll(waits, 2, -1) < 0 && errno != EINTR)
            throw tool::Failure(name_, std::strerror(errno));
        if (waits[1].revents != 0)
            return false;
        const ssize_t now = ::read(fd_, to + got, count - got);
        if (now < 0 && errno != EINTR && errno != EAGAIN)
            throw tool::Failure(name_, std::strerror(errno));
        if (now == 0)
            return false;
        got += static_cast<size_t>(std::max<ssize_t>(now, 0));
    }
    return true;
}

bool RawStream::read(tool::Surface& frame, int stop)
{
    size_t got = 0;
    bool whole = read_bytes(frame.row(0), frame.bytes(), stop, got);
    if (!whole && rewinds_ && got == 0 && ::lseek(fd_, 0, SEEK_SET) == 0)
        whole = read_bytes(frame.row(0), frame.bytes(), stop, got);
    if (!whole && !any_)
        throw tool::Failure(name_, "ends after " + std::to_string(got) + " bytes, before the first frame's " +
                                       std::to_string(frame.bytes()));
    any_ = true;
    return whole;
}

Ahead::Ahead(RawStream& stream) : stream_(stream), next_(stream.blank())
{
    if (::pipe2(stop_, O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    thread_ = std::thread([this] { run(); });
}

Ahead::~Ahead()
{
    {
        const std::scoped_lock lock(mutex_);
        stopping_ = true;
    }
    taken_.notify_one();
    ::close(stop_[1]); // makes the other end readable
    thread_.join();
    ::close(stop_[0]);
}

bool Ahead::take(tool::Surface& frame)
{
    {
        const std::scoped_lock lock(mutex_);
        if (!full_)
            return false;
        std::swap(frame, next_);
        full_ = false;
    }
    taken_.notify_one();
    return true;
}

void Ahead::run()
{
    // A stream that breaks ends like one that is over: its last frame stays.
    const auto read = [this] {
        try {
            return stream_.read(next_, stop_[0]);
        } catch (const std::exception&) {
            return false;
        }
    };
    while (read()) {
        std::unique_lock lock(mutex_);
        full_ = true;
        taken_.wait(lock, [this] { return !full_ || stopping_; });
        if (stopping_)
            return;
    }
    ended_ = true;
}

} // namespace view

// Whole frames from a file or a pipe, one after the other.
#pragma once

#include "surface.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace view {

class RawStream {
public:
    // A regular file must hold whole frames; it starts anew at its end.
    RawStream(const std::string& name, uint32_t format, tool::Size size);
    RawStream(const RawStream&) = delete;
    RawStream& operator=(const RawStream&) = delete;
    ~RawStream();

    tool::Surface blank() const { return tool::Surface(size_, format_); }
    // Waits for the next frame. False at the end, or, as soon as `stop` can be read, without one; a frame that
    // the end cuts off is dropped, unless it is the first: that is a Failure.
    bool read(tool::Surface& frame, int stop = -1);

private:
    bool read_bytes(uint8_t* to, size_t count, int stop, size_t& got) const;

    std::string name_;
    uint32_t format_;
    tool::Size size_;
    int fd_;
    bool rewinds_ = false;
    bool any_ = false;
};

// A thread that reads the frame after the current one.
class Ahead {
public:
    explicit Ahead(RawStream& stream);
    Ahead(const Ahead&) = delete;
    Ahead& operator=(const Ahead&) = delete;
    ~Ahead();

    bool take(tool::Surface& frame); // swaps in the next frame if it is there
    bool ended() const { return ended_; }

private:
    void run();

    RawStream& stream_;
    tool::Surface next_;
    bool full_ = false, stopping_ = false;
    std::atomic<bool> ended_ = false;
    int stop_[2];
    std::mutex mutex_;
    std::condition_variable taken_;
    std::thread thread_;
};

} // namespace view

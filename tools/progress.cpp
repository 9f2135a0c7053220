#include "progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace tool {

Progress::Progress(std::optional<int64_t> total) : total_(total), terminal_(::isatty(STDERR_FILENO) != 0) {}

Progress::~Progress()
{
    if (terminal_ && shown_ != Clock::time_point{})
        std::fputs("\r\033[K", stderr);
}

void Progress::show(int64_t done)
{
    const Clock::time_point now = Clock::now();
    if (!terminal_ || now - shown_ < std::chrono::milliseconds(100))
        return;
    shown_ = now;
    const double seconds = std::max(std::chrono::duration<double>(now - start_).count(), 1e-3);
    const double rate = static_cast<double>(done) / seconds;
    if (!total_ || *total_ < 1) {
        std::fprintf(stderr, "\r\033[K%lld frames, %.1f per second", static_cast<long long>(done), rate);
        return;
    }
    constexpr int64_t cells = 30;
    const int64_t share = std::min(cells, done * cells / *total_);
    const auto left = std::lround(static_cast<double>(*total_ - done) / std::max(rate, 1e-6));
    std::fprintf(stderr, "\r\033[K[%s%s] %lld/%lld frames, %.1f per second, %ld:%02ld left",
                 std::string(static_cast<size_t>(share), '#').c_str(),
                 std::string(static_cast<size_t>(cells - share), '.').c_str(), static_cast<long long>(done),
                 static_cast<long long>(*total_), rate, left / 60, left % 60);
}

} // namespace tool

// A line on the terminal that tells how far a long job has come. Where standard error is no terminal it stays silent.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace tool {

class Progress {
public:
    explicit Progress(std::optional<int64_t> total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress(); // wipes the line
    void show(int64_t done);

private:
    using Clock = std::chrono::steady_clock;
    std::optional<int64_t> total_;
    bool terminal_;
    Clock::time_point start_ = Clock::now(), shown_;
};

} // namespace tool

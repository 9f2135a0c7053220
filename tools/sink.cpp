#include "sink.h"

#include "failure.h"
#include "file.h"
#include "formats.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace tool {

namespace {

class Pictures : public Sink {
public:
    explicit Pictures(const std::string& pattern)
    {
        const size_t start = pattern.find('%'), end = pattern.find('d', start);
        if (start == std::string::npos || end == std::string::npos ||
            pattern.find('%', start + 1) != std::string::npos || end - start > 4)
            throw Failure(pattern,
                          "pictures need a place for their number in the name, such as frame-%05d.png");
        const std::string digits = pattern.substr(start + 1, end - start - 1);
        digits_ = digits.empty() ? 1 : about(pattern, [&] { return parse_integer(digits, 1, 20); });
        before_ = pattern.substr(0, start);
        behind_ = pattern.substr(end + 1);
    }
    bool write(std::span<const uint8_t> frame) override
    {
        const std::string text = std::to_string(number_++);
        const size_t zeros = std::max<size_t>(static_cast<size_t>(digits_), text.size()) - text.size();
        write_file(before_ + std::string(zeros, '0') + text + behind_, frame);
        return true;
    }

private:
    std::string before_, behind_;
    int32_t digits_ = 1;
    int64_t number_ = 0;
};

class Stream : public Sink {
public:
    explicit Stream(std::string file) : file_(std::move(file)) {}
    bool write(std::span<const uint8_t> frame) override
    {
        if (!output_)
            output_.emplace(file_);
        output_->write(frame);
        return true;
    }
    int finish() override
    {
        output_->finish();
        return 0;
    }

private:
    std::string file_;
    std::optional<OutputFile> output_;
};

constexpr const char* viewer = "vexlor-view";

[[noreturn]] void fail(int error)
{
    throw Failure(viewer, error == ENOENT ? "is not installed (it comes with the tool where SDL2 is there)"
                                          : std::strerror(error));
}

// The one that was installed beside this program, or else the first of the search path.
std::string viewer_program()
{
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string beside = self.parent_path() / viewer;
    return !error && ::access(beside.c_str(), X_OK) == 0 ? beside : viewer;
}

// The viewer as another process, which reads frames from a pipe.
class Viewer : public Sink {
public:
    Viewer(uint32_t format, Size size, int32_t rate)
        : words_{viewer, "--format", std::string(format_name(format)), "--size",
                 size_text(size.width, size.height)}
    {
        if (rate != 0)
            words_.insert(words_.end(), {"--rate", std::to_string(rate)});
        words_.emplace_back("-");
    }
    // After an error nobody waits for the window to be closed.
    ~Viewer() override
    {
        if (pipe_ >= 0)
            ::close(pipe_);
    }

    bool write(std::span<const uint8_t> frame) override
    {
        if (pipe_ < 0)
            start();
        while (!frame.empty()) {
            const ssize_t written = ::write(pipe_, frame.data(), frame.size());
            if (written < 0 && errno == EPIPE)
                return false; // the window was closed
            if (written < 0 && errno != EINTR)
                fail(errno);
            frame = frame.subspan(static_cast<size_t>(std::max<ssize_t>(written, 0)));
        }
        return true;
    }
    int finish() override
    {
        const int status = wait();
        if (WIFSIGNALED(status))
            throw Failure(viewer, std::string("was ended: ") + ::strsignal(WTERMSIG(status)));
        return WEXITSTATUS(status);
    }

private:
    void start()
    {
        std::signal(SIGPIPE, SIG_IGN); // write() says it
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            fail(errno);
        pipe_ = ends[1];
        posix_spawn_file_actions_t actions;
        posix_spawnattr_t attributes;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[0], STDIN_FILENO);
        posix_spawnattr_init(&attributes);
        sigset_t broken_pipe;
        sigemptyset(&broken_pipe);
        sigaddset(&broken_pipe, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &broken_pipe);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
        std::vector<char*> arguments;
        for (std::string& word : words_)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        const int error = ::posix_spawnp(&process_, viewer_program().c_str(), &actions, &attributes,
                                         arguments.data(), environ);
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
        ::close(ends[0]);
        if (error != 0) {
            process_ = -1;
            fail(error);
        }
    }

    // Until the window is closed. It stays when the stream ends.
    int wait()
    {
        if (pipe_ >= 0)
            ::close(pipe_);
        pipe_ = -1;
        int status = 0;
        while (process_ > 0 && ::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        process_ = -1;
        return status;
    }

    std::vector<std::string> words_;
    int pipe_ = -1;
    pid_t process_ = -1;
};

} // namespace

std::unique_ptr<Sink> write_pictures(const std::string& pattern)
{
    return std::make_unique<Pictures>(pattern);
}
std::unique_ptr<Sink> write_stream(const std::string& file) { return std::make_unique<Stream>(file); }
std::unique_ptr<Sink> show_in_viewer(uint32_t format, Size size, int32_t rate)
{
    return std::make_unique<Viewer>(format, size, rate);
}

} // namespace tool

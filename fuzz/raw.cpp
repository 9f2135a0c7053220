// The tool's reader of raw frames: the options that describe the frame as a user types them, then the file. Whatever
// they are, the frame is read whole or refused.
#include "drawing.h"
#include "failure.h"
#include "formats.h"
#include "input.h"

#include <cstring>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// A file in memory, under a name that can be opened.
class File {
public:
    File(const uint8_t* data, size_t size) : fd_(memfd_create("frame", 0))
    {
        fuzz::require(fd_ >= 0 && write(fd_, data, size) == static_cast<ssize_t>(size), "no file in memory");
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { close(fd_); }
    std::string name() const { return "/proc/self/fd/" + std::to_string(fd_); }

private:
    int fd_;
};

// Up to the next line end, which is skipped.
std::string take_line(const uint8_t*& data, size_t& size)
{
    const auto* end = static_cast<const uint8_t*>(size == 0 ? nullptr : std::memchr(data, '\n', size));
    const size_t length = end == nullptr ? size : static_cast<size_t>(end - data);
    const std::string line(data, data + length);
    const size_t taken = end == nullptr ? length : length + 1;
    data += taken;
    size -= taken;
    return line;
}

} // namespace

// Lines: name of the format, size, stride; then the frame's bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string format = take_line(data, size), frame_size = take_line(data, size),
                      stride = take_line(data, size);
    try {
        tool::Input input;
        input.raw_format = tool::format_named(format);
        input.raw_size = tool::parse_size(frame_size);
        input.raw_stride = stride.empty() ? 0 : tool::parse_integer(stride, 1, 1 << 30);
        const File file(data, size);
        input.file = file.name();
        const tool::Surface surface = input.read_raw();
        fuzz::require(surface.bytes() <= size && std::memcmp(surface.row(0), data, surface.bytes()) == 0,
                      "a frame is not its file's bytes");
        if (surface.bytes() <= 1 << 16)
            input.read();
    } catch (const tool::Failure&) {
    } catch (const tool::BadValue&) {
    }
    return 0;
}

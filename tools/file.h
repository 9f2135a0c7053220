// Files: read into memory, or piece by piece; written beside the final name and renamed when complete.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tool {

// The file's bytes; "-" is standard input. A file of more than `limit` bytes is refused.
std::vector<uint8_t> read_file(const std::string& name, size_t limit);

// A file that is read from its beginning, piece by piece.
class InputFile {
public:
    explicit InputFile(const std::string& name);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();
    // Fills `bytes` as far as the file goes, and returns how far.
    size_t read(std::span<uint8_t> bytes);
    std::optional<int64_t> size() const; // of a regular file

private:
    std::string name_;
    int fd_;
};

// Either the whole file is there after finish(), or what was there before: also when the program is interrupted.
// "-", standard output, and devices and pipes are written directly.
class OutputFile {
public:
    explicit OutputFile(const std::string& name);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();
    void write(std::span<const uint8_t> bytes);
    void finish();

private:
    std::string name_, target_, beside_; // beside_ is empty when written directly
    uint32_t mode_ = 0;                  // permissions of the finished file
    int fd_ = -1;
};

void write_file(const std::string& name, std::span<const uint8_t> bytes);

// How a file is called in messages.
std::string shown(const std::string& name);

} // namespace tool

// Files as a whole: read into memory, written beside the final name and renamed when complete.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tool {

// The file's bytes; "-" is standard input. A file of more than `limit` bytes is refused.
std::vector<uint8_t> read_file(const std::string& name, size_t limit);

// Either the whole file is there afterwards, or what was there before.
void write_file(const std::string& name, std::span<const uint8_t> bytes);

// How a file is called in messages.
std::string shown(const std::string& name);

} // namespace tool

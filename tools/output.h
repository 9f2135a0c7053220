// The file that a surface is written to: its name tells the kind.
#pragma once

#include "surface.h"

#include <cstdio>
#include <string>
#include <vector>

namespace tool {

constexpr const char* output_help =
    "name ending in .png, or in .raw, .yuv, .rgb for the surface's bytes; png:NAME and raw:NAME say it for "
    "any name. "
    "- is standard output, raw unless png:- is said. Devices are written directly";

class Output {
public:
    explicit Output(const std::string& name); // a Failure when it tells no kind

    void write(const Surface& surface) const;
    std::vector<uint8_t> encode(const Surface& surface) const; // as the file has it
    bool is_png() const { return png_; }
    const std::string& file() const { return file_; }
    // Where reports go: not into the picture.
    FILE* report() const { return file_ == "-" ? stderr : stdout; }

private:
    bool png_;
    std::string file_;
};

} // namespace tool

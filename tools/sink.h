// Where played frames go, one after the other: numbered pictures, one stream, or the viewer.
#pragma once

#include "parse.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace tool {

class Sink {
public:
    Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink() = default;
    virtual bool write(std::span<const uint8_t> frame) = 0; // false when nobody wants any more
    virtual int finish() { return 0; }                      // exit status of the program
};

// `pattern` has a place for the picture's number, such as frame-%05d.png.
std::unique_ptr<Sink> write_pictures(const std::string& pattern);
std::unique_ptr<Sink> write_stream(const std::string& file);
// Starts vexlor-view with the first frame. It says itself what it does not like; its exit status is then the program's.
std::unique_ptr<Sink> show_in_viewer(uint32_t format, Size size, int32_t rate);

} // namespace tool

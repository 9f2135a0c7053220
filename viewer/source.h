// What is looked at: photographs or a raw stream, carried as a surface of any of the formats.
#pragma once

#include "picture.h"
#include "surface.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace view {

class Source {
public:
    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    virtual ~Source() = default;

    virtual std::string title() const = 0;
    virtual tool::Size size() const = 0;
    virtual uint32_t format() const = 0; // the one that it comes in, or fits it best
    // To the next picture of a stream: whether there was one.
    virtual bool advance() { return false; }
    // To another photograph of a folder: whether there is one.
    virtual bool step(int) { return false; }
    // Get frames ready by a thread, so that advance never waits.
    virtual void read_ahead() {}

    // Another one for every other picture.
    int64_t version() const { return version_; }
    // The current picture as a surface, with colours multiplied by its alpha if so wished. A YUV surface lacks
    // the last column of an odd width. Throws what is wrong with the picture.
    const tool::Surface& carried(uint32_t format, bool multiplied);

protected:
    virtual tool::Picture picture() const = 0;
    virtual const tool::Surface* original() const { return nullptr; }
    void changed()
    {
        cache_.clear();
        ++version_;
    }

private:
    std::map<std::pair<uint32_t, bool>, tool::Surface> cache_;
    int64_t version_ = 0;
};

// One PNG or JPEG file, which must be good, or a folder of them, of which some may be bad.
std::unique_ptr<Source> open_photos(const std::string& name);
// Raw frames without gaps, from a file (again and again) or "-", standard input. The first must be whole.
std::unique_ptr<Source> open_stream(const std::string& name, uint32_t format, tool::Size size);

} // namespace view

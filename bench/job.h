// What is measured: an operation, the scene that it is drawn in, and those who draw it.
#pragma once

#include "picture.h"

#include <functional>
#include <string>
#include <vector>

namespace bench {

enum class Work {
    fill,
    fill_blend,
    copy,
    copy_opaque, // alpha byte 0xFF
    alpha_test,
    over, // by the source's own alpha, straight
    over_premultiplied,
    global,  // blended by one weight; YUV becomes RGB on the way
    convert, // YUV to RGB, or RGB to YUV
    scale,
    scale_over, // scaled, then blended by the premultiplied source's own alpha
};
enum class Filter { nearest, linear, box, catrom, gauss };

// Values that everybody draws with.
constexpr uint32_t fill_color = 0xFF3A6EA5; // A, R, G, B; its low half is the colour of 16-bit pixels
constexpr uint8_t weight = 100;             // of global blends and blended fills, of 255
constexpr uint8_t weight_565 = 12; // as strong in the library's 565 blend, where 31 is whole for red and blue
constexpr uint8_t reference = 128; // the alpha test passes from here on

struct Job {
    const char* name;
    Work work;
    uint32_t from, to;
    Filter filter = Filter::nearest;
    double scale = 1;     // destination to source
    bool both = false;    // measured with interface-like alpha, too
    double tolerance = 6; // how far block means of two who draw the same may lie apart, of 255
    bool own_arithmetic =
        false; // the library's defined result is unlike anybody's: peers are compared among themselves
};
extern const std::vector<Job> jobs;

// The pictures of a job at one size, which is that of the destination. All draw from and into the same memory.
struct Scene {
    Scene(const Job& job, int width, int height, Content content);

    const Job& job;
    Content content;
    Picture source, target, backdrop;

    // Bytes that the operation has to move: each source and destination byte once, and destinations of blends twice.
    size_t bytes() const;
    bool reads_source() const;
    bool reads_target() const;
};

struct Drawing {
    std::string name;
    std::function<void()> draw; // draws the whole scene once; throws when refused
    uint32_t format = 0;        // of the bytes written, where it is not the job's
    std::string differs = {};   // in what the job is another one; such results are not compared
};

struct Peer {
    std::string name, version;
    std::function<std::vector<Drawing>(const Scene&)>
        drawings; // the ways it has of doing the job, often none
};

// The library: first portable, then with SIMD on.
std::vector<Drawing> library_drawings(const Scene& scene);

[[noreturn]] void refuse(const std::string& who, const std::string& why);
// For calls that return 0 when all is well.
inline void demand(bool done, const char* who)
{
    if (!done)
        refuse(who, "refused to draw");
}

} // namespace bench

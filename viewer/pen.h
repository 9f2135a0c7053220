// A pen draws by the library and writes down each call as C, so what the screen shows is what was done.
#pragma once

#include "context.h"
#include "settings.h"
#include "surface.h"

#include <functional>
#include <string>

namespace view {

using Clock = std::function<double()>; // seconds from any start

// A surface and the name that its descriptor has in the calls.
struct Named {
    const char* name;
    const vexlor_surface_desc* desc;
};

class Pen {
public:
    // A context of its own: the rows that an earlier filtered YUV scale left in a cache would show again.
    Pen(bool simd, Clock clock);

    void describe(const Named& surface); // writes its descriptor down
    void filter(uint32_t value);
    void alpha_op(uint32_t value);
    void alpha_src(uint32_t value);
    void alpha_mode(uint32_t value);
    void alpha_dst_op(uint32_t value);
    void alpha_value(uint8_t value);
    void alpha_test(uint32_t test, uint8_t reference);
    // Both throw tool::Refused.
    void scale(const Named& src, const Named& dst, tool::Rect from, tool::Rect to);
    void copy(const Named& src, const Named& dst, tool::Rect from, tool::Point to);

    const std::string& calls() const { return calls_; }
    double seconds() const { return seconds_; } // spent inside scale and copy

private:
    void line(const std::string& text) { calls_ += text + ";\n"; }
    void drawn(const char* operation, double start, uint32_t result);

    tool::Context ctx_;
    Clock clock_;
    std::string calls_;
    double seconds_ = 0;
};

} // namespace view

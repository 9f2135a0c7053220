#include "formats.h"

#include "failure.h"

#include <vexlor.h>

#include <algorithm>
#include <string>

namespace tool {

// SDL2 and pixman name 32-bit layouts from the highest bits of the word down, the reverse of memory order.
const std::array<Format, 7> formats{{
    {"565", VEXLOR_FMT_565, "gggbbbbb rrrrrggg", "rgb565le", "RGB565", "r5g6b5"},
    {"Y8V8Y8U8", VEXLOR_FMT_Y8V8Y8U8, "Y0 V Y1 U", "yvyu422", "YVYU", "-"},
    {"U8Y8V8Y8", VEXLOR_FMT_U8Y8V8Y8, "U Y0 V Y1", "uyvy422", "UYVY", "-"},
    {"X8R8G8B8", VEXLOR_FMT_X8R8G8B8, "X R G B", "0rgb", "BGRX8888", "b8g8r8x8"},
    {"A8R8G8B8", VEXLOR_FMT_A8R8G8B8, "A R G B", "argb", "BGRA8888", "b8g8r8a8"},
    {"B8G8R8X8", VEXLOR_FMT_B8G8R8X8, "B G R X", "bgr0", "XRGB8888", "x8r8g8b8"},
    {"B8G8R8A8", VEXLOR_FMT_B8G8R8A8, "B G R A", "bgra", "ARGB8888", "a8r8g8b8"},
}};

uint32_t format_named(std::string_view name)
{
    const auto found = std::ranges::find(formats, name, &Format::name);
    if (found != formats.end())
        return found->code;
    std::string names;
    for (const Format& format : formats)
        names += (names.empty() ? "" : ", ") + std::string(format.name);
    throw BadValue("no format is called '" + std::string(name) + "'; there are " + names);
}

std::string_view format_name(uint32_t code) { return std::ranges::find(formats, code, &Format::code)->name; }

} // namespace tool

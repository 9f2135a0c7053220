// vexlor formats: the byte-order chart.
#include "../formats.h"

#include "commands.h"

#include <cstdio>

namespace tool {

namespace {

struct FormatsCommand : Command {
    void declare(Options&) override {}

    void run() override
    {
        constexpr const char* line = "%-9s  %-10s  %-17s  %-8s  %-8s  %s\n";
        std::printf(line, "name", "code", "bytes in memory", "ffmpeg", "SDL2", "pixman");
        for (const Format& f : formats) {
            char code[11];
            std::snprintf(code, sizeof code, "0x%08X", f.code);
            std::printf(line, f.name.data(), code, f.bytes.data(), f.ffmpeg.data(), f.sdl.data(),
                        f.pixman.data());
        }
        std::puts(
            "\nThe lowest address comes first. ffmpeg names are values of -pix_fmt; SDL2 names follow\n"
            "SDL_PIXELFORMAT_, pixman names PIXMAN_, both as on little-endian machines. SDL2 also calls\n"
            "XRGB8888 RGB888. The bits of a 565 pixel are r red, g green, b blue, highest first.");
    }
};

} // namespace

const Entry formats_entry{"formats", "Print the byte-order chart of the pixel formats", "  vexlor formats",
                          make_command<FormatsCommand>};

} // namespace tool

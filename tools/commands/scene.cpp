// vexlor scene: maps of an invented planet, for use where no photographs are at hand.
#include "../failure.h"
#include "../file.h"
#include "../planet.h"
#include "commands.h"

#include <cstdio>

namespace tool {

namespace {

struct SceneCommand : Command {
    void declare(Options& options) override
    {
        options.word("!side", night, {"day", "night"}, "which side to draw");
        options.parsed("--size", size, parse_size, "WxH", "size of the map (default: 2048x1024)");
        options.text("!-o,--output", output, "FILE.png", "the picture");
    }

    void run() override
    {
        if (!output.ends_with(".png"))
            throw Failure("--output", "the picture's name must end in .png");
        const Picture map = planet(size.value_or(Size{2048, 1024}), night != 0);
        write_file(output, encode_png(output, map));
        std::printf("%s: generated, %dx%d\n", output.c_str(), map.size.width, map.size.height);
    }

private:
    uint32_t night = 0;
    std::optional<Size> size;
    std::string output;
};

} // namespace

const Entry scene_entry{"scene", "Generate a map of an invented planet, by day or by night",
                        "  vexlor scene day --size 1024x512 -o day.png", make_command<SceneCommand>};

} // namespace tool

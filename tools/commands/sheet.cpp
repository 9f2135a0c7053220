// vexlor sheet: the gallery, labelled pictures of all filters and modes.
#include "../failure.h"
#include "../file.h"
#include "../gallery.h"
#include "../planet.h"
#include "commands.h"
#include "golden/golden.h"

#include <cstdio>
#include <filesystem>

namespace tool {

namespace {

struct SheetCommand : Command {
    void declare(Options& options) override
    {
        options.text("picture", files[0], "PICTURE",
                     "what is drawn: PNG or JPEG (default: a generated planet)");
        options.text("other", files[1], "OTHER", "what is drawn over it (default: that planet's night)");
        options.text("!-o,--output", folder, "FOLDER", "where the pictures go; made where it is missing");
    }

    void run() override
    {
        std::error_code error;
        std::filesystem::create_directories(folder, error);
        if (error)
            throw Failure(folder, error.message());
        constexpr Size size{1024, 512};
        const Picture day = files[0].empty() ? planet(size, false) : read_picture(files[0]);
        const Picture night = files[1].empty() ? planet(size, true) : read_picture(files[1]);
        for (const Plate& plate : gallery(day, night)) {
            const std::string name = folder + "/" + plate.name + ".png";
            write_file(name, encode_png(name, plate.picture, Packing::small));
            std::printf("%s: %s, %dx%d, %s\n", name.c_str(), plate.title.c_str(), plate.picture.size.width,
                        plate.picture.size.height,
                        golden::checksum(plate.picture.pixels.get(), plate.picture.bytes()).c_str());
        }
    }

private:
    std::string files[2], folder;
};

} // namespace

const Entry sheet_entry{"sheet",
                        "Draw the gallery: labelled pictures of all filters and modes, with their checksums",
                        "  vexlor sheet photo.jpg -o gallery", make_command<SheetCommand>};

} // namespace tool

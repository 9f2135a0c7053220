// vexlor diff: where and how far two pictures or raw frames are apart.
#include "../drawing.h"
#include "../failure.h"
#include "../file.h"
#include "../formats.h"
#include "../output.h"
#include "../samples.h"
#include "commands.h"

#include <algorithm>
#include <cstdio>

namespace tool {

namespace {

std::string bytes_of(const Samples& samples, Point at)
{
    std::string text;
    for (size_t c = 0; c < samples.channels.size(); ++c) {
        char byte[4];
        std::snprintf(byte, sizeof byte, "%s%02X", c == 0 ? "" : " ", samples.pixel(at.x, at.y)[c]);
        text += byte;
    }
    return text;
}

struct DiffCommand : Command {
    void declare(Options& options) override
    {
        options.text("!first", files[0], "FIRST", "PNG, JPEG or raw file; - is standard input");
        options.text("!second", files[1], "SECOND", "the other");
        frame.declare_raw(options, "", "a file that is named neither .png nor .jpg");
        options.text("--picture", picture, "FILE.png", "picture of the differences");
        options.number("--amplify", amplify, 1, 255,
                       "times which they show in it (default: the largest shows as 255)");
    }

    void run() override
    {
        if (files[0] == "-" && files[1] == "-")
            throw Failure("second", "standard input can be read only once");
        if (!picture.empty() && !Output(picture).is_png())
            throw Failure("--picture", "its name must end in .png");
        const bool raw = is_raw(files[0]) && is_raw(files[1]);
        const Samples a = read(files[0], raw), b = read(files[1], raw);
        if (a.size.width != b.size.width || a.size.height != b.size.height) {
            std::printf("the sizes differ: %s and %s\n", size_text(a.size.width, a.size.height).c_str(),
                        size_text(b.size.width, b.size.height).c_str());
            status = 1;
            return;
        }
        if (!picture.empty())
            write_file(picture, encode_png(picture, picture_of_differences(a, b, amplify)));
        print(a, b, distance(a, b));
    }

private:
    bool is_raw(const std::string& file) const
    {
        return frame.is_raw() && !file.ends_with(".png") && !file.ends_with(".jpg") &&
               !file.ends_with(".jpeg");
    }

    // Two raw frames are compared as they lie in memory, anything else as pictures.
    Samples read(const std::string& file, bool raw) const
    {
        Input input;
        if (is_raw(file))
            input = frame;
        input.file = file;
        return raw ? samples_of(input.read_raw()) : samples_of(input.read());
    }

    void print(const Samples& a, const Samples& b, const Distance& found)
    {
        const int64_t all = int64_t{a.size.width} * a.size.height;
        if (found.pixels == 0) {
            std::printf("equal: %lld pixels\n", static_cast<long long>(all));
            return;
        }
        status = 1;
        std::string channels;
        for (size_t c = 0; c < a.channels.size(); ++c)
            if (!a.channels[c].empty())
                channels +=
                    (channels.empty() ? "" : ", ") + a.channels[c] + " " + std::to_string(found.largest[c]);
        std::printf("%lld of %lld pixels differ\n", static_cast<long long>(found.pixels),
                    static_cast<long long>(all));
        std::printf("first at %d,%d: %s and %s\n", found.first.x, found.first.y,
                    bytes_of(a, found.first).c_str(), bytes_of(b, found.first).c_str());
        std::printf("largest difference %d (%s)\n", *std::ranges::max_element(found.largest),
                    channels.c_str());
        std::printf("PSNR %.2f dB\n", found.psnr);
    }

    std::string files[2];
    Input frame;
    std::string picture;
    int32_t amplify = 0;
};

} // namespace

const Entry diff_entry{"diff", "Compare two pictures; exit status 0 when they are equal, 1 when they differ",
                       "  vexlor diff small.png other.png --picture differences.png",
                       make_command<DiffCommand>};

} // namespace tool

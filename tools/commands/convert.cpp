// vexlor convert: a whole picture into another format or kind of file.
#include "../conversion.h"
#include "../drawing.h"
#include "../failure.h"
#include "../file.h"
#include "../formats.h"
#include "../output.h"
#include "commands.h"

namespace tool {

namespace {

struct ConvertCommand : Command {
    void declare(Options& options) override
    {
        options.text("!source", source.file, "SOURCE", "PNG, JPEG or raw file; - is standard input");
        source.declare_raw(options, "", "the source");
        options.format(
            "--to", to,
            "format to convert into (default for a .png: the source's own). A picture file is read into "
            "the 32-bit format in the byte order of --to, or straight into 565");
        options.text("!-o,--output", output, "FILE", output_help);
        options.word("--simd", simd, {"none", "sse", "sse2", "all"},
                     "instruction sets to use (default: none)");
    }

    void run() override
    {
        const Output file(output);
        if (to == 0 && !file.is_png() && !source.is_raw())
            throw Failure("--to", "is needed for a raw frame made from a picture file");
        const Surface from = source.is_raw() ? source.read_raw() : read_picture_file();
        Surface converted(from.size(), to != 0 ? to : from.format());
        const std::string pair =
            std::string(format_name(from.format())) + " to " + std::string(format_name(converted.format()));
        const uint32_t result = convert(*new_context(simd), from, converted);
        if (result != VEXLOR_OK)
            throw Refused("convert " + pair, result, conversion_advice);
        file.write(converted);
        std::fprintf(file.report(), "%s: convert, %s, %s\n", output.c_str(), pair.c_str(),
                     size_text(from.size().width, from.size().height).c_str());
    }

private:
    Surface read_picture_file() const
    {
        const Picture picture = source.read();
        const uint32_t format = default_format(to, picture.has_alpha);
        return about(shown(source.file), [&] { return pack(picture, format); });
    }

    Input source;
    uint32_t to = 0;
    std::string output;
    uint32_t simd = simd_none;
};

} // namespace

const Entry convert_entry{
    "convert", "Convert a whole picture into another format, or another kind of file",
    "  vexlor convert photo.jpg --to U8Y8V8Y8 -o frame.yuv\n"
    "  vexlor convert frame.yuv --format U8Y8V8Y8 --size 640x360 --to B8G8R8X8 -o frame.png",
    make_command<ConvertCommand>};

} // namespace tool

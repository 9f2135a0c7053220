// vexlor-view: shows photographs and raw streams by libvexlor, to try and compare its settings.
#include "failure.h"
#include "formats.h"
#include "headless.h"
#include "manual.h"
#include "options.h"
#include "source.h"
#include "sprite.h"
#include "window.h"

#include <cerrno>
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <sstream>

namespace {

using tool::Failure;

struct Arguments {
    std::string file, sprite, completion;
    bool manual = false;
    uint32_t format = 0;
    std::optional<tool::Size> size, window;
    int32_t rate = 0;
    view::Script script;
};

void declare(tool::Options& options, Arguments& a)
{
    options.text("file", a.file, "FILE",
                 "photograph (PNG, JPEG), folder of them, or raw stream; - is standard input");
    options.format("--format", a.format, "the file is a raw stream of frames of this format");
    options.parsed("--size", a.size, tool::parse_size, "WxH", "size of the raw frames, in pixels");
    options.number("--rate", a.rate, 1, 1000, "frames per second of the raw stream (default: as they come)");
    options.text("--sprite", a.sprite, "FILE", "PNG or JPEG to drag about (default: a ball)");
    options.parsed("--window", a.window, tool::parse_size, "WxH", "size of the window (default: 1280x720)");
    options.number("--headless", a.script.frames, 1, 1000000,
                   "draw N frames without a window and print checksums (those of cksum) and times");
    options.text(
        "--keys", a.script.keys, "\"KEY KEY ...\"",
        "with --headless: one before each frame but the first. Names as in the help (key h), and move:X,Y, "
        "press, release, wheel:1, wheel:-1");
    options.text("--screenshot", a.script.screenshot, "FILE.png", "with --headless: the last frame");
    options.flag("--manual", a.manual, "print the manual page, in troff");
    options.text("--completion", a.completion, "bash|zsh", "print the completion of the options for a shell");
}

// False when something about the program itself was asked for, and printed.
bool parse(int argc, char** argv, Arguments& arguments)
{
    CLI::App app(std::string(view::summary) + "\nExit status: 0 done, 2 bad usage or file.");
    app.name("vexlor-view");
    app.set_version_flag("--version", "vexlor-view " VEXLOR_TOOL_VERSION);
    app.footer(std::string("Example:\n") + view::example);
    std::vector<tool::OptionInfo> list;
    tool::Options options(&app, list);
    declare(options, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream help;
        if (app.exit(error, help, help) != 0)
            throw Failure("usage", std::string(error.what()) + " (vexlor-view --help tells more)");
        std::printf("%s\n", help.str().c_str());
        return false;
    }
    if (arguments.manual)
        view::print_manual(list);
    else if (!arguments.completion.empty())
        view::print_completion(arguments.completion, list);
    else if (arguments.file.empty())
        throw Failure("usage", "file is required (vexlor-view --help tells more)");
    else
        return true;
    return false;
}

std::unique_ptr<view::Source> open(const Arguments& a)
{
    if (a.format == 0) {
        if (a.size || a.rate != 0)
            throw Failure("usage", "--size and --rate are for raw streams, and --format is missing");
        return view::open_photos(a.file);
    }
    if (!a.size)
        throw Failure("usage", "a raw stream needs its --size as well as its --format");
    if (tool::is_yuv(a.format) && a.size->width % 2 != 0)
        throw Failure("--size",
                      "frames of " + std::string(tool::format_name(a.format)) + " have an even width");
    return view::open_stream(a.file, a.format, *a.size);
}

void run(const Arguments& a)
{
    const tool::Size window = a.window.value_or(tool::Size{1280, 720});
    if (window.width < 64 || window.height < 64)
        throw Failure("--window", "is at least 64x64");
    if (a.script.frames == 0 && (!a.script.keys.empty() || !a.script.screenshot.empty()))
        throw Failure("usage", "--keys and --screenshot go with --headless");
    const std::unique_ptr<view::Source> source = open(a);
    tool::Picture sprite = a.sprite.empty() ? view::ball(std::min(window.width, window.height) / 4)
                                            : tool::read_picture(a.sprite);
    if (a.script.frames != 0)
        return view::run_headless(*source, std::move(sprite), window, a.script);
    source->read_ahead();
    view::run_window(*source, std::move(sprite), window, a.rate);
}

// Some messages come from libraries and may have several lines.
int complain(std::string message)
{
    for (char& c : message)
        c = static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    std::fprintf(stderr, "vexlor-view: %s\n", message.c_str());
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGXFSZ, SIG_IGN); // a write past the file size limit fails as any other does
    try {
        Arguments arguments;
        if (parse(argc, argv, arguments))
            run(arguments);
        if (std::fflush(stdout) != 0)
            throw Failure("standard output", std::strerror(errno));
        return 0;
    } catch (const std::bad_alloc&) {
        return complain("not enough memory");
    } catch (const std::exception& error) {
        return complain(error.what());
    }
}

// vexlor play: a stream of raw frames, converted and scaled, into numbered pictures, another stream or the viewer. Frames
// are spread over threads that draw with contexts of their own, and written in order.
#include "../conversion.h"
#include "../crew.h"
#include "../drawing.h"
#include "../failure.h"
#include "../file.h"
#include "../formats.h"
#include "../output.h"
#include "../progress.h"
#include "../sink.h"
#include "commands.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>

namespace tool {

namespace {

using Bytes = std::vector<uint8_t>;

// Draws one frame after the other.
struct Player {
    Player(uint32_t simd, Size from, uint32_t from_format, Size to, uint32_t to_format)
        : ctx(new_context(simd)), source(from, from_format), target(to, to_format)
    {}

    Context ctx;
    Surface source, target;
};

struct PlayCommand : Command {
    void declare(Options& options) override
    {
        options.text("!stream", input, "STREAM",
                     "file of raw frames, one behind the other; - is standard input");
        options.format("!--format", from_format, "format of the frames");
        options.parsed("!--frame-size", frame_size, parse_size, "WxH", "size of a frame, in pixels");
        options.format("--to", to_format,
                       "format to convert into (default: B8G8R8X8 for YUV, else the frames' own)");
        options.parsed("--size", size, parse_size, "WxH", "size to scale to (default: the frames' own)");
        options.word("--filter", filter, {"none", "mean", "catrom"}, "filter to scale with (default: mean)");
        options.text(
            "!-o,--output", output, "FILE",
            "numbered pictures, such as frames/%05d.png, or one stream of raw frames: a name ending in .raw, "
            ".yuv or .rgb, raw:NAME, or - for standard output; or view, which shows them in vexlor-view");
        options.number("--skip", skip, 0, INT32_MAX, "frames to leave out at the beginning");
        options.number("--frames", frames, 1, INT32_MAX, "frames to play (default: all)");
        options.number("--rate", rate, 1, 1000,
                       "frames per second, with -o view (default: as fast as they come)");
        options.number("--jobs", jobs, 1, 256, "threads to draw with (default: one per processor)");
        options.word("--simd", simd, {"none", "sse", "sse2", "all"},
                     "instruction sets to use (default: none)");
    }

    void run() override
    {
        const Size from = *frame_size, to = size.value_or(from);
        if (to_format == 0)
            to_format = is_yuv(from_format) ? VEXLOR_FMT_B8G8R8X8 : from_format;
        const Output file(viewed() ? "-" : output);
        const std::unique_ptr<Sink> sink = sink_for(file, to);
        InputFile stream(input);
        Bytes frame(static_cast<size_t>(from.width) * static_cast<size_t>(from.height) *
                    bytes_per_pixel(from_format));
        skip_frames(stream, frame);
        if (jobs == 0)
            jobs = static_cast<int32_t>(std::clamp(std::thread::hardware_concurrency(), 1u, 256u));
        Crew<Player, Bytes> crew(static_cast<size_t>(jobs), [&] {
            return std::make_unique<Player>(simd, from, from_format, to, to_format);
        });
        Progress progress(total(stream, frame.size()));
        const auto start = std::chrono::steady_clock::now();
        std::optional<Failure> truncated; // what came before it is played
        int64_t submitted = 0, done = 0;
        bool wanted = true; // no longer when the viewer was closed
        for (bool more = true; wanted && (more || crew.pending() != 0);) {
            if (more && crew.pending() < 2 * static_cast<size_t>(jobs)) {
                more = next(stream, frame, submitted, truncated);
                if (more)
                    crew.submit([this, frame, &file](Player& player) { return draw(player, frame, file); });
                submitted += more;
            } else {
                wanted = sink->write(crew.take());
                progress.show(done += wanted);
            }
        }
        if (truncated)
            throw Failure(*truncated);
        if (submitted == 0)
            throw Failure(shown(input),
                          skip == 0 ? "is empty" : "has no frame behind those that were skipped");
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        status = sink->finish();
        if (status == 0)
            report(viewed() ? stdout : file.report(), done, from, to, taken.count());
    }

private:
    bool viewed() const { return output == "view"; }

    std::unique_ptr<Sink> sink_for(const Output& file, Size to) const
    {
        if (viewed())
            return show_in_viewer(to_format, to, rate);
        if (rate != 0)
            throw Failure("usage", "--rate goes with -o view");
        return file.is_png() ? write_pictures(file.file()) : write_stream(file.file());
    }

    void report(FILE* to_file, int64_t done, Size from, Size to, double seconds) const
    {
        std::fprintf(to_file, "%s: %lld frames, %s to %s, %s to %s, %.3f s, %.1f frames per second\n",
                     output.c_str(), static_cast<long long>(done), format_name(from_format).data(),
                     format_name(to_format).data(), size_text(from.width, from.height).c_str(),
                     size_text(to.width, to.height).c_str(), seconds,
                     static_cast<double>(done) / std::max(seconds, 1e-9));
    }

    void skip_frames(InputFile& stream, Bytes& frame) const
    {
        for (int32_t i = 0; i < skip; ++i)
            if (!read(stream, frame, i))
                throw Failure(shown(input),
                              "has only " + std::to_string(i) + " frames, all of which were skipped");
    }

    // False behind the last frame that is to be played.
    bool next(InputFile& stream, Bytes& frame, int64_t number, std::optional<Failure>& truncated) const
    {
        try {
            return (frames == 0 || number < frames) && read(stream, frame, skip + number);
        } catch (const Failure& failure) {
            truncated = failure;
            return false;
        }
    }

    // False at the end of the stream; a Failure when it ends inside the frame.
    bool read(InputFile& stream, Bytes& frame, int64_t number) const
    {
        const size_t got = stream.read(frame);
        if (got != 0 && got != frame.size())
            throw Failure(shown(input), "ends inside frame " + std::to_string(number) + ", behind " +
                                            std::to_string(got) + " of " + std::to_string(frame.size()) +
                                            " bytes");
        return got != 0;
    }

    std::optional<int64_t> total(const InputFile& stream, size_t frame_bytes) const
    {
        const std::optional<int64_t> bytes = stream.size();
        if (!bytes)
            return frames == 0 ? std::nullopt : std::optional<int64_t>(frames);
        const int64_t there = std::max<int64_t>(0, *bytes / static_cast<int64_t>(frame_bytes) - skip);
        return frames == 0 ? there : std::min<int64_t>(there, frames);
    }

    Bytes draw(Player& player, const Bytes& frame, const Output& file) const
    {
        std::memcpy(player.source.row(0), frame.data(), frame.size());
        const Size from = player.source.size(), to = player.target.size();
        const bool scaled = from.width != to.width || from.height != to.height;
        uint32_t result = VEXLOR_OK;
        if (scaled) {
            vexlor_context_set_filter(player.ctx.get(), filter);
            std::memset(player.target.row(0), 0, player.target.bytes()); // an odd last column is left alone
            result = vexlor_scale(player.ctx.get(), player.source.desc(), player.target.desc(), 0, 0,
                                  from.width, from.height, 0, 0, to.width, to.height);
        } else {
            result = convert(*player.ctx, player.source, player.target);
        }
        if (result != VEXLOR_OK)
            throw Refused("play " + std::string(format_name(from_format)) + " to " +
                              std::string(format_name(to_format)),
                          result, result == VEXLOR_NOT_CONVERTIBLE ? conversion_advice : "");
        return file.encode(player.target);
    }

    std::string input, output;
    uint32_t from_format = 0, to_format = 0;
    std::optional<Size> frame_size, size;
    uint32_t filter = VEXLOR_FILTER_MEAN;
    int32_t skip = 0, frames = 0, rate = 0, jobs = 0;
    uint32_t simd = simd_none;
};

} // namespace

const Entry play_entry{
    "play", "Convert and scale a stream of raw frames into numbered pictures, another stream or the viewer",
    "  ffmpeg -i film.mp4 -pix_fmt uyvy422 -f rawvideo - |\n"
    "    vexlor play - --format U8Y8V8Y8 --frame-size 1280x720 --size 640x360 -o frames/%05d.png\n"
    "  vexlor play frames.yuv --format U8Y8V8Y8 --frame-size 1280x720 --size 640x360 --rate 25 -o view",
    make_command<PlayCommand>};

} // namespace tool

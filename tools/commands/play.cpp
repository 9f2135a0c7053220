// vexlor play: a stream of raw frames, converted and scaled, into numbered pictures or another stream. Frames are spread
// over threads that draw with contexts of their own, and written in order.
#include "../conversion.h"
#include "../crew.h"
#include "../drawing.h"
#include "../failure.h"
#include "../file.h"
#include "../formats.h"
#include "../output.h"
#include "../progress.h"
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

// A name with a place for the frame's number, such as frame-%05d.png.
class NumberedName {
public:
    explicit NumberedName(const std::string& pattern)
    {
        const size_t start = pattern.find('%'), end = pattern.find('d', start);
        if (start == std::string::npos || end == std::string::npos ||
            pattern.find('%', start + 1) != std::string::npos || end - start > 4)
            throw Failure(pattern,
                          "pictures need a place for their number in the name, such as frame-%05d.png");
        const std::string digits = pattern.substr(start + 1, end - start - 1);
        digits_ = digits.empty() ? 1 : about(pattern, [&] { return parse_integer(digits, 1, 20); });
        before_ = pattern.substr(0, start);
        behind_ = pattern.substr(end + 1);
    }
    std::string of(int64_t number) const
    {
        const std::string text = std::to_string(number);
        const size_t zeros = std::max<size_t>(static_cast<size_t>(digits_), text.size()) - text.size();
        return before_ + std::string(zeros, '0') + text + behind_;
    }

private:
    std::string before_, behind_;
    int32_t digits_ = 1;
};

// Where drawn frames go: one stream into one file, or pictures, which are files of their own.
class Sink {
public:
    explicit Sink(const Output& output) : file_(output.file())
    {
        if (output.is_png())
            names_.emplace(file_);
    }
    void write(const Bytes& frame)
    {
        if (names_) {
            write_file(names_->of(written_), frame);
        } else {
            if (!whole_)
                whole_.emplace(file_);
            whole_->write(frame);
        }
        ++written_;
    }
    void finish()
    {
        if (whole_)
            whole_->finish();
    }
    int64_t written() const { return written_; }

private:
    std::string file_;
    std::optional<NumberedName> names_;
    std::optional<OutputFile> whole_;
    int64_t written_ = 0;
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
            ".yuv or .rgb, raw:NAME, or - for standard output");
        options.number("--skip", skip, 0, INT32_MAX, "frames to leave out at the beginning");
        options.number("--frames", frames, 1, INT32_MAX, "frames to play (default: all)");
        options.number("--jobs", jobs, 1, 256, "threads to draw with (default: one per processor)");
        options.word("--simd", simd, {"none", "sse", "sse2", "all"},
                     "instruction sets to use (default: none)");
    }

    void run() override
    {
        const Size from = *frame_size, to = size.value_or(from);
        if (to_format == 0)
            to_format = is_yuv(from_format) ? VEXLOR_FMT_B8G8R8X8 : from_format;
        const Output file(output);
        Sink sink(file);
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
        int64_t submitted = 0;
        for (bool more = true; more || crew.pending() != 0;) {
            if (more && crew.pending() < 2 * static_cast<size_t>(jobs)) {
                more = next(stream, frame, submitted, truncated);
                if (more)
                    crew.submit([this, frame, &file](Player& player) { return draw(player, frame, file); });
                submitted += more;
            } else {
                sink.write(crew.take());
                progress.show(sink.written());
            }
        }
        if (truncated)
            throw Failure(*truncated);
        const int64_t done = sink.written();
        if (done == 0)
            throw Failure(shown(input),
                          skip == 0 ? "is empty" : "has no frame behind those that were skipped");
        sink.finish();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        std::fprintf(file.report(), "%s: %lld frames, %s to %s, %s to %s, %.3f s, %.1f frames per second\n",
                     output.c_str(), static_cast<long long>(done), format_name(from_format).data(),
                     format_name(to_format).data(), size_text(from.width, from.height).c_str(),
                     size_text(to.width, to.height).c_str(), taken.count(),
                     static_cast<double>(done) / std::max(taken.count(), 1e-9));
    }

private:
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
    int32_t skip = 0, frames = 0, jobs = 0;
    uint32_t simd = simd_none;
};

} // namespace

const Entry play_entry{
    "play", "Convert and scale a stream of raw frames into numbered pictures or another stream",
    "  ffmpeg -i film.mp4 -pix_fmt uyvy422 -f rawvideo - |\n"
    "    vexlor play - --format U8Y8V8Y8 --frame-size 1280x720 --size 640x360 -o frames/%05d.png",
    make_command<PlayCommand>};

} // namespace tool

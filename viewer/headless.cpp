#include "headless.h"

#include "failure.h"
#include "file.h"
#include "stage.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <sstream>

namespace view {

namespace {

constexpr std::array<uint32_t, 256> crc_table = [] {
    std::array<uint32_t, 256> table{};
    for (uint32_t i = 0; i < 256; ++i) {
        uint32_t crc = i << 24;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc << 1 ^ (crc >> 31 != 0 ? 0x04C11DB7u : 0);
        table[i] = crc;
    }
    return table;
}();

// As the command cksum gives it for the same bytes in a file.
uint32_t cksum(const tool::Surface& surface)
{
    uint32_t crc = 0;
    const auto add = [&crc](size_t byte) { crc = crc << 8 ^ crc_table[crc >> 24 ^ (byte & 0xFF)]; };
    for (int32_t y = 0; y < surface.size().height; ++y)
        for (size_t i = 0; i < surface.row_bytes(); ++i)
            add(surface.row(y)[i]);
    for (size_t length = surface.bytes(); length != 0; length >>= 8)
        add(length);
    return ~crc;
}

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void report(int32_t frame, const std::string& word, const Stage& stage, double seconds)
{
    std::printf("frame %d, %s:", frame, word.empty() ? "no key" : word.c_str());
    for (size_t i = 0; i < stage.sides.size(); ++i)
        if (stage.model.shows(i))
            std::printf(" target %c %u,", static_cast<char>('A' + i), cksum(stage.sides[i].target()));
    std::printf(" window %u; time in this run %s\n", cksum(stage.canvas.pixels()),
                milliseconds(seconds).c_str());
}

} // namespace

void run_headless(Source& source, tool::Picture sprite, tool::Size window, const Script& script)
{
    std::istringstream text(script.keys);
    std::vector<std::string> words(1); // nothing before the first frame
    for (std::string word; text >> word;)
        words.push_back(word);
    if (words.size() > static_cast<size_t>(script.frames))
        throw tool::Failure("--keys", std::to_string(words.size() - 1) + " keys need at least --headless " +
                                          std::to_string(words.size()));
    double clock = 0;
    Stage stage(source, std::move(sprite), [&clock] { return clock += 1e-3; });
    stage.resize(window);
    double total = 0;
    int32_t frame = 0;
    while (frame < script.frames && !stage.model.quit) {
        const std::string word =
            static_cast<size_t>(frame) < words.size() ? words[static_cast<size_t>(frame)] : "";
        if (!word.empty()) {
            try {
                play(stage.model, word);
            } catch (const tool::BadValue& bad) {
                throw tool::Failure("--keys", bad.what());
            }
        }
        if (frame > 0 && !stage.model.paused)
            source.advance();
        const double start = now();
        stage.draw(true);
        const double taken = now() - start;
        total += taken;
        report(++frame, word, stage, taken);
        if (stage.model.copy_calls)
            std::printf("%s", stage.sides[stage.model.active].calls().c_str());
        stage.model.copy_calls = false;
    }
    std::printf("time in this run: %d frames, %s each\n", frame, milliseconds(total / frame).c_str());
    if (!script.screenshot.empty())
        tool::write_file(script.screenshot,
                         tool::encode_png(script.screenshot, tool::unpack(stage.canvas.pixels())));
}

} // namespace view

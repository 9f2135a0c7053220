// The benchmark program: measures every job at every size and the width curves, and writes what it found.
#include "measure.h"
#include "peers.h"
#include "report.h"
#include "streams.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace bench {
namespace {

struct Options {
    bool quick = false;
    std::string filter, json, table, svg;
};

struct Size {
    int width, height;
};

constexpr const char* usage =
    "usage: vexlor_bench [--quick] [--filter REGEX] [--json FILE] [--table FILE] [--svg DIR]\n"
    "  --quick         256x256 and 1920x1080 only, and less time for each row\n"
    "  --filter REGEX  only operations and row routines whose names match\n"
    "  --json FILE     all figures\n"
    "  --table FILE    the Markdown table, which otherwise goes to standard output\n"
    "  --svg DIR       the charts\n";

// Draws once on the backdrop and looks at the result from afar: a drawing that changes nothing is an error.
std::vector<double> look(const Scene& scene, const Drawing& drawing)
{
    std::memcpy(scene.target.pixels(), scene.backdrop.pixels(), scene.target.bytes());
    drawing.draw();
    if (std::memcmp(scene.target.pixels(), scene.backdrop.pixels(), scene.target.bytes()) == 0)
        refuse(drawing.name, "drew nothing");
    return blocks(scene.target, drawing.format ? drawing.format : scene.job.to);
}

// Two who do the same job leave pictures that look the same, but for rounding and the kernels' small differences. The
// blocks along the edges are left out: what a filter reads beyond a picture is everyone's own affair.
void compare(const Scene& scene, const Drawing& drawing, const std::vector<double>& seen,
             const std::vector<double>& expected)
{
    const bool with_alpha = scene.job.work == Work::copy || scene.job.work == Work::copy_opaque;
    const size_t columns = blocks_across(scene.target), rows = seen.size() / 4 / columns;
    double apart = 0;
    for (size_t i = 0; i < seen.size(); ++i) {
        const size_t column = i / 4 % columns, row = i / 4 / columns;
        const bool edge = column == 0 || column == columns - 1 || row == 0 || row == rows - 1;
        if (!edge && (i % 4 != 3 || with_alpha))
            apart = std::max(apart, std::abs(seen[i] - expected[i]));
    }
    if (apart > scene.job.tolerance)
        refuse(drawing.name, "drew another picture: channels are " + std::to_string(apart) + " apart");
}

Result measure(const Job& job, Size size, Content content, const std::vector<Peer>& all_peers,
               const Effort& effort)
{
    const Scene scene(job, size.width, size.height, content);
    std::vector<Drawing> drawings = library_drawings(scene);
    const size_t first_peer = drawings.size();
    for (const Peer& peer : all_peers)
        std::ranges::move(peer.drawings(scene), std::back_inserter(drawings));
    const size_t first_stream = drawings.size();

    std::vector<double> expected;
    for (size_t i = 0; i < first_stream; ++i) {
        const auto seen = look(scene, drawings[i]);
        if (i == 0 || (i == first_peer && job.own_arithmetic))
            expected = seen;
        else if (drawings[i].differs.empty())
            compare(scene, drawings[i], seen, expected);
    }

    std::ranges::move(stream_drawings(scene), std::back_inserter(drawings));
    std::vector<Contender> contenders;
    for (const Drawing& drawing : drawings)
        contenders.push_back({drawing.draw});
    measure(contenders, effort);

    const auto timing = [&](size_t i) {
        return Timing{drawings[i].name, contenders[i].seconds, drawings[i].differs};
    };
    Result result = {&job, content, size.width, size.height, scene.bytes(), 0, timing(0), timing(1), {}};
    for (size_t i = first_peer; i < first_stream; ++i)
        result.peers.push_back(timing(i));
    result.limit = contenders[first_stream].seconds;
    for (size_t i = first_stream; i < contenders.size(); ++i)
        result.limit = std::min(result.limit, contenders[i].seconds);
    return result;
}

void tell(const Result& result)
{
    std::printf("%-32s %10s %9.3f ms %9.3f ms", result.name().c_str(), result.size().c_str(),
                result.portable.seconds * 1e3, result.simd.seconds * 1e3);
    if (const Timing* peer = result.best_peer())
        std::printf("   %5.2f %5.2f of %s", result.ratio(result.portable), result.ratio(result.simd),
                    peer->who.c_str());
    std::printf("\n");
    std::fflush(stdout);
}

std::string processor()
{
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);)
        if (line.starts_with("model name") && line.find(": ") != std::string::npos)
            return line.substr(line.find(": ") + 2);
    return "unknown";
}

std::string instruction_sets()
{
    std::string sets = "none that this program knows";
#if defined(__x86_64__) || defined(__i386__)
    sets = __builtin_cpu_supports("sse2") ? "SSE2" : "x86";
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        sets += ", AVX2, FMA";
    if (__builtin_cpu_supports("avx512f"))
        sets += ", AVX-512F";
    if (__builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl"))
        sets += "/BW/VL";
    if (__builtin_cpu_supports("avx512vbmi"))
        sets += "/VBMI";
#endif
    return sets;
}

std::string today()
{
    const std::time_t seconds = std::time(nullptr);
    char text[16];
    std::strftime(text, sizeof text, "%Y-%m-%d", std::gmtime(&seconds));
    return text;
}

Report run(const Options& options)
{
    const std::regex filter(options.filter);
    const std::vector<Peer> all_peers = peers();
    Report report;
    report.head = {{"Date", today()},
                   {"Processor", processor() + " (" + instruction_sets() + ")"},
                   {"Compiler", BENCH_COMPILER ", " + std::to_string(8 * sizeof(void*)) + " bits"},
                   {"libvexlor", BENCH_VERSION " (" BENCH_SETS ")"}};
    std::string versions;
    for (const Peer& peer : all_peers)
        versions += (versions.empty() ? "" : ", ") + peer.name + ' ' + peer.version;
    report.head.emplace_back("Peers", versions);
    if (options.quick)
        report.head.emplace_back("Effort", "quick: little time per row, so figures are rough");

    std::vector<Size> sizes = {{256, 256}, {1920, 1080}};
    if (!options.quick)
        sizes.push_back({3840, 2160});
    const Effort effort = options.quick ? Effort{0.3e-3, 4, 0.6} : Effort{1e-3, 7, 2};
    for (const Size size : sizes) {
        for (const Job& job : jobs) {
            if (!std::regex_search(job.name, filter))
                continue;
            for (const Content content : {Content::random, Content::interface}) {
                if (content == Content::interface && !job.both)
                    continue;
                try {
                    report.results.push_back(measure(job, size, content, all_peers, effort));
                } catch (const std::exception& error) {
                    refuse(std::string(job.name) + ": " + error.what(), "the run ends here");
                }
                tell(report.results.back());
            }
        }
    }
    report.curves = width_curves(filter, options.quick);
    return report;
}

void write(const std::filesystem::path& path, const std::string& text)
{
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file)
        throw std::runtime_error(path.string() + ": cannot be written");
}

bool parse(int count, char** words, Options& options)
{
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        std::string* value = word == "--filter"  ? &options.filter
                             : word == "--json"  ? &options.json
                             : word == "--table" ? &options.table
                             : word == "--svg"   ? &options.svg
                                                 : nullptr;
        if (word == "--quick")
            options.quick = true;
        else if (value && i + 1 < count)
            *value = words[++i];
        else
            return false;
    }
    return true;
}

} // namespace
} // namespace bench

int main(int count, char** words)
{
    bench::Options options;
    if (count == 2 && std::strcmp(words[1], "--help") == 0) {
        std::fputs(bench::usage, stdout);
        return 0;
    }
    if (!bench::parse(count, words, options)) {
        std::fputs(bench::usage, stderr);
        return 2;
    }
    try {
        const bench::Report report = bench::run(options);
        if (report.results.empty() && report.curves.empty())
            throw std::runtime_error("nothing matches " + options.filter);
        if (!options.json.empty())
            bench::write(options.json, bench::json(report));
        if (!options.table.empty())
            bench::write(options.table, bench::table(report));
        else
            std::fputs(bench::table(report).c_str(), stdout);
        if (!options.svg.empty())
            for (const auto& [name, text] : bench::charts(report))
                bench::write(std::filesystem::path(options.svg) / name, text);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vexlor_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}

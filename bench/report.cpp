// Figures, JSON and the Markdown table.
#include "report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

namespace bench {
namespace {

template <class... Values> std::string print(const char* format, Values... values)
{
    char text[160];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string quoted(const std::string& text)
{
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    return out + '"';
}

const char* name_of(Content content) { return content == Content::random ? "random" : "interface"; }

template <class List, class Item> std::string joined(const List& list, const char* separator, Item item)
{
    std::string out;
    for (const auto& element : list)
        out += (out.empty() ? "" : separator) + item(element);
    return out;
}

std::string json(const Timing& timing)
{
    return "{\"who\": " + quoted(timing.who) + print(", \"ns\": %.1f", timing.seconds * 1e9) +
           (timing.differs.empty() ? "}" : ", \"differs\": " + quoted(timing.differs) + "}");
}

std::string json(const Summary& summary)
{
    return print("{\"rows\": %d, \"below_1\": %d, \"geometric_mean\": %.3f}", summary.rows, summary.below,
                 summary.mean);
}

std::string json(const Result& r)
{
    std::string out = "{\"operation\": " + quoted(r.job->name) + ", \"content\": \"" + name_of(r.content) +
                      '"' +
                      print(", \"width\": %d, \"height\": %d, \"bytes\": %zu, \"limit_ns\": %.1f", r.width,
                            r.height, r.bytes, r.limit * 1e9);
    out +=
        ",\n     \"portable\": " + json(r.portable) + ", \"simd\": " + json(r.simd) +
        print(",\n     \"share_portable\": %.4f, \"share_simd\": %.4f", r.share(r.portable), r.share(r.simd));
    if (r.best_peer())
        out +=
            ", \"best_peer\": " + quoted(r.best_peer()->who) +
            print(", \"ratio_portable\": %.4f, \"ratio_simd\": %.4f", r.ratio(r.portable), r.ratio(r.simd));
    return out + ",\n     \"peers\": [" + joined(r.peers, ", ", [](const Timing& t) { return json(t); }) +
           "]}";
}

std::string json(const Curve::Worst& worst)
{
    return print("{\"width\": %d, \"ratio\": %.3f}", worst.width, worst.ratio);
}

std::string json(const Curve& curve)
{
    return "{\"family\": " + quoted(curve.family) +
           ", \"against_neighbours\": " + json(curve.against_neighbours()) +
           ", \"against_blocks\": " + json(curve.against_blocks()) + ",\n     \"ns_per_call\": [" +
           joined(curve.seconds, ", ", [](double s) { return print("%.2f", s * 1e9); }) + "]}";
}

std::string time(double seconds)
{
    return seconds < 1e-3 ? print("%.1f µs", seconds * 1e6) : print("%.2f ms", seconds * 1e3);
}

std::string row(const Result& r)
{
    const Timing* peer = r.best_peer();
    const auto ratio = [&](const Timing& t) { return peer ? print("%.2f", r.ratio(t)) : "-"; };
    return "| " + r.name() + " | " + time(r.portable.seconds) + " | " + time(r.simd.seconds) + " | " +
           (peer ? time(peer->seconds) + " | " + peer->who : "- | -") +
           (peer && !peer->differs.empty() ? " (1)" : "") + " | " + ratio(r.portable) + " | " +
           ratio(r.simd) + " | " +
           print("%.0f %% | %.0f %% | %.1f |\n", r.share(r.portable) * 100, r.share(r.simd) * 100,
                 static_cast<double>(r.bytes) / r.limit / 1e9);
}

std::string curve_rows(const std::vector<Curve>& curves)
{
    std::string out;
    for (const Curve& curve : curves) {
        const Curve::Worst step = curve.against_neighbours(), tail = curve.against_blocks();
        out += "| " + curve.family +
               print(" | %.2f | %d | %.2f | %d |", step.ratio, step.width, tail.ratio, tail.width) +
               print(" %.2f |\n", curve.seconds[127] / 128 * 1e9);
    }
    return out;
}

} // namespace

const Timing* Result::best_peer() const
{
    const auto best = std::min_element(
        peers.begin(), peers.end(), [](const Timing& a, const Timing& b) { return a.seconds < b.seconds; });
    return best == peers.end() ? nullptr : &*best;
}

double Result::ratio(const Timing& library) const
{
    const Timing* peer = best_peer();
    return peer ? peer->seconds / library.seconds : 0;
}

std::string Result::name() const
{
    return job->both ? std::string(job->name) + ", " + name_of(content) : job->name;
}

Summary Report::summary(Timing Result::*library) const
{
    Summary summary = {0, 0, 0};
    double logs = 0;
    for (const Result& result : results) {
        if (!result.best_peer())
            continue;
        const double ratio = result.ratio(result.*library);
        ++summary.rows;
        summary.below += ratio < 1;
        logs += std::log(ratio);
    }
    if (summary.rows)
        summary.mean = std::exp(logs / summary.rows);
    return summary;
}

const Curve* Report::worst_curve() const
{
    const auto worst = std::max_element(curves.begin(), curves.end(), [](const Curve& a, const Curve& b) {
        return a.against_neighbours().ratio < b.against_neighbours().ratio;
    });
    return worst == curves.end() ? nullptr : &*worst;
}

std::vector<std::string> Report::sizes() const
{
    std::vector<std::string> sizes;
    for (const Result& result : results)
        if (std::find(sizes.begin(), sizes.end(), result.size()) == sizes.end())
            sizes.push_back(result.size());
    return sizes;
}

std::string json(const Report& report)
{
    const auto head = [](const auto& line) { return quoted(line.first) + ": " + quoted(line.second); };
    const auto item = [](const auto& value) { return "    " + json(value); };
    const Curve* worst = report.worst_curve();
    return "{\n  \"head\": {" + joined(report.head, ", ", head) +
           "},\n  \"summary\": {\"portable\": " + json(report.summary(&Result::portable)) +
           ", \"simd\": " + json(report.summary(&Result::simd)) +
           (worst ? ", \"widths\": {\"family\": " + quoted(worst->family) +
                        ", \"against_neighbours\": " + json(worst->against_neighbours()) + '}'
                  : "") +
           "},\n  \"rows\": [\n" + joined(report.results, ",\n", item) + "\n  ],\n  \"widths\": [\n" +
           joined(report.curves, ",\n", item) + "\n  ]\n}\n";
}

std::string table(const Report& report)
{
    std::string out = "# Speed\n\n";
    for (const auto& [name, value] : report.head)
        out += "- " + name + ": " + value + '\n';
    out +=
        "\nOne thread; everyone takes turns in one run, and the least time of each counts.\n"
        "Sizes are the destination's. Ratio: time of the best peer by the library's time, so above 1 the\n"
        "library is ahead. Share: of the speed at which plain loops move the bytes that the operation must\n"
        "move (last column, GB/s).\n";
    for (const auto& [name, library] :
         {std::pair{"portable", &Result::portable}, {"SIMD on", &Result::simd}}) {
        const Summary s = report.summary(library);
        out += print("\n- %s: geometric mean of the ratios %.2f over %d rows, %d of them below 1.0", name,
                     s.mean, s.rows, s.below);
    }
    if (const Curve* worst = report.worst_curve())
        out += print("\n- widths: at most %.2f times the line through the widths beside it (%s at %d)",
                     worst->against_neighbours().ratio, worst->family.c_str(),
                     worst->against_neighbours().width);
    out += '\n';
    for (const std::string& size : report.sizes()) {
        out += "\n## " + size +
               "\n\n| operation | portable | SIMD on | best peer | who | ratio portable | ratio SIMD "
               "| share portable | share SIMD | limit |\n"
               "| --- | ---: | ---: | ---: | --- | ---: | ---: | ---: | ---: | ---: |\n";
        for (const Result& result : report.results)
            if (result.size() == size)
                out += row(result);
    }
    std::set<std::string> notes;
    for (const Result& result : report.results)
        for (const Timing& peer : result.peers)
            if (!peer.differs.empty())
                notes.insert(peer.who + ' ' + peer.differs);
    if (!notes.empty())
        out += "\n(1) " + joined(notes, "; ", [](const std::string& note) { return note; }) + '\n';
    if (!report.curves.empty())
        out +=
            "\n## Widths 1 to 130\n\nCost of one call against the line through the widths beside it (the "
            "pairs "
            "beside it, where pixels\ngo in pairs), and against the line through the multiples of 32 around "
            "it: the largest ratio, and at\nwhich width.\n\n"
            "| row routine | beside | at | blocks | at | ns per pixel at 128 |\n"
            "| --- | ---: | ---: | ---: | ---: | ---: |\n" +
            curve_rows(report.curves);
    return out;
}

} // namespace bench

// What a run found, and the forms in which it is told.
#pragma once

#include "job.h"
#include "widths.h"

#include <string>
#include <vector>

namespace bench {

struct Timing {
    std::string who;
    double seconds; // of one drawing
    std::string differs;
};

struct Result {
    const Job* job;
    Content content;
    int width, height; // of the destination
    size_t bytes;      // that have to move
    double limit;      // seconds that plain loops take to move as many
    Timing portable, simd;
    std::vector<Timing> peers;

    const Timing* best_peer() const; // null without a peer
    // How many times as fast as the best peer; 0 without one.
    double ratio(const Timing& library) const;
    double share(const Timing& library) const { return limit / library.seconds; }
    std::string size() const { return std::to_string(width) + 'x' + std::to_string(height); }
    std::string name() const; // operation, and content where both are measured
};

struct Summary {
    int rows, below; // rows with a peer; how many of them have a ratio below 1
    double mean;     // geometric, of the ratios
};

struct Report {
    // Name and value, in order: processor, instruction sets, compiler, versions, date.
    std::vector<std::pair<std::string, std::string>> head;
    std::vector<Result> results;
    std::vector<Curve> curves;

    Summary summary(Timing Result::*library) const;
    const Curve*
    worst_curve() const; // with the width that costs most against its neighbours; null without curves
    std::vector<std::string> sizes() const; // in the order of the results
};

std::string json(const Report& report);
std::string table(const Report& report); // Markdown
// Charts as SVG, each a file name and its text: ratio and share for every size, and the width curves.
std::vector<std::pair<std::string, std::string>> charts(const Report& report);

} // namespace bench

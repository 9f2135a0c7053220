// The width curve: what a row routine costs at each width from 1 to 130 pixels. A width that costs more than its
// neighbours let expect shows a slow head or tail.
#pragma once

#include <regex>
#include <string>
#include <vector>

namespace bench {

struct Curve {
    std::string family;
    int unit; // 2 where rows are drawn in pairs of pixels: odd widths cost what the one below costs
    std::vector<double> seconds; // of one call, at widths 1, 2, ...

    // The largest ratio of a width's cost to the straight line through the widths one unit beside it.
    struct Worst {
        int width;
        double ratio;
    };
    Worst against_neighbours() const;
    // The same against the line through the multiples of 32 around it, from 32 on: what tails cost as a whole.
    Worst against_blocks() const;
};

constexpr int widest = 130;

// The curves of all families whose names match. Quick: fewer rounds.
std::vector<Curve> width_curves(const std::regex& filter, bool quick);

} // namespace bench

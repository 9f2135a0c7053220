// Times contenders against each other: they take turns, in another order in each round, and the least time of each counts.
// On a machine with other work to do, that is the time that comes nearest to the work itself, and what slows the machine
// for a while slows all of them.
#pragma once

#include <functional>
#include <vector>

namespace bench {

struct Effort {
    double turn;    // seconds that a contender draws for at a time, at least one drawing
    int rounds;     // turns that each gets at least
    double seconds; // for all contenders together, as long as everyone had its rounds
};

struct Contender {
    std::function<void()> draw;
    double seconds = 0; // of one drawing; set by measure
};

void measure(std::vector<Contender>& contenders, const Effort& effort);

// Seconds on a clock that only ever moves forward.
double now();

} // namespace bench

// The interleaved clock.
#include "measure.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <numeric>
#include <random>

namespace bench {

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void measure(std::vector<Contender>& contenders, const Effort& effort)
{
    // The second of two drawings tells how many fill a turn: the first finds caches and branch predictors cold.
    std::vector<long> calls;
    for (Contender& contender : contenders) {
        contender.draw();
        const double start = now();
        contender.draw();
        const double once = std::max(now() - start, 1e-8);
        calls.push_back(std::clamp(static_cast<long>(effort.turn / once), 1L, 1000000L));
        contender.seconds = std::numeric_limits<double>::infinity();
    }
    // A turn finds in the caches what the one before left there, even behind its first, untimed drawing: loops that go past
    // the caches cost their follower a third. So nobody follows the same one in every round.
    std::vector<size_t> order(contenders.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::mt19937 random;
    const double deadline = now() + effort.seconds;
    for (int round = 0; round < effort.rounds || now() < deadline; ++round) {
        std::ranges::shuffle(order, random);
        for (const size_t i : order) {
            contenders[i].draw();
            const double start = now();
            for (long n = calls[i]; n > 0; --n)
                contenders[i].draw();
            const double mean = (now() - start) / static_cast<double>(calls[i]);
            contenders[i].seconds = std::min(contenders[i].seconds, mean);
        }
    }
}

} // namespace bench

// The machine's limit: plain loops that move as many bytes as an operation must, and do nothing else.
#pragma once

#include "job.h"

namespace bench {

// Loops that read the scene's source and write its target (a fill writes alone, a blend reads the target, too): with
// ordinary stores, and with stores past the caches where the processor has them. The faster one is the limit.
std::vector<Drawing> stream_drawings(const Scene& scene);

} // namespace bench

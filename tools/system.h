// What there is to say about this build and this machine.
#pragma once

#include <string>

namespace tool {

// The instruction sets that row kernels were built for and this processor has, the one that serves first.
std::string kernel_sets();
// What switching SIMD on finds: "SSE, SSE2".
std::string simd_sets();
std::string compiler();

} // namespace tool

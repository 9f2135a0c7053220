// What the processor can do.
#pragma once

#include "base.h"

namespace vexlor {

// Bits of the flags word, as the system page has them.
constexpr u32 flag_sse = 0x800;
constexpr u32 flag_sse2 = 0x8000;

// Read anew at every call.
u32 processor_flags();

} // namespace vexlor

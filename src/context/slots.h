// Which routine sits in which slot of a context.
#pragma once

#include "base.h"

namespace vexlor {

// Fills every routine slot for a processor with these flags (context/processor.h): the portable routines,
// then those of the instruction sets that it has. State fields and cache stay.
void install_routines(vexlor_context& context, u32 flags);

} // namespace vexlor

// Whole surfaces converted by the library's own routines.
#pragma once

#include "surface.h"

#include <vexlor.h>

namespace tool {

// Converts pixels between surfaces of one size: by vexlor_copy or, into YUV, by the row converters. Where a source
// without alpha becomes one with alpha, it is 255. Returns a result code.
uint32_t convert(vexlor_context& ctx, const Surface& from, Surface& to);

// What converts into what, for those who were refused.
extern const char* const conversion_advice;

} // namespace tool

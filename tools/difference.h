// How far two surfaces of the same size and format are apart.
#pragma once

#include "surface.h"

#include <string>

namespace tool {

// "equal bytes", or the number of differing bytes and the largest difference; for 32-bit pixels the alpha or
// X bytes apart from the others.
std::string difference(const Surface& a, const Surface& b);

} // namespace tool

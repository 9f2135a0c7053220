// Maps of an invented planet by day and by night, for use where no photographs are at hand.
#pragma once

#include "picture.h"

namespace tool {

Picture planet(Size size, bool night);

} // namespace tool

// The window: SDL hands over keys and pointer, and shows the finished picture.
#pragma once

#include "picture.h"
#include "source.h"

namespace view {

// rate: frames per second of a stream; 0: as fast as it comes and the screen shows it.
void run_window(Source& source, tool::Picture sprite, tool::Size window, int32_t rate);

} // namespace view

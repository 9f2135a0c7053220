// A run without a window: scripted keys, one line of checksums and time per frame.
#pragma once

#include "source.h"

#include <string>

namespace view {

struct Script {
    int32_t frames = 0;
    std::string keys;       // words separated by spaces; each frame but the first is drawn after one of them
    std::string screenshot; // PNG of the last frame
};

// Checksums are those of cksum: of the targets' bytes and of the window's. They repeat from run to run: the
// times shown in the window come from a clock that goes on by a millisecond whenever it is asked.
void run_headless(Source& source, tool::Picture sprite, tool::Size window, const Script& script);

} // namespace view

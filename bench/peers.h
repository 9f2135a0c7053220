// The peers that this build found, and parts that several of them use.
#pragma once

#include "job.h"

#include <algorithm>
#include <vector>

namespace bench {

std::vector<Peer> peers();

Peer c_library_peer();
Peer libyuv_peer();
Peer opencv_peer();
Peer pixman_peer();
Peer sdl_peer();
Peer stb_peer();
Peer swscale_peer();

// Between two passes pixels wait in a scratch buffer. Whoever puts a peer's passes together with care works in bands that
// stay in the second cache: of the sizes from 16 KB to whole pictures, this one served libyuv best.
// band(y, rows) is called for as many rows at a time as `stride` allows.
template <class Band> void in_bands(int height, int stride, Band band)
{
    constexpr int scratch = 1024 * 1024;
    const int rows = std::max(scratch / stride & ~1, 2);
    for (int y = 0; y < height; y += rows)
        band(y, std::min(rows, height - y));
}

} // namespace bench

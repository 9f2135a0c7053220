// Lists the peers.
#include "peers.h"

namespace bench {

std::vector<Peer> peers()
{
    std::vector<Peer> all;
    all.push_back(c_library_peer());
#ifdef BENCH_LIBYUV
    all.push_back(libyuv_peer());
#endif
#ifdef BENCH_PIXMAN
    all.push_back(pixman_peer());
#endif
#ifdef BENCH_SDL
    all.push_back(sdl_peer());
#endif
#ifdef BENCH_SWSCALE
    all.push_back(swscale_peer());
#endif
#ifdef BENCH_OPENCV
    all.push_back(opencv_peer());
#endif
#ifdef BENCH_STB
    all.push_back(stb_peer());
#endif
    return all;
}

} // namespace bench

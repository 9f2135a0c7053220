// stb_image_resize: filtered scaling of 8-bit channels, in single precision.
#include "peers.h"

#include <stb_image_resize.h>

namespace bench {
namespace {

std::vector<Drawing> drawings(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    if (scene.job.work != Work::scale || from.format() != VEXLOR_FMT_B8G8R8A8 ||
        scene.job.filter == Filter::nearest)
        return {};
    stbir_filter filter = STBIR_FILTER_TRIANGLE;
    switch (scene.job.filter) {
    case Filter::nearest:
    case Filter::linear: break;
    case Filter::box: filter = STBIR_FILTER_BOX; break;
    case Filter::catrom: filter = STBIR_FILTER_CATMULLROM; break;
    case Filter::gauss:
        filter = STBIR_FILTER_CUBICBSPLINE;
        break; // eight taps at half size, nearest to a Gaussian
    }
    return {{"stb", [&, filter] {
                 demand(stbir_resize(from.pixels(), from.width(), from.height(), from.stride(), to.pixels(),
                                     to.width(), to.height(), to.stride(), STBIR_TYPE_UINT8, 4,
                                     STBIR_ALPHA_CHANNEL_NONE, 0, STBIR_EDGE_CLAMP, STBIR_EDGE_CLAMP, filter,
                                     filter, STBIR_COLORSPACE_LINEAR, nullptr) != 0,
                        "stb");
             }}};
}

} // namespace

Peer stb_peer() { return {"stb_image_resize", "0.97", drawings}; }

} // namespace bench

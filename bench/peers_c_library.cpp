// The C library: memset, wmemset, memcpy.
#include "peers.h"

#include <cstring>
#include <cwchar>
#if __has_include(<gnu/libc-version.h>)
#include <gnu/libc-version.h>
#endif

namespace bench {
namespace {

std::vector<Drawing> drawings(const Scene& scene)
{
    const Picture &to = scene.target, &from = scene.source;
    switch (scene.job.work) {
    case Work::fill: {
        std::vector<Drawing> ways = {{"memset", [&] { std::memset(to.pixels(), 0xA5, to.bytes()); }, 0,
                                      "sets bytes: knows no pattern of 16 or 32 bits"}};
        if (to.format() == VEXLOR_FMT_B8G8R8A8 && sizeof(wchar_t) == sizeof fill_color)
            ways.push_back({"wmemset", [&] {
                                std::wmemset(reinterpret_cast<wchar_t*>(to.pixels()),
                                             static_cast<wchar_t>(fill_color), to.bytes() / sizeof(wchar_t));
                            }});
        return ways;
    }
    case Work::copy: return {{"memcpy", [&] { std::memcpy(to.pixels(), from.pixels(), to.bytes()); }}};
    default: return {};
    }
}

} // namespace

Peer c_library_peer()
{
#ifdef __GLIBC__
    return {"glibc", gnu_get_libc_version(), drawings};
#else
    return {"C library", "", drawings};
#endif
}

} // namespace bench

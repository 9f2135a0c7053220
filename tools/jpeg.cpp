// JPEG pictures by libjpeg-turbo. One that decodes with warnings is refused: part of it would be invented.
#include "failure.h"
#include "picture.h"

#include <turbojpeg.h>

namespace tool {

namespace {

struct Close {
    void operator()(void* decoder) const { tjDestroy(decoder); }
};

[[noreturn]] void fail(const std::string& name, void* decoder)
{
    throw Failure(name, std::string("JPEG is damaged or truncated: ") + tjGetErrorStr2(decoder));
}

} // namespace

bool is_jpeg(std::span<const uint8_t> file)
{
    return file.size() >= 3 && file[0] == 0xFF && file[1] == 0xD8 && file[2] == 0xFF;
}

Picture decode_jpeg(const std::string& name, std::span<const uint8_t> file)
{
    const std::unique_ptr<void, Close> decoder(tjInitDecompress());
    if (!decoder)
        throw Failure(name, "no JPEG decoder could be made");
    Size size;
    int subsampling = 0;
    int colors = 0;
    if (tjDecompressHeader3(decoder.get(), file.data(), file.size(), &size.width, &size.height, &subsampling,
                            &colors) != 0)
        fail(name, decoder.get());
    if (size.width < 1 || size.height < 1) // tables, or their beginning, and nothing behind them
        throw Failure(name, "JPEG is truncated: it holds no picture");
    if (const std::string reason = check_size(size.width, size.height); !reason.empty())
        throw Failure(name, reason);
    Picture picture(size, false);
    if (tjDecompress2(decoder.get(), file.data(), file.size(), picture.pixels.get(), size.width, 0,
                      size.height, TJPF_RGBA,
                      TJFLAG_ACCURATEDCT | TJFLAG_STOPONWARNING | TJFLAG_LIMITSCANS) != 0)
        fail(name, decoder.get());
    return picture;
}

} // namespace tool

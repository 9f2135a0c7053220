#include "output.h"

#include "failure.h"
#include "file.h"

#include <algorithm>
#include <array>

namespace tool {

Output::Output(const std::string& name)
    : png_(name.starts_with("png:") || (name.ends_with(".png") && !name.starts_with("raw:"))),
      file_(name.starts_with("png:") || name.starts_with("raw:") ? name.substr(4) : name)
{
    const auto ends = [this](const char* ending) { return file_.ends_with(ending); };
    if (file_.empty())
        throw Failure("usage", "--output is required");
    if (!png_ && file_ == name && file_ != "-" &&
        !std::ranges::any_of(std::array{".raw", ".yuv", ".rgb"}, ends))
        throw Failure(name, "the output's name must end in .png, or in .raw, .yuv or .rgb for a raw frame; "
                            "png:NAME and raw:NAME say it for any name");
}

std::vector<uint8_t> Output::encode(const Surface& surface) const
{
    if (png_)
        return encode_png(file_, about(file_, [&surface] { return unpack(surface); }));
    std::vector<uint8_t> bytes;
    bytes.reserve(surface.row_bytes() * static_cast<size_t>(surface.size().height));
    for (int32_t y = 0; y < surface.size().height; ++y)
        bytes.insert(bytes.end(), surface.row(y), surface.row(y) + surface.row_bytes());
    return bytes;
}

void Output::write(const Surface& surface) const { write_file(file_, encode(surface)); }

} // namespace tool

// The tool's readers of PNG and JPEG, which tell the two apart by their first bytes: every file becomes a whole picture
// or one failure. What is read is drawn with: packed into each format and back.
#include "picture.h"
#include "failure.h"
#include "formats.h"
#include "input.h"
#include "surface.h"

#include <optional>
#include <png.h>
#include <vector>
#include <zlib.h>

namespace {

// Gives every PNG chunk the checksum that it should have: otherwise hardly a change gets past it.
void mend_checksums(std::vector<uint8_t>& file)
{
    constexpr size_t frame = 12; // length, name and checksum
    for (size_t at = 8; at + frame <= file.size();) {
        const size_t length = png_get_uint_32(&file[at]);
        if (length > file.size() - at - frame)
            return;
        const uLong sum = crc32(0, &file[at + 4], static_cast<uInt>(length + 4));
        png_save_uint_32(&file[at + 8 + length], static_cast<png_uint_32>(sum));
        at += length + frame;
    }
}

void read(std::span<const uint8_t> file)
{
    std::optional<tool::Picture> picture;
    try {
        if (tool::is_png(file))
            picture = tool::decode_png("file", file);
        else if (tool::is_jpeg(file))
            picture = tool::decode_jpeg("file", file);
    } catch (const tool::Failure&) {
    }
    if (!picture || picture->bytes() > 1 << 20)
        return;
    fuzz::require(picture->size.width > 0 && picture->size.height > 0, "a picture without pixels");
    if (!picture->has_alpha)
        for (size_t i = 3; i < picture->bytes(); i += 4)
            fuzz::require(picture->pixels[i] == 255, "a picture without alpha has an alpha");
    for (const uint32_t format :
         {VEXLOR_FMT_565, VEXLOR_FMT_U8Y8V8Y8, VEXLOR_FMT_A8R8G8B8, VEXLOR_FMT_B8G8R8A8}) {
        if (format == VEXLOR_FMT_U8Y8V8Y8 && picture->size.width % 2 != 0)
            continue;
        const tool::Picture back = tool::unpack(tool::pack(*picture, format));
        const bool exact = format == VEXLOR_FMT_A8R8G8B8 || format == VEXLOR_FMT_B8G8R8A8;
        fuzz::require(!exact || std::equal(&back.pixels[0], &back.pixels[back.bytes()], &picture->pixels[0]),
                      "32-bit pixels do not come back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    read({data, size});
    std::vector<uint8_t> mended(data, data + size);
    if (!tool::is_png(mended))
        return 0;
    mend_checksums(mended);
    if (!std::equal(mended.begin(), mended.end(), data))
        read(mended);
    return 0;
}

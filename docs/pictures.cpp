// Draws the pictures of the documentation into a folder, or compares them with those that it holds. They show what the
// library does and not what it should look like: nothing is painted by hand but sources, frames and words.
#include "scenes.h"

#include <cstring>
#include <png.h>

namespace {

struct Image : png_image {
    Image() : png_image{} { version = PNG_IMAGE_VERSION; }
};

// Bytes B, G, R per pixel, rows without gaps.
std::vector<uint8_t> bytes_of(const Page& page)
{
    std::vector<uint8_t> bytes;
    for (int32_t y = 0; y < page.height(); ++y)
        for (int32_t x = 0; x < page.width(); ++x)
            for (uint32_t shift = 0; shift < 24; shift += 8)
                bytes.push_back(static_cast<uint8_t>(page.row(y)[x] >> shift));
    return bytes;
}

bool save(const Page& page, const std::string& name)
{
    Image image;
    image.width = static_cast<uint32_t>(page.width());
    image.height = static_cast<uint32_t>(page.height());
    image.format = PNG_FORMAT_BGR;
    if (png_image_write_to_file(&image, name.c_str(), 0, bytes_of(page).data(), 0, nullptr))
        return true;
    std::cerr << "pictures: " << name << ": " << image.message << '\n';
    return false;
}

bool is_held(const Page& page, const std::string& name)
{
    Image image;
    if (!png_image_begin_read_from_file(&image, name.c_str())) {
        std::cerr << "pictures: " << name << ": " << image.message << '\n';
        return false;
    }
    image.format = PNG_FORMAT_BGR;
    std::vector<uint8_t> bytes(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr) && bytes == bytes_of(page))
        return true;
    std::cerr << "pictures: " << name << " is not what the library draws; docs/draw draws it anew\n";
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    const bool check = argc == 3 && std::strcmp(argv[1], "--check") == 0;
    if (argc != 2 && !check) {
        std::cerr << "usage: pictures [--check] FOLDER\n";
        return 2;
    }
    bool good = true;
    for (const auto list : {guide_pictures(), irregular_pictures()})
        for (const Picture& picture : list) {
            const std::string name = std::string(argv[argc - 1]) + "/" + picture.name + ".png";
            good &= check ? is_held(picture.draw(), name) : save(picture.draw(), name);
        }
    return good ? 0 : 1;
}

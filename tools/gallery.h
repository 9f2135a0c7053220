// The gallery: labelled pictures that show every filter and mode, all drawn by the library.
#pragma once

#include "picture.h"

#include <string>
#include <vector>

namespace tool {

struct Plate {
    std::string name, title;
    Picture picture;
};

// From two pictures of any size: what is drawn, and what is drawn over it.
std::vector<Plate> gallery(const Picture& day, const Picture& night);

} // namespace tool

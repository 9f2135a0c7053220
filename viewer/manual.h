// The viewer's manual page and completion for shells, from what its help shows.
#pragma once

#include "options.h"

#include <string>
#include <vector>

namespace view {

constexpr const char* summary =
    "vexlor-view shows photographs and raw streams, scaled by libvexlor, and compares its settings.";
constexpr const char* example =
    "  ffmpeg -re -i film.mp4 -vf scale=960:540 -pix_fmt uyvy422 -f rawvideo - |\n"
    "      vexlor-view --format U8Y8V8Y8 --size 960x540 -";

void print_manual(const std::vector<tool::OptionInfo>& options);
void print_completion(const std::string& shell, const std::vector<tool::OptionInfo>& options); // bash or zsh

} // namespace view

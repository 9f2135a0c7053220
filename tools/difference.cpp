#include "difference.h"

#include "formats.h"

#include <algorithm>
#include <cstdlib>

namespace tool {

namespace {

struct Count {
    size_t bytes = 0;
    int largest = 0;

    void add(int d)
    {
        bytes += d != 0;
        largest = std::max(largest, d);
    }
    std::string text(const std::string& kind) const
    {
        return std::to_string(bytes) + " " + kind + (bytes == 1 ? " byte differs" : " bytes differ") +
               " by at most " + std::to_string(largest);
    }
};

} // namespace

std::string difference(const Surface& a, const Surface& b)
{
    const bool apart = is_rgb32(a.format());
    const size_t alpha = vexlor_fmt_get_alpha_shift(a.format()) / 8;
    Count alphas, others;
    for (int32_t y = 0; y < a.size().height; ++y)
        for (size_t i = 0; i < a.row_bytes(); ++i)
            (apart && i % 4 == alpha ? alphas : others).add(std::abs(a.row(y)[i] - b.row(y)[i]));
    const std::string kind = has_alpha(a.format()) ? "alpha" : "X";
    if (others.bytes == 0 && alphas.bytes == 0)
        return "equal bytes";
    if (alphas.bytes == 0)
        return others.text(apart ? "colour" : "pixel");
    return (others.bytes == 0 ? "" : others.text("colour") + ", ") + alphas.text(kind);
}

} // namespace tool

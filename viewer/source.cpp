#include "source.h"

#include "alpha.h"
#include "formats.h"

#include <algorithm>

namespace view {

namespace {

tool::Picture without_last_column(const tool::Picture& picture)
{
    tool::Picture result({picture.size.width - 1, picture.size.height}, picture.has_alpha);
    for (int32_t y = 0; y < result.size.height; ++y)
        std::copy_n(picture.row(y), result.row_bytes(), result.row(y));
    return result;
}

} // namespace

const tool::Surface& Source::carried(uint32_t format, bool multiplied)
{
    const tool::Surface* own = original();
    if (own != nullptr && own->format() == format && !multiplied)
        return *own;
    const auto found = cache_.find({format, multiplied});
    if (found != cache_.end())
        return found->second;
    tool::Picture converted = picture();
    if (multiplied)
        tool::premultiply(converted, -1);
    if (tool::is_yuv(format) && converted.size.width % 2 != 0 && converted.size.width > 1)
        converted = without_last_column(converted);
    return cache_.emplace(std::pair{format, multiplied}, tool::pack(converted, format)).first->second;
}

} // namespace view

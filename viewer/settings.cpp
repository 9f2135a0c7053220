#include "settings.h"

#include "formats.h"

#include <algorithm>
#include <array>

namespace view {

namespace {

constexpr std::array targets{VEXLOR_FMT_B8G8R8A8, VEXLOR_FMT_A8R8G8B8, VEXLOR_FMT_565};
constexpr const char* filters[] = {"none", "mean", "catrom"};
constexpr const char* sprite_ops[] = {"off", "written", "alpha test", "by its alpha", "by global"};
constexpr const char* modes[] = {"straight", "premultiplied"};
constexpr const char* dst_ops[] = {"blend", "replace", "one"};

} // namespace

uint32_t target_for(uint32_t source)
{
    if (source == VEXLOR_FMT_565)
        return VEXLOR_FMT_565;
    return tool::is_rgb32(source) ? tool::with_alpha(source, true) : VEXLOR_FMT_B8G8R8A8;
}

uint32_t source_for(bool alpha) { return tool::with_alpha(VEXLOR_FMT_B8G8R8X8, alpha); }

uint32_t sprite_format(uint32_t target)
{
    return target == VEXLOR_FMT_565 ? target : tool::with_alpha(target, true);
}

void next_source(Settings& settings)
{
    const auto& all = tool::formats;
    const auto now = std::ranges::find(all, settings.source, &tool::Format::code);
    settings.source = now + 1 == all.end() ? all.front().code : (now + 1)->code;
    settings.target = target_for(settings.source);
}

void next_target(Settings& settings)
{
    const auto now = std::ranges::find(targets, settings.target);
    settings.target = now + 1 == targets.end() ? targets.front() : *(now + 1);
}

void next_sprite(Settings& settings)
{
    settings.sprite = static_cast<SpriteOp>((static_cast<int>(settings.sprite) + 1) % 5);
}

void change_alpha(Settings& settings, int32_t by)
{
    settings.alpha_value = static_cast<uint8_t>(std::clamp(settings.alpha_value + by, 0, 255));
}

Shown shown(const Settings& s, int which)
{
    switch (which) {
    case 0: return {"c", "source", std::string(tool::format_name(s.source))};
    case 1: return {"o", "target", std::string(tool::format_name(s.target))};
    case 2: return {"f", "filter", filters[s.filter]};
    case 3: return {"b", "picture", s.blended ? "by its alpha" : "written"};
    case 4: return {"a", "sprite", sprite_ops[static_cast<int>(s.sprite)]};
    case 5: return {"u", "colours", s.multiplied ? "multiplied" : "straight"};
    case 6: return {"m", "alpha mode", modes[s.alpha_mode]};
    case 7: return {"d", "dst alpha", dst_ops[s.alpha_dst_op]};
    case 8: return {"g G", "global", std::to_string(s.alpha_value)};
    default: return {"s", "SIMD", s.simd ? "on" : "off"};
    }
}

} // namespace view

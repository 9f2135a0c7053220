// What the keys choose for one side of a comparison, and how each value is called on the screen.
#pragma once

#include <vexlor.h>

#include <cstdint>
#include <string>

namespace view {

enum class SpriteOp : uint8_t { off, opaque, test, pixel, global };

struct Settings {
    uint32_t source = VEXLOR_FMT_B8G8R8X8; // format that the picture is carried as
    uint32_t target = VEXLOR_FMT_B8G8R8A8; // format that is drawn into
    uint32_t filter = VEXLOR_FILTER_MEAN;
    bool blended = false; // the picture by its own alpha over a chequerboard
    SpriteOp sprite = SpriteOp::pixel;
    bool multiplied = false; // colours of picture and sprite come multiplied by their alpha
    uint32_t alpha_mode = VEXLOR_ALPHA_STRAIGHT;
    uint32_t alpha_dst_op = VEXLOR_ALPHA_DST_BLEND;
    uint8_t alpha_value = 255;
    bool simd = false;

    bool operator==(const Settings&) const = default;
};

// The alpha test that the sprite is copied with.
constexpr uint32_t sprite_test = VEXLOR_ALPHA_TEST_GREATER_EQUAL;
constexpr uint8_t sprite_ref = 128;

// A format to draw into that the source's format can become.
uint32_t target_for(uint32_t source);
// A format for a picture without a format of its own.
uint32_t source_for(bool alpha);
// A format with alpha that can be drawn into the target; 565 for 565.
uint32_t sprite_format(uint32_t target);

void next_source(Settings& settings); // the target follows
void next_target(Settings& settings);
void next_sprite(Settings& settings);
void change_alpha(Settings& settings, int32_t by);

constexpr int setting_count = 10;
struct Shown {
    const char* key;
    const char* name;
    std::string value;
};
Shown shown(const Settings& settings, int which);

} // namespace view

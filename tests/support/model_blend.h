// Models of the blends: plain signed arithmetic on single bytes, where the library works on two bytes to a word.
// A unit is the smallest run of pixels that a routine treats at once. Its model changes `d` in place.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>

// Whatever row routines take besides rows and count; each reads its own part.
struct RowArgs {
    uint32_t g = 0, shift = 0, test = 0, reference = 0, color = 0, dst_shift = 0;
    int32_t x = 0, step = 0;               // 16.16: of spans; of filters, the row and the step of rows
    uint32_t width = 0, rows = 0, pad = 0; // of a filter's source; pad: bytes between its rows
    uint32_t twist = 0;                    // where not 0, a filter is given what no surface has
};

namespace model {

using Unit = void (*)(const uint8_t* s, uint8_t* d, const RowArgs& args);
enum class Alpha { blended, one, replaced };

template <class T = uint32_t> T load(const uint8_t* bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}
template <class T> void store(uint8_t* bytes, T value) { std::memcpy(bytes, &value, sizeof value); }
inline uint8_t byte(int value) { return static_cast<uint8_t>(value & 255); }
inline uint32_t raised(uint32_t alpha) { return alpha == 0 ? 0 : alpha + 1; }
inline uint32_t alpha_bits(uint32_t shift) { return static_cast<uint32_t>(uint64_t{0xFF} << shift % 32); }
inline uint32_t alpha_of(uint32_t pixel, uint32_t shift) { return pixel >> shift % 32 & 0xFF; }

inline void straight(const uint8_t* s, uint8_t* d, uint32_t factor)
{
    const int f = static_cast<int>(factor);
    for (int low : {0, 1}) {
        const int high = low + 2;
        const int a = d[low] + ((s[low] - d[low]) * f >> 8);
        // a < 0 happens with factor 257 alone, and then costs the byte two places higher a 256th.
        const int b = d[high] + (((s[high] - d[high]) * f + (a < 0 ? -1 : 0)) >> 8);
        d[low] = byte(a);
        d[high] = byte(b);
    }
}

inline void premultiplied(const uint8_t* s, uint8_t* d, uint32_t factor)
{
    const int f = static_cast<int>(factor);
    for (int low : {0, 1}) {
        const int high = low + 2;
        const int a = s[low] + d[low] - d[low] * f / 256;
        const int borrow = d[high] * f % 256 * 256 > a ? 1 : 0;
        d[high] = byte(s[high] + d[high] - d[high] * f / 256 - borrow);
        d[low] = byte(a);
    }
}

inline void finish(Alpha rule, uint8_t* d, uint32_t shift, uint32_t replacement)
{
    if (rule == Alpha::one)
        store(d, load(d) | alpha_bits(shift));
    if (rule == Alpha::replaced)
        store(d, (load(d) & ~alpha_bits(shift)) | replacement);
}

template <auto Mix, Alpha Rule> void src(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    Mix(s, d, raised(alpha_of(load(s), args.shift)));
    finish(Rule, d, args.shift, load(s) & alpha_bits(args.shift));
}

template <auto Mix, Alpha Rule> void gbl(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    Mix(s, d, Rule == Alpha::blended ? args.g : raised(args.g));
    finish(Rule, d, args.shift, args.g);
}

template <Alpha Rule> void fill(const uint8_t*, uint8_t* d, const RowArgs& args)
{
    uint8_t color[4];
    store(color, args.color);
    straight(color, d, Rule == Alpha::replaced ? raised(args.g) : args.g);
    finish(Rule, d, args.shift, args.g);
}

inline void opaque_aone(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    store(d, load(s) | alpha_bits(args.shift));
}

inline void alpha_test(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    const uint32_t a = alpha_of(load(s), args.shift), r = args.reference;
    const bool passes[] = {a<r, a <= r, a == r, a >= r, a> r, a != r};
    if (args.test < 6 && passes[args.test])
        store(d, load(s));
}

// Weights of 32 and 64 would be complete; larger ones overshoot, and green is cut off on its own while an overshoot
// of blue runs into red.
inline void gbl_565(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    const int from = load<uint16_t>(s), to = load<uint16_t>(d), f = static_cast<int>(args.g);
    const int green = to / 32 % 64 * 32 + ((from / 32 % 64 - to / 32 % 64) * f >> 1);
    const int red_blue =
        to / 2048 * 2048 + to % 32 + (((from / 2048 - to / 2048) * 2048 + from % 32 - to % 32) * f >> 5);
    store(d, static_cast<uint16_t>((red_blue >> 11 & 31) * 2048 + (green >> 5 & 63) * 32 + (red_blue & 31)));
}

inline void without_borrow(const uint8_t* s, uint8_t* d, uint32_t f)
{
    for (int i = 0; i < 4; ++i)
        d[i] = byte(s[i] + d[i] - static_cast<int>(d[i] * f / 256));
}

// Interpolation rows have a shift of their own for the destination's alpha.
template <auto Mix, Alpha Rule> void lerp(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    Mix(s, d, raised(alpha_of(load(s), args.shift)));
    finish(Rule, d, Rule == Alpha::one ? args.dst_shift : args.shift, load(s) & alpha_bits(args.shift));
}
inline uint32_t weight_565(const uint8_t* s, uint32_t shift)
{
    return raised(alpha_of(load<uint16_t>(s), shift));
}
inline void lerp_565(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    gbl_565(s, d, {.g = weight_565(s, args.shift)});
}
// A fraction of a step that is taken off costs the whole step, and what blue falls below 0 costs red.
inline void lerp_pre_565(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    const int w = static_cast<int>(weight_565(s, args.shift));
    const int from = load<uint16_t>(s), to = load<uint16_t>(d);
    const int from_green = from / 32 % 64, to_green = to / 32 % 64;
    const int from_red_blue = from - from_green * 32, to_red_blue = to - to_green * 32;
    const int green = ((from_green + to_green) * 32 - to_green * w / 2) >> 5 & 63;
    const int red_blue = from_red_blue + to_red_blue - to_red_blue * w / 32;
    store(d, static_cast<uint16_t>((red_blue >> 11 & 31) * 2048 + green * 32 + (red_blue & 31)));
}

inline void copy_unit(const uint8_t* s, uint8_t* d, const RowArgs&) { std::memcpy(d, s, 4); }
inline void write_aone(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    store(d, load(s) | alpha_bits(args.dst_shift));
}

} // namespace model

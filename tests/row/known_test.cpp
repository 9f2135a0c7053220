// Pixels that are known beforehand, from which the models could not stray together with the library.
#include "support/rows.h"

namespace {

using Row = void (*)(const vexlor::Kernels* set, Src s, Dst d, uint32_t n, const RowArgs& args);

// Source and destination hold one word again and again; so should the first `words` words of the result.
struct Known {
    Row row;
    uint32_t s, d, g, shift, expected;
    uint32_t n = 1, words = 1, mask = ~0u;
};

constexpr Row fill = call<vexlor_1d_fill_blend_over_8888>,
              fill_one = call<vexlor_1d_fill_blend_over_aone_8888>,
              fill_repl = call<vexlor_1d_fill_blend_over_arepl_8888>;
constexpr Row src = call<vexlor_1d_copy_blend_over_src_8888>,
              src_one = call<vexlor_1d_copy_blend_over_src_aone_8888>,
              src_repl = call<vexlor_1d_copy_blend_over_src_arepl_8888>,
              src_pre = call<vexlor_1d_copy_blend_over_src_pre_8888>;
constexpr Row gbl = call<vexlor_1d_copy_blend_over_gbl_8888>,
              one = call<vexlor_1d_copy_blend_over_gbl_aone_8888>,
              repl = call<vexlor_1d_copy_blend_over_gbl_arepl_8888>,
              pre = call<vexlor_1d_copy_blend_over_gbl_pre_8888>,
              pre_one = call<vexlor_1d_copy_blend_over_gbl_pre_aone_8888>,
              pre_repl = call<vexlor_1d_copy_blend_over_gbl_pre_arepl_8888>,
              pre_sse2 = call<vexlor_1d_copy_blend_over_gbl_pre_8888_sse2>,
              gbl_565 = call<vexlor_1d_copy_blend_over_gbl_565>;
constexpr Row decode = call<vexlor_1d_Y8V8Y8U8_2_X8R8G8B8>,
              decode_sse2 = call<vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2>,
              encode = call<vexlor_1d_X8R8G8B8_2_U8Y8V8Y8>, set = call<vexlor_memset>;

// A pair of one colour, as the bytes Y V Y U lie in memory; a byte of an X8R8G8B8 pixel by its place.
constexpr uint32_t yuv(uint32_t y, uint32_t u, uint32_t v) { return y | v << 8 | y << 16 | u << 24; }
constexpr uint32_t rgb(uint32_t r, uint32_t g, uint32_t b) { return 255 | r << 8 | g << 16 | b << 24; }
constexpr Known channel(uint32_t pair, uint32_t place, uint32_t value)
{
    return {decode_sse2, pair, 0, 0, 0, value << 8 * place, 4, 4, 0xFFu << 8 * place | 0xFF};
}

} // namespace

// clang-format off
constexpr Known known[] = {
    {fill,      0xFFFFFFFF, 0x00000000, 256,  0, 0xFFFFFFFF}, {fill,      0x00000000, 0xFFFFFFFF, 128,  0, 0x7F7F7F7F},
    {fill,      0x80FF4020, 0x10203040, 128,  0, 0x488F3830}, {fill,      0x80402010, 0x11223344,   0,  0, 0x11223344},
    {fill_one,  0x80402010, 0x11223344,   0, 24, 0xFF223344}, {fill_repl, 0x11223344, 0x55667788, 256,  0, 0x10213300},
    {fill_one,  0x80402010, 0x11223344, 129, 24, 0xFF312929}, {fill_repl, 0x80402010, 0x11223344, 129, 24, 0x003129A9},
    {fill_one,  0x80402010, 0x11223344, 129,  0, 0x483129FF}, {fill_one,  0x80402010, 0x11223344, 256, 24, 0xFF402010},
    {fill_repl, 0x80402010, 0x11223344, 256, 24, 0x00401F0F},

    {gbl,       0x80402010, 0x11223344, 129, 24, 0x48312929}, {one,       0x80402010, 0x11223344, 129, 24, 0xFF312929},
    {repl,      0x80402010, 0x11223344, 129, 24, 0x003129A9}, {gbl,       0x80402010, 0x11223344, 129,  0, 0x48312929},
    {one,       0x80402010, 0x11223344, 129,  0, 0x493129FF}, {repl,      0x80402010, 0x11223344, 129,  0, 0x49312981},
    {gbl,       0x80402010, 0x11223344, 256, 24, 0x80402010}, {one,       0x80402010, 0x11223344, 256, 24, 0xFF401F0F},
    {repl,      0x80402010, 0x11223344, 256, 24, 0x00401F0F}, {one,       0x80402010, 0x11223344, 256,  0, 0x80401FFF},
    {repl,      0x80402010, 0x11223344, 256,  0, 0x80401F00}, {gbl,       0x80402010, 0x11223344,   0, 24, 0x11223344},
    {one,       0x80402010, 0x11223344,   0, 24, 0xFF223344}, {repl,      0x80402010, 0x11223344,   0, 24, 0x00223344},
    // Factor 257 borrows across the bytes of a word.
    {one,       0x00000000, 0x00000001, 256, 24, 0xFFFF00FF}, {one,       0x00000000, 0x00000100, 256, 24, 0xFF00FF00},
    {one,       0x10203040, 0x80808080, 256, 24, 0xFF1F2F3F}, {one,       0x00FF0000, 0x00FF0001, 256, 24, 0xFFFE00FF},
    {pre,       0x00000000, 0x01010101,   2,  0, 0x00000101}, {pre,       0x20406080, 0x80808080, 129,  0, 0x5F7FA0C0},
    {pre,       0x00000000, 0xFFFFFFFF, 128,  0, 0x7F7F8080}, {pre,       0x10101010, 0xFF00FF00,   3,  0, 0x0C100D10},
    {pre,       0xC0C0C0C0, 0x80808080,   0,  0, 0x40404040}, {pre_one,   0x10203040, 0x80808080, 256, 24, 0xFF1F3040},
    {pre_repl,  0x10203040, 0x80808080, 256,  0, 0x0F1F3100},
    // Whole blocks of the vector routine lack the borrow.
    {pre_sse2,  0x00000000, 0x01010101,   2,  0, 0x01010101, 4, 4}, {pre_sse2, 0x20406080, 0x80808080, 129, 0, 0x6080A0C0, 4, 4},
    {pre_sse2,  0x00000000, 0xFFFFFFFF, 128,  0, 0x80808080, 4, 4}, {pre_sse2, 0x10101010, 0xFF00FF00,   3, 0, 0x0D100D10, 4, 4},
    {pre_sse2,  0x10101010, 0xFF00FF00,   3,  0, 0x0C100D10},
    // No pixel is skipped: clear and opaque ones go through the same arithmetic.
    {src,       0x00FFFFFF, 0x12345678,   0, 24, 0x12345678}, {src,       0xFF123456, 0x789ABCDE,   0, 24, 0xFF123456},
    {src_repl,  0x00FFFFFF, 0x12345678,   0, 24, 0x00345678}, {src_one,   0x00FFFFFF, 0x12345678,   0, 24, 0xFF345678},
    {src_pre,   0x00C0C0C0, 0x80808080,   0, 24, 0x80404040},

    {gbl_565, 0x0000, 0x0001, 256, 0, 0xF819}, {gbl_565, 0x0000, 0x0020, 256, 0, 0x07A0}, {gbl_565, 0xFFFF, 0x0000, 256, 0, 0xC798},
    {gbl_565, 0x0000, 0x0001,  33, 0, 0xF81F}, {gbl_565, 0xFFFF, 0x0000,  32, 0, 0xFBFF}, {gbl_565, 0xFFFF, 0x0000,  33, 0, 0xFC1F},
    {gbl_565, 0x1234, 0xABCD, 129, 0, 0x4069},

    {decode, yuv(0, 0, 0), 0, 0, 0, rgb(0, 135, 0), 2, 2},         {decode, yuv(255, 255, 255), 0, 0, 0, rgb(255, 125, 255), 2, 2},
    {decode, yuv(0, 255, 0), 0, 0, 0, rgb(0, 36, 237), 2, 2},      {decode, yuv(128, 64, 192), 0, 0, 0, rgb(233, 103, 1), 2, 2},
    {decode, yuv(16, 128, 128), 0, 0, 0, rgb(0, 0, 0), 2, 2},      {decode, yuv(235, 128, 128), 0, 0, 0, rgb(255, 255, 255), 2, 2},
    {decode, yuv(0, 128, 128), 0, 0, 0, rgb(0, 0, 0), 2, 2},
    // What is left of a word is a half, even of one byte.
    {set, 0x11223344, 0x01010101, 0, 0, 0x01013344, 2}, {set, 0x11223344, 0x01010101, 0, 0, 0x01013344, 1}, {set, 0x11223344, 1, 0, 0, 0x11223344, 16, 4},
    // U Y V Y
    {encode, rgb(255, 0, 0), 0, 0, 0, 90 | 82 << 8 | 239 << 16 | 82u << 24, 2}, {encode, rgb(1, 0, 0), 0, 0, 0, 127 | 16 << 8 | 128 << 16 | 16u << 24, 2},
    {encode, rgb(0, 0, 1), 0, 0, 0, 128 | 16 << 8 | 127 << 16 | 16u << 24, 2},  {encode, rgb(255, 255, 255), 0, 0, 0, 128 | 235 << 8 | 128 << 16 | 235u << 24, 2},
    // Floats, where they differ from integers; their blocks have no X byte.
    channel(yuv(5, 128, 152), 1, 26),   channel(yuv(77, 128, 154), 1, 112),  channel(yuv(194, 128, 1), 1, 4),   channel(yuv(215, 128, 12), 1, 46),
    channel(yuv(218, 128, 85), 1, 166), channel(yuv(0, 246, 128), 3, 220),   channel(yuv(83, 212, 128), 3, 248), channel(yuv(200, 146, 128), 3, 250),
    channel(yuv(243, 32, 128), 3, 70),  channel(yuv(0, 18, 150), 2, 7),      channel(yuv(0, 17, 57), 2, 82),    channel(yuv(0, 7, 127), 2, 30),
};
// clang-format on

TEST(Rows, GiveTheKnownPixels)
{
    for (const Known& c : known) {
        alignas(16) uint32_t s[4] = {c.s, c.s, c.s, c.s}, d[4] = {c.d, c.d, c.d, c.d};
        c.row(nullptr, reinterpret_cast<Src>(s), reinterpret_cast<Dst>(d), c.n,
              {.g = c.g, .shift = c.shift, .color = c.s});
        for (uint32_t i = 0; i < 4; ++i)
            EXPECT_EQ(d[i] & c.mask, i < c.words ? c.expected : c.d) << &c - known << ' ' << i;
    }
}

// Refusals of all entry points, by path: the rules of a path stand in the order in which they are checked. A call that
// breaks one rule gets that rule's code; one that breaks two, in every pair, the first one's; and nothing is written.
#include "support/arena.h"
#include "support/model_draw.h"
#include "support/recorder.h"

namespace {

constexpr uint32_t r565 = VEXLOR_FMT_565, yuv = VEXLOR_FMT_Y8V8Y8U8, x8 = VEXLOR_FMT_X8R8G8B8,
                   a8 = VEXLOR_FMT_A8R8G8B8, bgra = VEXLOR_FMT_B8G8R8A8;
constexpr uint32_t narrow_rgb = 0x20000010, unknown_alpha = 0x60000120, narrow_alpha = 0x40000010;

struct Drawing {
    uint32_t filter = 0, op = 0, src = 0, dst_op = 0, mode = 0;
    uint32_t from = a8, to = a8;
    uint32_t src_stride = 64, dst_stride = 64;
    bool no_context = false, no_source = false, no_target = false, one_surface = false;
    int32_t sx = 0, sy = 1, sw = 4, sh = 3, dx = 8, dy = 1, dw = 4, dh = 3;
};

enum class Entry { fill, copy, scale };

struct Rule {
    uint32_t code;
    void (*breaks)(Drawing& d);
};
struct Path {
    Entry entry;
    Drawing works;
    std::vector<Rule> rules; // behind those that all paths of the entry have
};

// clang-format off
const Rule null_context{1, [](Drawing& d) { d.no_context = true; }}, null_source{1, [](Drawing& d) { d.no_source = true; }},
    null_target{1, [](Drawing& d) { d.no_target = true; }};
const std::vector<Rule> target_rectangle = {
    {6, [](Drawing& d) { d.dx = -1; }}, {6, [](Drawing& d) { d.dy = INT32_MIN; }}, {6, [](Drawing& d) { d.dw = 0; d.sw = d.sw == 4 ? 0 : d.sw; }},
    {6, [](Drawing& d) { d.dh = -3; d.sh = d.sh == 3 ? -3 : d.sh; }}};
const std::vector<Rule> rectangles = {
    {6, [](Drawing& d) { d.sx = -1; }}, {6, [](Drawing& d) { d.sy = -1; }}, {6, [](Drawing& d) { d.sx = 15; }}, {6, [](Drawing& d) { d.sy = 6; }},
    {6, [](Drawing& d) { d.dx = 15; }}, {6, [](Drawing& d) { d.dy = 6; }}};
const Rule unknown_op{8, [](Drawing& d) { d.op = 3; }}, unknown_src{8, [](Drawing& d) { d.op = 2; d.src = 2; }},
    unknown_dst_op{8, [](Drawing& d) { d.dst_op = 3; }}, unknown_mode{8, [](Drawing& d) { d.mode = 2; }},
    overlap{7, [](Drawing& d) { d.one_surface = true; d.to = d.from; d.dx = 1; }},
    apart{3, [](Drawing& d) { d.from = d.from == yuv ? a8 : d.from; d.to = bgra; }}, other_family{3, [](Drawing& d) { d.to = VEXLOR_FMT_U8Y8V8Y8; }},
    no_alpha{5, [](Drawing& d) { d.from = x8; d.to = a8; }}, shallow{4, [](Drawing& d) { d.from = d.to = r565; }},
    odd_yuv{3, [](Drawing& d) { d.from = yuv; d.to = x8; d.sw = 3; d.dw = 3; }};

const Path paths[] = {
    {Entry::fill, {}, {unknown_dst_op, {4, [](Drawing& d) { d.to = narrow_rgb; d.dst_op = 2; }}}},
    {Entry::fill, {.op = 2}, {{9, [](Drawing& d) { d.op = 1; }}, {9, [](Drawing& d) { d.op = 3; }}, {9, [](Drawing& d) { d.src = 1; }},
                              {4, [](Drawing& d) { d.to = r565; }}, {4, [](Drawing& d) { d.to = narrow_rgb; }}, unknown_dst_op}},
    {Entry::copy, {}, {unknown_op, apart, other_family, odd_yuv, {2, [](Drawing& d) { d.src_stride = 7; }}, {2, [](Drawing& d) { d.dst_stride = 7; }},
                       unknown_dst_op, {4, [](Drawing& d) { d.from = d.to = narrow_rgb; d.dst_op = 2; }}}},
    {Entry::copy, {.op = 1, .dst_op = 1}, {unknown_op, apart, shallow, no_alpha, overlap, {8, [](Drawing& d) { d.dst_op = 0; }}}},
    {Entry::copy, {.op = 2, .src = 1}, {unknown_op, unknown_src, apart, shallow, no_alpha, overlap, unknown_dst_op, unknown_mode}},
    {Entry::copy, {.op = 2, .from = x8}, {unknown_op, unknown_src, apart, odd_yuv, overlap, {4, [](Drawing& d) { d.from = d.to = yuv; }},
                                          unknown_dst_op, unknown_mode}},
    {Entry::scale, {}, {overlap, unknown_op, unknown_src, apart, odd_yuv, {4, [](Drawing& d) { d.from = d.to = narrow_rgb; }}, unknown_dst_op}},
    {Entry::scale, {.from = yuv, .to = yuv}, {overlap, unknown_op, unknown_src, {6, [](Drawing& d) { d.dw = 1; }}}},
    {Entry::scale, {.filter = 1}, {overlap, unknown_op, unknown_src, apart, odd_yuv, {4, [](Drawing& d) { d.from = d.to = narrow_rgb; }}, unknown_dst_op}},
    {Entry::scale, {.op = 2, .src = 1}, {overlap, unknown_op, unknown_src, apart, shallow, {4, [](Drawing& d) { d.from = d.to = narrow_alpha; }}, no_alpha,
                                         {4, [](Drawing& d) { d.from = unknown_alpha; }}, unknown_dst_op, unknown_mode}},
    {Entry::scale, {.filter = 2, .op = 2, .src = 1}, {overlap, unknown_op, unknown_src, apart, no_alpha, {5, [](Drawing& d) { d.from = d.to = r565; }},
                                                      {4, [](Drawing& d) { d.from = d.to = narrow_alpha; }}, unknown_dst_op, unknown_mode}},
};
// clang-format on

std::vector<Rule> rules_of(const Path& path)
{
    std::vector<Rule> rules = {null_context, null_target};
    if (path.entry != Entry::fill)
        rules.push_back(null_source);
    rules.insert(rules.end(), target_rectangle.begin(), target_rectangle.end());
    if (path.entry != Entry::fill)
        rules.insert(rules.end(), rectangles.begin(), rectangles.end());
    rules.insert(rules.end(), path.rules.begin(), path.rules.end());
    return rules;
}

struct Refusals : testing::Test {
    uint32_t draw(Entry entry, const Drawing& d)
    {
        source.randomize(random);
        target.randomize(random);
        ctx->filter = d.filter;
        ctx->alpha_op = d.op;
        ctx->alpha_src = d.src;
        ctx->alpha_dst_op = d.dst_op;
        ctx->alpha_mode = d.mode;
        ctx->alpha_value = 128;
        ctx->alpha_test = VEXLOR_ALPHA_TEST_NOT_EQUAL;
        const vexlor_surface_desc src{16, 8, d.src_stride, source.place(512, Side::end, 0), d.from};
        vexlor_surface_desc dst{16, 8, d.dst_stride, target.place(512, Side::end, 0), d.to};
        if (d.one_surface)
            dst.pixels = src.pixels;
        const vexlor_surface_desc* const from = d.no_source ? nullptr : &src;
        const vexlor_surface_desc* const to = d.no_target ? nullptr : &dst;
        vexlor_context* const used = d.no_context ? nullptr : ctx.get();
        switch (entry) {
        case Entry::fill: return vexlor_fill(used, to, d.dx, d.dy, d.dw, d.dh);
        case Entry::copy: return vexlor_copy(used, from, to, d.sx, d.sy, d.dx, d.dy, d.dw, d.dh);
        default: return vexlor_scale(used, from, to, d.sx, d.sy, d.sw, d.sh, d.dx, d.dy, d.dw, d.dh);
        }
    }
    bool untouched() const { return source.same() && target.same(); }

    Random random{71};
    Arena source, target;
    Context ctx = make_context();
};

} // namespace

TEST_F(Refusals, GiveTheCodeOfTheFirstBrokenRule)
{
    for (const Path& path : paths) {
        EXPECT_EQ(draw(path.entry, path.works), 0u) << &path - paths;
        EXPECT_FALSE(untouched()) << &path - paths;
        const std::vector<Rule> rules = rules_of(path);
        for (size_t first = 0; first < rules.size(); ++first)
            for (size_t second = first; second < rules.size(); ++second) {
                Drawing d = path.works;
                rules[second].breaks(d);
                rules[first].breaks(d);
                EXPECT_EQ(draw(path.entry, d), rules[first].code)
                    << "path " << &path - paths << ", rules " << first << " and " << second;
                EXPECT_TRUE(untouched())
                    << "path " << &path - paths << ", rules " << first << " and " << second;
            }
    }
}

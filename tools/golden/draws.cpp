// Lines of the three drawing calls, for every combination of formats and settings that is not refused. What is refused
// goes into one line per call: the result codes of all combinations.
#include "golden/parts.h"

#include <functional>
#include <memory>

namespace golden {

namespace {

struct Destroy {
    void operator()(vexlor_context* ctx) const { vexlor_context_destroy(ctx); }
};
using Context = std::unique_ptr<vexlor_context, Destroy>;

Context new_context(bool simd)
{
    vexlor_context* ctx = nullptr;
    vexlor_context_create(&ctx);
    vexlor_context_set_simd(ctx, simd);
    return Context(ctx);
}

struct Format {
    const char* name;
    uint32_t code;
};
constexpr Format formats[] = {
    {"565", VEXLOR_FMT_565},           {"Y8V8Y8U8", VEXLOR_FMT_Y8V8Y8U8}, {"U8Y8V8Y8", VEXLOR_FMT_U8Y8V8Y8},
    {"X8R8G8B8", VEXLOR_FMT_X8R8G8B8}, {"A8R8G8B8", VEXLOR_FMT_A8R8G8B8}, {"B8G8R8X8", VEXLOR_FMT_B8G8R8X8},
    {"B8G8R8A8", VEXLOR_FMT_B8G8R8A8},
};
bool is_rgb32(uint32_t format) { return (format & 0x20000000) != 0; }

constexpr const char* dst_ops[] = {"alpha blended", "alpha replaced", "alpha one"};
constexpr const char* modes[] = {"straight", "premultiplied"};
constexpr const char* filters[] = {"none", "mean", "catrom"};
constexpr const char* tests[] = {"<", "<=", "==", ">=", ">", "!="};
constexpr uint8_t weights[] = {0, 1, 15, 31, 127, 128, 200, 254, 255};

// Two surfaces of random bytes with a few bytes between their rows, and the sum of what has been drawn.
struct Scene {
    static constexpr int32_t width = 88, height = 40;
    static constexpr uint32_t stride = width * 4 + 16;
    static constexpr size_t size = size_t{stride} * height;

    Scene(uint32_t from, uint32_t to) : source(size), target(size)
    {
        source.assign(random_bytes(1));
        vexlor_surface_desc_init(&src, width, height, stride, source.data(), from);
        vexlor_surface_desc_init(&dst, width, height, stride, target.data(), to);
    }
    void draw(const std::function<uint32_t()>& call)
    {
        target.assign(random_bytes(2));
        result = call();
        sum.add(result);
        if (result == VEXLOR_OK)
            target.add_to(sum);
    }

    static const std::vector<uint8_t>& random_bytes(int seed)
    {
        const auto make = [](uint64_t from) {
            std::vector<uint8_t> bytes(size);
            Numbers(from).fill(bytes.data(), size);
            return bytes;
        };
        static const std::vector<uint8_t> first = make(1), second = make(2);
        return seed == 1 ? first : second;
    }

    vexlor_surface_desc src{}, dst{};
    uint32_t result = VEXLOR_OK; // of the last call
    Checksum sum;
    Memory source, target;
};

using State = std::function<void(vexlor_context&)>;
using Draw = std::function<void(vexlor_context&, Scene&)>;

// The lines of one drawing call, and the results of its refused combinations.
class Group {
public:
    Group(std::vector<Line>& lines, const char* call) : lines_(lines), call_(call) {}
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;
    ~Group() { lines_.push_back({std::string(call_) + ": results of what is refused", refused_.text(), ""}); }

    void add(const std::string& operation, uint32_t from, uint32_t to, const State& state, const Draw& draw)
    {
        Line line{std::string(call_) + " " + operation, "", ""};
        for (const bool simd : {false, true}) {
            if (simd && !simd_)
                break;
            const Context ctx = new_context(simd);
            state(*ctx);
            Scene scene(from, to);
            draw(*ctx, scene);
            if (scene.result != VEXLOR_OK) {
                refused_.add(line.operation.data(), line.operation.size());
                refused_.add(scene.result);
                return;
            }
            (simd ? line.on : line.off) = scene.sum.text();
        }
        lines_.push_back(line);
    }

private:
    std::vector<Line>& lines_;
    const char* call_;
    Checksum refused_;
    bool simd_ = has_simd();
};

std::string pair(const Format& from, const Format& to) { return std::string(from.name) + " to " + to.name; }

template <class Each> void each_pair(Each each)
{
    for (const Format& from : formats)
        for (const Format& to : formats)
            each(from, to);
}

void fill_with_weights(vexlor_context& ctx, Scene& scene)
{
    struct Rect {
        int32_t x, y, w, h;
    };
    constexpr Rect rects[] = {{0, 0, 88, 8}, {16, 9, 64, 8}, {3, 18, 41, 9}, {1, 28, 1, 3}, {2, 32, 2, 3}};
    for (const uint32_t color : {0x80FF4001u, 0xFFFFFFFFu, 0x00000000u, 0x12345678u})
        for (const uint8_t weight : weights) {
            ctx.color = color;
            ctx.alpha_value = weight;
            scene.draw([&] {
                uint32_t result = VEXLOR_OK;
                for (const auto& [x, y, w, h] : rects)
                    result = vexlor_fill(&ctx, &scene.dst, x, y, w, h);
                return result;
            });
        }
}

void add_fill(Group& group, const Format& to, uint32_t alpha_op)
{
    const bool rgb = is_rgb32(to.code);
    const std::string name =
        std::string(to.name) + (alpha_op == VEXLOR_ALPHA_OP_NONE ? ", written" : ", blended");
    for (uint32_t dst_op = 0; dst_op < (rgb ? 3u : 1u); ++dst_op)
        group.add(
            name + (rgb ? std::string(", ") + dst_ops[dst_op] : ""), 0, to.code,
            [&](vexlor_context& ctx) {
                ctx.alpha_op = alpha_op;
                ctx.alpha_dst_op = dst_op;
            },
            fill_with_weights);
}

void add_fills(std::vector<Line>& lines)
{
    Group group(lines, "fill");
    for (const Format& to : formats)
        for (const uint32_t alpha_op : {VEXLOR_ALPHA_OP_NONE, VEXLOR_ALPHA_OP_TEST, VEXLOR_ALPHA_OP_BLEND})
            add_fill(group, to, alpha_op);
}

// Rectangles of even width, as YUV asks for; aligned and odd places; short and long rows.
uint32_t copy_rectangles(const vexlor_context& ctx, const Scene& scene)
{
    struct Rect {
        int32_t sx, sy, dx, dy, w, h;
    };
    constexpr Rect rects[] = {
        {0, 0, 0, 0, 88, 8}, {16, 9, 16, 9, 64, 8}, {2, 3, 5, 18, 42, 9}, {4, 20, 8, 30, 2, 3}};
    uint32_t result = VEXLOR_OK;
    for (const auto& [sx, sy, dx, dy, w, h] : rects)
        result = vexlor_copy(&ctx, &scene.src, &scene.dst, sx, sy, dx, dy, w, h);
    return result;
}

void copy_once(vexlor_context& ctx, Scene& scene)
{
    scene.draw([&] { return copy_rectangles(ctx, scene); });
}

void copy_with_weights(vexlor_context& ctx, Scene& scene)
{
    for (const uint8_t weight : weights) {
        ctx.alpha_value = ctx.alpha_ref = weight;
        copy_once(ctx, scene);
    }
}

void add_plain_copies(Group& group, const Format& from, const Format& to)
{
    for (uint32_t dst_op = 0; dst_op < (is_rgb32(from.code) ? 3u : 1u); dst_op += 2)
        group.add(
            pair(from, to) + (dst_op != 0 ? ", alpha one" : ""), from.code, to.code,
            [&](vexlor_context& ctx) { ctx.alpha_dst_op = dst_op; }, copy_once);
}

void add_tested_copies(Group& group, const Format& from, const Format& to)
{
    for (uint32_t test = 0; test < std::size(tests); ++test)
        group.add(
            pair(from, to) + ", alpha " + tests[test], from.code, to.code,
            [&](vexlor_context& ctx) {
                ctx.alpha_op = VEXLOR_ALPHA_OP_TEST;
                ctx.alpha_test = test;
                ctx.alpha_dst_op = VEXLOR_ALPHA_DST_REPLACE;
            },
            copy_with_weights);
}

// Every mode and treatment of the destination's alpha, for 32-bit sources; others have one.
void add_blends(Group& group, const std::string& name, const Format& from, const Format& to,
                const State& state, const Draw& draw)
{
    const bool rgb = is_rgb32(from.code);
    for (uint32_t mode = 0; mode < (rgb ? 2u : 1u); ++mode)
        for (uint32_t dst_op = 0; dst_op < (rgb ? 3u : 1u); ++dst_op)
            group.add(
                name + (rgb ? std::string(", ") + modes[mode] + ", " + dst_ops[dst_op] : ""), from.code,
                to.code,
                [&](vexlor_context& ctx) {
                    state(ctx);
                    ctx.alpha_op = VEXLOR_ALPHA_OP_BLEND;
                    ctx.alpha_mode = mode;
                    ctx.alpha_dst_op = dst_op;
                },
                draw);
}

void add_moves(Group& group)
{
    struct Move {
        const char* name;
        int32_t dx, dy;
    };
    constexpr Move moves[] = {{"left", -6, 0}, {"right", 6, 0}, {"up", 3, -2}, {"down", -3, 2}};
    for (const Format& format : formats)
        for (const auto& [name, dx, dy] : moves)
            group.add(
                std::string(format.name) + " within itself, " + name, format.code, format.code,
                [](vexlor_context&) {},
                [dx = dx, dy = dy](vexlor_context& ctx, Scene& scene) {
                    scene.draw([&] {
                        return vexlor_copy(&ctx, &scene.dst, &scene.dst, 8, 4, 8 + dx, 4 + dy, 60, 30);
                    });
                });
}

void add_copies(std::vector<Line>& lines)
{
    Group group(lines, "copy");
    each_pair([&](const Format& from, const Format& to) {
        add_plain_copies(group, from, to);
        add_tested_copies(group, from, to);
        add_blends(
            group, pair(from, to) + ", blended by weight", from, to,
            [](vexlor_context& ctx) { ctx.alpha_src = VEXLOR_ALPHA_SRC_GLOBAL; }, copy_with_weights);
        add_blends(
            group, pair(from, to) + ", blended by pixel", from, to,
            [](vexlor_context& ctx) { ctx.alpha_src = VEXLOR_ALPHA_SRC_PIXEL; }, copy_once);
    });
    add_moves(group);
}

// Both axes kept, enlarged, one enlarged and one reduced, both reduced; on one context, for the row cache remembers.
uint32_t scale_rectangles(vexlor_context& ctx, const Scene& scene)
{
    struct Rects {
        int32_t sx, sy, sw, sh, dx, dy, dw, dh;
    };
    constexpr Rects cases[] = {
        {0, 0, 40, 5, 0, 0, 40, 5},     {2, 1, 30, 3, 0, 5, 84, 10},  {0, 3, 80, 4, 3, 15, 17, 9},
        {4, 0, 30, 36, 5, 24, 60, 5},   {0, 0, 88, 40, 2, 29, 14, 6}, {2, 2, 6, 30, 40, 29, 3, 7},
        {40, 30, 14, 10, 50, 36, 6, 3},
    };
    uint32_t result = VEXLOR_OK;
    for (const auto& c : cases)
        result = vexlor_scale(&ctx, &scene.src, &scene.dst, c.sx, c.sy, c.sw, c.sh, c.dx, c.dy, c.dw, c.dh);
    return result;
}

void scale_once(vexlor_context& ctx, Scene& scene)
{
    scene.draw([&] { return scale_rectangles(ctx, scene); });
}

void add_scale(Group& group, const Format& from, const Format& to, uint32_t filter)
{
    const std::string name = std::string(filters[filter]) + ", " + pair(from, to);
    for (uint32_t dst_op = 0; dst_op < (is_rgb32(to.code) ? 3u : 1u); dst_op += 2)
        group.add(
            name + (dst_op != 0 ? ", alpha one" : ""), from.code, to.code,
            [&](vexlor_context& ctx) {
                ctx.filter = filter;
                ctx.alpha_dst_op = dst_op;
            },
            scale_once);
    add_blends(
        group, name + ", blended", from, to,
        [&](vexlor_context& ctx) {
            ctx.filter = filter;
            ctx.alpha_src = VEXLOR_ALPHA_SRC_PIXEL;
        },
        scale_once);
}

void add_scales(std::vector<Line>& lines)
{
    Group group(lines, "scale");
    each_pair([&](const Format& from, const Format& to) {
        for (uint32_t filter = 0; filter < std::size(filters); ++filter)
            add_scale(group, from, to, filter);
    });
}

} // namespace

void add_draws(std::vector<Line>& lines)
{
    add_fills(lines);
    add_copies(lines);
    add_scales(lines);
}

} // namespace golden

// Many threads draw at once, each with a context and a target of its own, from the same sources: what each draws is what
// it draws alone.
#include "support/scene.h"

#include <thread>

namespace {

constexpr int threads = 16, rounds = 400 / (VEXLOR_TEST_STEP == 1 ? 1 : 4);
constexpr int32_t size = 48;

struct Sources {
    Sources()
    {
        Random random(81);
        for (std::vector<uint8_t>& s : pixels) {
            s.resize(size * size * 4);
            random.fill(s.data(), s.size());
        }
    }
    std::vector<uint8_t> pixels[7]; // by format
};

// A walk through random calls, which depends on the seed alone. Returns all that was drawn.
std::vector<uint8_t> draw(Sources& sources, uint64_t seed)
{
    Random random(seed);
    const Context ctx = make_context();
    std::vector<uint8_t> target(size * size * 4);
    for (int i = 0; i < rounds; ++i) {
        const uint32_t from = random.below(7), to = random.one_in(2) ? from : random.below(7);
        const auto surface = [](std::vector<uint8_t>& pixels, uint32_t format) {
            return vexlor_surface_desc{size, size, size * ((format & 0x3F) / 8), pixels.data(), format};
        };
        const vexlor_surface_desc src = surface(sources.pixels[from], formats[from]),
                                  dst = surface(target, formats[to]);
        random_state(ctx.get(), random);
        vexlor_context_set_simd(ctx.get(), random.one_in(2));
        vexlor_context_set_filter(ctx.get(), random.below(3));
        const int32_t w = 2 * random.between(1, size / 2), h = random.between(1, size),
                      x = random.between(0, size - w);
        vexlor_fill(ctx.get(), &dst, x, 0, w, 1);
        vexlor_copy(ctx.get(), &src, &dst, 0, 0, x, size - h, w, h);
        vexlor_scale(ctx.get(), &src, &dst, x, 0, w, h, 0, 0, size, size);
    }
    return target;
}

} // namespace

TEST(Threads, DrawFromSharedSourcesAsEachWouldAlone)
{
    Sources sources;
    const Sources before = sources;
    std::vector<uint8_t> drawn[threads];
    std::vector<std::thread> running;
    for (uint64_t i = 0; i < threads; ++i)
        running.emplace_back([&, i] { drawn[i] = draw(sources, i); });
    for (std::thread& thread : running)
        thread.join();
    for (uint64_t i = 0; i < threads; ++i)
        EXPECT_TRUE(drawn[i] == draw(sources, i)) << i;
    for (size_t format = 0; format < 7; ++format)
        EXPECT_TRUE(sources.pixels[format] == before.pixels[format]);
}

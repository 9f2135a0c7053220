// Every allocation of every call fails in turn: nothing is drawn, nothing is lost, and the same objects work afterwards.
// A program of its own, because the library's allocations are led through the functions below.
#include "support/arena.h"
#include "support/recorder.h"

#include <functional>

namespace {

int until_failure = 0; // counts down; 0: none fails
int live = 0;

bool fails() { return until_failure != 0 && --until_failure == 0; }
void* counted(void* memory)
{
    live += memory != nullptr ? 1 : 0;
    return memory;
}

} // namespace

// The linker sends the library's calls here, and these on to the C library's.
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t number, size_t size);
void* __real_memalign(size_t alignment, size_t size);
void __real_free(void* memory);
void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t number, size_t size);
void* __wrap_memalign(size_t alignment, size_t size);
void __wrap_free(void* memory);

void* __wrap_malloc(size_t size) { return fails() ? nullptr : counted(__real_malloc(size)); }
void* __wrap_calloc(size_t number, size_t size)
{
    return fails() ? nullptr : counted(__real_calloc(number, size));
}
void* __wrap_memalign(size_t alignment, size_t size)
{
    return fails() ? nullptr : counted(__real_memalign(alignment, size));
}
void __wrap_free(void* memory)
{
    live -= memory != nullptr ? 1 : 0;
    __real_free(memory);
}
}

TEST(NoMemory, MakesNoObjects)
{
    vexlor_context* context;
    vexlor_surface_desc* desc;
    vexlor_cache* cache;
    for (const int first : {1, 2}) {
        context = reinterpret_cast<vexlor_context*>(&context);
        until_failure = first;
        vexlor_context_create(&context);
        EXPECT_TRUE(context == nullptr && until_failure == 0 && live == 0) << first;
    }
    until_failure = 1;
    desc = reinterpret_cast<vexlor_surface_desc*>(&desc);
    EXPECT_TRUE(vexlor_surface_desc_create(&desc) == nullptr && desc == nullptr && live == 0);
    until_failure = 1;
    cache = reinterpret_cast<vexlor_cache*>(&cache);
    vexlor_cache_init(&cache);
    EXPECT_TRUE(cache == nullptr && until_failure == 0 && live == 0);
}

namespace {

struct Scaling {
    uint32_t from, to, filter, alpha_op;
    int32_t sh, dh;
    int needed; // allocations without which nothing is drawn
    uint32_t alpha_dst_op = 0;
};
// Blended and opaque rows need a row in between; a single row beside the surface's edge needs a strip; YUV needs a row and the cache.
// Rows that filters keep are asked for too, and are not needed.
constexpr Scaling scalings[] = {
    {0x60000020, 0x60000020, 1, 0, 4, 4, 0},
    {0xE0000020, 0xE0000020, 1, 2, 4, 4, 1},
    {0x60000020, 0x20000020, 2, 0, 1, 4, 1},
    {0xE0000020, 0xE0000020, 2, 2, 1, 4, 2},
    {0x10, 0x10, 2, 0, 1, 4, 1},
    {0x10, 0x10, 1, 0, 4, 4, 0},
    {0x50, 0x50, 1, 0, 4, 4, 2},
    {0x80000050, 0xE0000020, 2, 0, 4, 2, 2},
    {0x50, 0x60000020, 1, 0, 4, 8, 2},
    {0x60000020, 0x60000020, 0, 0, 4, 4, 0},
    {0x60000020, 0x60000020, 1, 0, 4, 4, 1, 2},
};

} // namespace

TEST(NoMemory, DrawsAllOrNothing)
{
    Random random(61);
    Arena source, target;
    for (const Scaling& c : scalings) {
        SCOPED_TRACE(&c - scalings);
        const auto row = [](uint32_t format) { return 8 * ((format & 0x3F) / 8); };
        source.randomize(random);
        target.randomize(random);
        const vexlor_surface_desc src{8, c.sh, row(c.from),
                                      source.place(row(c.from) * static_cast<size_t>(c.sh), Side::end, 0),
                                      c.from};
        const vexlor_surface_desc dst{
            8, c.dh, row(c.to), target.place(row(c.to) * static_cast<size_t>(c.dh), Side::end, 0), c.to};
        vexlor_surface_desc again = dst;
        again.pixels = target.twin(dst.pixels);
        const auto draw = [&](vexlor_context* ctx, const vexlor_surface_desc& to) {
            return vexlor_scale(ctx, &src, &to, 0, 0, 8, c.sh, 0, 0, 8, c.dh);
        };
        const auto made = [&] {
            Context ctx = make_context();
            ctx->filter = c.filter;
            ctx->alpha_op = c.alpha_op;
            ctx->alpha_src = 1;
            ctx->alpha_dst_op = c.alpha_dst_op;
            return ctx;
        };
        int needed = 0;
        for (int nth = 1;; ++nth) {
            target.randomize(random);
            const Context ctx = made();
            until_failure = nth;
            EXPECT_EQ(draw(ctx.get(), dst), 0u);
            if (until_failure != 0)
                break; // it asked for no more
            const bool nothing = target.same();
            needed += nothing ? 1 : 0;
            draw(made().get(), again);
            EXPECT_TRUE(nothing || target.same_as_twin(dst.pixels)) << nth;
            if (nothing) { // what failed leaves no trace in the context
                EXPECT_EQ(draw(ctx.get(), dst), 0u);
                EXPECT_TRUE(target.same_as_twin(dst.pixels)) << nth;
            }
        }
        until_failure = 0;
        EXPECT_EQ(needed, c.needed);
        EXPECT_EQ(live, 0);
    }
}

// First memory, more rows, wider rows, and longer rows of the same pitch, which keep what is held.
TEST(NoMemory, LeavesTheCacheEmpty)
{
    const auto convert = [](const void* s, void* d, int32_t count) {
        std::memcpy(d, s, 4u * uint32_t(count));
    };
    constexpr struct {
        int32_t units, count, rows;
    } bands[] = {{4, 4, 1}, {4, 4, 3}, {16, 16, 3}, {16, 40, 3}};
    std::vector<uint8_t> picture(4096);
    Random(62).fill(picture.data(), picture.size());
    for (const auto& failing : bands) {
        vexlor_cache* cache;
        vexlor_cache_init(&cache);
        const auto update = [&](const auto& band) {
            uint8_t *first = picture.data(), *last = first + 4 * (band.units - 1);
            const int32_t pitch = vexlor_cache_update(cache, convert, vexlor_memmove, 4, 4, band.count, 200,
                                                      band.rows, &first, &last);
            EXPECT_EQ(pitch == 0, first == nullptr && last == nullptr);
            EXPECT_EQ(pitch == 0, cache->buffer == nullptr && cache->first_source == nullptr);
            for (int32_t row = 0; pitch != 0 && row < band.rows; ++row)
                EXPECT_EQ(
                    std::memcmp(first + row * pitch, &picture[200 * size_t(row)], 4 * size_t(band.units)), 0);
            return pitch;
        };
        for (const auto& band : bands) {
            until_failure = &band == &failing ? 1 : 0;
            EXPECT_EQ(update(band) == 0, &band == &failing);
            EXPECT_EQ(until_failure, 0);
            if (&band == &failing) {
                EXPECT_NE(update(band), 0);
            }
        }
        vexlor_cache_fini(cache);
        EXPECT_EQ(live, 0);
    }
}

// The portable memory routines, overruns included.
#include "support/model_memory.h"
#include "support/rows.h"
#include <csignal>

namespace {

using Copy = void(uint8_t* d, const uint8_t* s, uint32_t n);

uint8_t* place(Arena& arena, size_t bytes, uint32_t i)
{
    return arena.place(bytes, i % 2 == 0 ? Side::end : Side::begin, i / 2 % 16);
}

// From one buffer to another, and within one at distances where forwards and backwards, words and bytes all differ.
void check_copy(vexlor_memcpy_fn routine, Copy* model, size_t (*reach)(uint32_t n))
{
    Random random(5);
    Arena src, dst;
    for (uint32_t n = 0; n < 400; n += n < 80 ? 1 : 59) {
        for (uint32_t i = 0; i < 1024; i += 3) {
            uint8_t *const s = place(src, reach(n), i), *const d = place(dst, reach(n), i / 32);
            src.randomize(random);
            dst.randomize(random);
            routine(d, s, n);
            model(dst.twin(d), src.twin(s), n);
            ASSERT_TRUE(src.same_as_twin(s) && dst.same_as_twin(d)) << "n " << n << ", places " << i;
        }
        for (size_t distance = 0; distance <= 140; distance += distance <= 40 || distance == 63 ? 1 : 11)
            for (bool up : {false, true}) {
                uint8_t* const low = dst.place(reach(n) + distance, Side::end, 0);
                uint8_t *const s = up ? low : low + distance, *const d = up ? low + distance : low;
                dst.randomize(random);
                routine(d, s, n);
                model(dst.twin(d), dst.twin(s), n);
                ASSERT_TRUE(dst.same_as_twin(d)) << "n " << n << ", distance " << distance << ", up " << up;
            }
    }
}

} // namespace

TEST(Memory, WordCopyGoesForwardsInWholeUnits)
{
    static_assert(model::copied(5) == 6 && model::copied(6) == 8 && model::copied(7) == 10);
    check_copy(vexlor_memcpy_x86, model::copy_words, model::copied);
}

TEST(Memory, MoveIsExact)
{
    check_copy(
        vexlor_memmove, [](uint8_t* d, const uint8_t* s, uint32_t n) { std::memmove(d, s, n); },
        [](uint32_t n) -> size_t { return n; });
}

TEST(Memory, SetWritesWordsWithHalvesAtTheEnds)
{
    Random random(7);
    Arena dst;
    for (uint32_t n = 0; n < 80; ++n)
        for (uint32_t i = 0; i < 32; ++i) {
            // Odd counts write one byte more, and one byte at an unaligned place writes two.
            uint8_t* const d = place(dst, (n + 1) & ~1u, i);
            dst.randomize(random);
            const uint32_t value = random.next();
            vexlor_memset(d, value, n);
            model::set(dst.twin(d), value, n);
            ASSERT_TRUE(dst.same_as_twin(d)) << "n " << n << ", place " << i;
        }
    constexpr struct {
        uint32_t at, value, n;
        uint8_t expected[12];
    } cases[] = {{2, 0x11223344, 8, {1, 1, 0x44, 0x33, 0x44, 0x33, 0x22, 0x11, 0x44, 0x33, 1, 1}},
                 {2, 0xABCDABCD, 6, {1, 1, 0xCD, 0xAB, 0xCD, 0xAB, 0xCD, 0xAB, 1, 1, 1, 1}},
                 {2, 0x11223344, 1, {1, 1, 0x44, 0x33, 1, 1, 1, 1, 1, 1, 1, 1}},
                 {0, 0x11223344, 5, {0x44, 0x33, 0x22, 0x11, 0x44, 0x33, 1, 1, 1, 1, 1, 1}},
                 {2, 0x11223344, 0, {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}}};
    for (const auto& c : cases) {
        alignas(4) uint8_t bytes[12];
        std::memset(bytes, 1, sizeof bytes);
        vexlor_memset(bytes + c.at, c.value, c.n);
        EXPECT_EQ(std::memcmp(bytes, c.expected, sizeof bytes), 0) << &c - cases;
    }
}

TEST(Memory, AlignedCopyReturnsForWholeUnits)
{
    Random random(8);
    Arena src, dst;
    for (uint32_t s_at = 0; s_at < 8; ++s_at)
        for (uint32_t d_at = 0; d_at < 8; ++d_at)
            for (uint32_t n = 0; n < 80; ++n) {
                const bool aligned = s_at % 4 == 0 && d_at % 4 == 0, even = s_at % 2 == 0 && d_at % 2 == 0;
                if (!(aligned ? n % 4 == 0 : even ? n % 4 == 2 : n == 0))
                    continue;
                uint8_t *const s = src.place(n, Side::begin, s_at), *const d =
                                                                        dst.place(n, Side::begin, d_at);
                src.randomize(random);
                dst.randomize(random);
                vexlor_memcpy(d, s, n);
                std::memcpy(dst.twin(d), src.twin(s), n);
                ASSERT_TRUE(dst.same_as_twin(d)) << "n " << n << ", at " << s_at << " and " << d_at;
            }
}

// Every other call copies up to the end of memory and dies there.
TEST(Memory, AlignedCopyRunsAwayWithARest)
{
    constexpr struct {
        uint32_t source_at, n, arrives; // at least, of 64 bytes
    } cases[] = {{0, 2, 64}, {0, 6, 64}, {0, 1, 64}, {2, 4, 64},
                 {2, 8, 64}, {1, 4, 64}, {1, 2, 64}, {2, 0, 32}};
    for (const auto& c : cases) {
        Random random(9);
        Arena src, dst;
        src.randomize(random);
        dst.randomize(random);
        uint8_t *const s = src.place(2000, Side::begin, c.source_at), *const d = dst.place(64, Side::end, 0);
        const auto run_away = [&] {
            std::signal(SIGSEGV, SIG_DFL);
            vexlor_memcpy(d, s, c.n);
        };
        EXPECT_EXIT(run_away(), testing::KilledBySignal(SIGSEGV), "") << &c - cases;
        EXPECT_EQ(std::memcmp(d, s, c.arrives), 0) << &c - cases;
    }
}

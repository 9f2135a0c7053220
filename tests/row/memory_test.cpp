// The memory routines where ranges overlap, ends are odd, and copies run away.
#include "support/arena.h"
#include "support/model_memory.h"
#include "vexlor.h"
#include <csignal>

// Within one buffer, at distances where forwards and backwards, words and bytes all differ.
TEST(Memory, CopiesGoForwardsInWordsAndMovesAreExact)
{
    const struct {
        vexlor_memcpy_fn routine;
        void (*model)(uint8_t* d, const uint8_t* s, uint32_t n);
        size_t (*reach)(uint32_t n);
    } cases[] = {{vexlor_memcpy_x86, model::copy_words, model::copied},
                 {vexlor_memmove, [](uint8_t* d, const uint8_t* s, uint32_t n) { std::memmove(d, s, n); },
                  [](uint32_t n) -> size_t { return n; }}};
    Random random(5);
    Arena arena;
    for (const auto& c : cases)
        for (uint32_t n = 0; n < 400; n += n < 80 ? 1 : 59)
            for (size_t distance = 0; distance <= 140; distance += distance <= 40 || distance == 63 ? 1 : 11)
                for (bool up : {false, true}) {
                    uint8_t* const low = arena.place(c.reach(n) + distance, Side::end, 0);
                    uint8_t *const s = up ? low : low + distance, *const d = up ? low + distance : low;
                    arena.randomize(random);
                    c.routine(d, s, n);
                    c.model(arena.twin(d), arena.twin(s), n);
                    ASSERT_TRUE(arena.same_as_twin(d))
                        << "n " << n << ", distance " << distance << ", up " << up;
                }
}

// Calls that are not of whole units copy up to the end of memory and dies there.
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

TEST(Memory, BlockCopyFaultsAtUnalignedAddresses)
{
    alignas(16) uint8_t s[96] = {}, d[96];
    EXPECT_DEATH(vexlor_memcpy16_sse(d, s + 8, 64), "");
    EXPECT_DEATH(vexlor_memcpy16_sse(d + 8, s, 64), "");
}

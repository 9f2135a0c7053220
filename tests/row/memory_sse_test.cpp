// The SSE memory routines: what they leave out and write too much, at every alignment.
#include "support/model_memory.h"
#include "support/vector_rows.h"

namespace {

using Run = void(uint8_t* d, const uint8_t* s, uint32_t n);

constexpr uint32_t value_of(uint32_t n) { return 0x9E3779B9 * (n + 1); }

void copy_exactly(uint8_t* d, const uint8_t* s, uint32_t n) { std::memcpy(d, s, n); }
void copy_blocks(uint8_t* d, const uint8_t* s, uint32_t n) { std::memcpy(d, s, n / 16 * 16); }
void set_words(uint8_t* d, const uint8_t*, uint32_t n) { model::set(d, value_of(n), n); }
void set_blocks(uint8_t* d, const uint8_t*, uint32_t n)
{
    const uint32_t value = value_of(n);
    for (; !at_boundary(d) && n > 1; n -= 2, d += 2)
        model::store(d, static_cast<uint16_t>(value));
    for (; n > 15; n -= 16)
        for (int word = 0; word < 4; ++word, d += 4)
            model::store(d, value);
    if (n != 0)
        *d = model::byte(static_cast<int>(value & 0xFF));
}

// Below long_from bytes a routine is a portable one; above, it touches whole steps at places as aligned.
const struct {
    Run* routine;
    Run *when_short, *when_long;
    size_t (*short_reach)(uint32_t n);
    uint32_t long_from, step;
} cases[] = {
    {[](uint8_t* d, const uint8_t* s, uint32_t n) { vexlor_memcpy16_sse(d, s, n); }, model::copy_words,
     copy_blocks, model::copied, 64, 16},
    {[](uint8_t* d, const uint8_t* s, uint32_t n) { vexlor_memcpy_stream_sse(d, s, n); }, model::copy_words,
     copy_exactly, model::copied, 128, 1},
    {[](uint8_t* d, const uint8_t*, uint32_t n) { vexlor_memset_stream_sse(d, value_of(n), n); }, set_words,
     set_blocks, [](uint32_t n) -> size_t { return (n + 1) / 2 * 2; }, 128, 1},
};

} // namespace

// Up to three large blocks, a small one and a rest behind the longest prologue.
TEST(MemorySse, EqualsTheModel)
{
    static_assert(model::copied(62) == 64);
    Random random(21);
    Arena src, dst;
    for (const auto& c : cases)
        for (uint32_t n = 0; n < 240; ++n)
            for (uint32_t i = 0; i < 512; i += VEXLOR_TEST_STEP == 1 ? 1 : 3) {
                const bool is_long = n >= c.long_from;
                const uint32_t step = is_long ? c.step : 1;
                const size_t reach = is_long ? n / step * step : c.short_reach(n);
                const Side side = i < 256 ? Side::end : Side::begin;
                uint8_t* const s = src.place(reach, side, i % 16 * step);
                uint8_t* const d = dst.place(reach, side, i / 16 % 16 * step);
                src.randomize(random);
                dst.randomize(random);
                c.routine(d, s, n);
                (is_long ? c.when_long : c.when_short)(dst.twin(d), src.twin(s), n);
                ASSERT_TRUE(src.same() && dst.same_as_twin(d))
                    << &c - cases << ", n " << n << ", places " << i;
            }
}

TEST(MemorySse, BlockCopyFaultsAtUnalignedAddresses)
{
    alignas(16) uint8_t s[96] = {}, d[96];
    EXPECT_DEATH(vexlor_memcpy16_sse(d, s + 8, 64), "");
    EXPECT_DEATH(vexlor_memcpy16_sse(d + 8, s, 64), "");
}

TEST(MemorySse, StreamSetPutsHalvesBeforeTheBlocksAndOneByteBehind)
{
    alignas(16) uint8_t is[192] = {}, expected[192] = {};
    vexlor_memset_stream_sse(is + 4, 0x11223344, 160);
    for (size_t i = 4; i < 160; ++i)
        expected[i] = static_cast<uint8_t>(0x44 - i % (i < 16 ? 2 : 4) * 0x11);
    expected[160] = 0x44;
    EXPECT_EQ(std::memcmp(is, expected, sizeof is), 0);
}

// The SSE memory routines: alignment that they insist on, and what a streaming fill leaves out and writes too much.
#include "vexlor.h"
#include <cstring>
#include <gtest/gtest.h>

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

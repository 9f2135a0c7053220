// Memory routines in blocks of 16 bytes. Only instructions of the first SSE generation: moves and the store
// fence.
#include "base.h"

#include <xmmintrin.h>

using namespace vexlor;

namespace {

constexpr size_t block = 16;
constexpr u32 streamed_from = 128; // bytes; shorter rows take the word loops

__m128 load_aligned(const u8* at) { return _mm_load_ps(reinterpret_cast<const float*>(at)); }
__m128 load_anywhere(const u8* at) { return _mm_loadu_ps(reinterpret_cast<const float*>(at)); }
void store_cached(u8* at, __m128 value) { _mm_store_ps(reinterpret_cast<float*>(at), value); }
void store_streaming(u8* at, __m128 value) { _mm_stream_ps(reinterpret_cast<float*>(at), value); }

bool is_block_aligned(const void* at) { return reinterpret_cast<uintptr_t>(at) % block == 0; }

// Four blocks at a time, then single ones; returns the bytes done. Four loads come before four stores.
size_t move_blocks(u8* dst, size_t bytes, auto read, auto write)
{
    size_t done = 0;
    for (; bytes - done >= 4 * block; done += 4 * block) {
        const __m128 a = read(done), b = read(done + block), c = read(done + 2 * block),
                     d = read(done + 3 * block);
        write(dst + done, a);
        write(dst + done + block, b);
        write(dst + done + 2 * block, c);
        write(dst + done + 3 * block, d);
    }
    for (; bytes - done >= block; done += block)
        write(dst + done, read(done));
    return done;
}

} // namespace

// The last bytes % 16 are not copied: rows of the cache have none.
void vexlor_memcpy16_sse(void* dst, const void* src, uint32_t bytes)
{
    if (bytes < 4 * block)
        return vexlor_memcpy_x86(dst, src, bytes);
    auto* const from = static_cast<const u8*>(src);
    move_blocks(
        static_cast<u8*>(dst), bytes, [=](size_t at) { return load_aligned(from + at); }, store_cached);
}

void vexlor_memcpy_stream_sse(void* dst, const void* src, uint32_t bytes)
{
    if (bytes < streamed_from)
        return vexlor_memcpy_x86(dst, src, bytes);
    auto* to = static_cast<u8*>(dst);
    auto* from = static_cast<const u8*>(src);
    for (; !is_block_aligned(to) && bytes >= 2; to += 2, from += 2, bytes -= 2)
        store(to, load<u16>(from));
    const size_t done =
        is_block_aligned(from)
            ? move_blocks(
                  to, bytes, [=](size_t at) { return load_aligned(from + at); }, store_streaming)
            : move_blocks(
                  to, bytes, [=](size_t at) { return load_anywhere(from + at); }, store_streaming);
    _mm_sfence();
    for (size_t at = done; at < bytes; ++at)
        to[at] = from[at];
}

// Up to the first 16-byte boundary the low half of the value goes into both halves of 32-bit pixels, and of
// up to 15 bytes behind the last block only the first is written.
void vexlor_memset_stream_sse(void* dst, uint32_t value, uint32_t bytes)
{
    if (bytes < streamed_from)
        return vexlor_memset(dst, value, bytes);
    auto* to = static_cast<u8*>(dst);
    for (; !is_block_aligned(to) && bytes >= 2; to += 2, bytes -= 2)
        store(to, static_cast<u16>(value));
    // Through memory: a number that happens to be a signalling NaN must not pass through a floating-point
    // register.
    alignas(block) const u32 pattern[4] = {value, value, value, value};
    const __m128 blocks = load_aligned(reinterpret_cast<const u8*>(pattern));
    const size_t done = move_blocks(
        to, bytes, [=](size_t) { return blocks; }, store_streaming);
    _mm_sfence();
    if (done < bytes)
        to[done] = static_cast<u8>(value);
}

// Plain streaming loops over 64-bit words; compiled for the processor at hand, and kept from becoming calls of memcpy.
#include "streams.h"

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace bench {
namespace {

constexpr size_t few = 512; // words; no picture is smaller

struct Words {
    const uint64_t* from;
    uint64_t* to;
    size_t read, written; // words
};

// What the loops read and nobody writes ends here, so that it has to be read.
void keep(uint64_t sum) { asm volatile("" : : "r"(sum) : "memory"); }

void read_rest(const Words& w, size_t done)
{
    uint64_t sum = 0;
    for (size_t i = done; i < w.read; ++i)
        sum |= w.from[i];
    keep(sum);
}

struct Ordinary {
    static void fill(uint64_t* to, size_t n)
    {
        for (size_t i = 0; i < n; ++i)
            to[i] = 0x0123456789ABCDEF;
    }
    static void copy(const uint64_t* from, uint64_t* to, size_t n)
    {
        for (size_t i = 0; i < n; ++i)
            to[i] = from[i];
    }
    static void modify(const uint64_t* from, uint64_t* to, size_t n)
    {
        for (size_t i = 0; i < n; ++i)
            to[i] += from[i];
    }
    static void finish() {}
};

#ifdef __SSE2__
struct PastCaches {
    static __m128i* vectors(uint64_t* at) { return reinterpret_cast<__m128i*>(at); }
    static __m128i load(const uint64_t* at) { return _mm_load_si128(reinterpret_cast<const __m128i*>(at)); }
    static void fill(uint64_t* to, size_t n)
    {
        const __m128i value = _mm_set1_epi32(0x01234567);
        for (size_t i = 0; i < n; i += 2)
            _mm_stream_si128(vectors(to + i), value);
    }
    static void copy(const uint64_t* from, uint64_t* to, size_t n)
    {
        for (size_t i = 0; i < n; i += 2)
            _mm_stream_si128(vectors(to + i), load(from + i));
    }
    static void modify(const uint64_t* from, uint64_t* to, size_t n)
    {
        for (size_t i = 0; i < n; i += 2)
            _mm_stream_si128(vectors(to + i), _mm_add_epi64(load(from + i), load(to + i)));
    }
    static void finish() { _mm_sfence(); }
};
#endif

// Where source and target differ in size, what they have in common is copied, a longer source is read on and a longer
// target filled. What a blend has no source for is blended with a few words that stay in the first cache.
template <class Stores> void stream(const Words& w, bool reads_source, bool reads_target)
{
    const size_t both = std::min(w.read, w.written);
    if (reads_target) {
        Stores::modify(w.from, w.to, both);
        for (size_t done = both; done < w.written; done += few)
            Stores::modify(w.from, w.to + done, std::min(few, w.written - done));
    } else {
        if (reads_source)
            Stores::copy(w.from, w.to, both);
        Stores::fill(w.to + both, w.written - both);
        read_rest(w, both);
    }
    Stores::finish();
}

} // namespace

std::vector<Drawing> stream_drawings(const Scene& scene)
{
    constexpr size_t pair = 2;
    const Picture& from = scene.reads_source() ? scene.source : scene.backdrop;
    const size_t written = scene.target.bytes() / sizeof(uint64_t) / pair * pair;
    const size_t read = scene.reads_source() ? from.bytes() / sizeof(uint64_t) / pair * pair : 0;
    const Words words = {reinterpret_cast<const uint64_t*>(from.pixels()),
                         reinterpret_cast<uint64_t*>(scene.target.pixels()), read, written};
    const auto drawing = [&](const char* name, auto loop) {
        return Drawing{name, [=, source = scene.reads_source(), target = scene.reads_target()] {
                           loop(words, source, target);
                       }};
    };
    std::vector<Drawing> ways = {drawing("stream", stream<Ordinary>)};
#ifdef __SSE2__
    ways.push_back(drawing("stream past caches", stream<PastCaches>));
#endif
    return ways;
}

} // namespace bench

// Surfaces, rectangles and state as a hostile caller would choose them, who keeps to the caller's duties all the same:
// what a call may touch is owned, to the byte, or the call must be one that touches nothing.
#pragma once

#include "input.h"
#include "support/model_draw.h"

#include <memory>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace fuzz {

// The size of a surface's memory; 0 or -1 where its description has none.
inline int64_t bytes_of(const vexlor_surface_desc& s)
{
    const int64_t row = int64_t{s.width} * ((s.format & 0x3F) / 8);
    return s.width < 1 || s.height < 1 || s.stride < row ? -1 : (s.height - int64_t{1}) * s.stride + row;
}

// Memory of a surface. Small ones are compared with a twin in which a model draws. Vast ones are address space that ends
// where nobody may read; of the others there is only a description.
class Memory {
public:
    static constexpr int64_t small = 1 << 17, vast = int64_t{1} << 35;

    // `slack` bytes behind the last pixel may be written.
    Memory(Input& input, const vexlor_surface_desc& desc, size_t slack)
    {
        surface_ = {desc, nullptr};
        const int64_t bytes = bytes_of(desc);
        if (bytes > 0 && bytes <= small) {
            const size_t offset = input.below(16);
            size_ = offset + static_cast<size_t>(bytes) + slack;
            exact_.reset(new uint8_t[size_]); // on its own, so that its end is watched
            const uint32_t seed = input.byte();
            for (size_t i = 0; i < size_; ++i)
                exact_[i] = static_cast<uint8_t>((i + seed) * 0x9E3779B1u >> 17);
            twin_.assign(&exact_[0], &exact_[0] + size_);
            surface_.desc.pixels = &exact_[0] + offset;
            surface_.memory = twin_.data() + offset;
        } else if (sizeof(void*) == 8 && bytes > small && bytes <= vast) {
            constexpr size_t page = 4096;
            const size_t whole = (static_cast<size_t>(bytes) + slack + page - 1) / page * page;
            mapped_ = whole + page;
            // Past the sanitizers, which would mark all of it in memory that is there.
            const long map = syscall(SYS_mmap, nullptr, mapped_, PROT_READ | PROT_WRITE,
                                     MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
            require(map != -1, "no address space");
            map_ = reinterpret_cast<void*>(map);
            auto* const begin = static_cast<uint8_t*>(map_);
            require(mprotect(begin + whole, page, PROT_NONE) == 0, "no guard page");
            surface_.desc.pixels = begin + (whole - static_cast<size_t>(bytes) - slack);
        } else {
            surface_.desc.pixels = reinterpret_cast<uint8_t*>(uintptr_t{16});
        }
    }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;
    ~Memory()
    {
        if (map_ != nullptr)
            syscall(SYS_munmap, map_, mapped_);
    }

    const model::Surface& surface() const { return surface_; }
    bool is_small() const { return exact_ != nullptr; }
    bool is_owned() const { return is_small() || map_ != nullptr; }
    bool same() const { return !is_small() || std::memcmp(&exact_[0], twin_.data(), size_) == 0; }

private:
    model::Surface surface_;
    std::unique_ptr<uint8_t[]> exact_;
    std::vector<uint8_t> twin_;
    size_t size_ = 0, mapped_ = 0;
    void* map_ = nullptr;
};

inline uint32_t choose_format(Input& input)
{
    constexpr uint32_t formats[] = {0x00000010, 0x00000050, 0x80000050, 0x20000020, 0x60000020,
                                    0xA0000020, 0xE0000020, 0x60000020, 0x00000008, 0x00000018,
                                    0x20000010, 0x40000020, 0x30000020, 0x60000024, 0x00000000};
    return input.one_in(16) ? input.word() : input.pick(formats);
}

inline vexlor_surface_desc choose_surface(Input& input, uint32_t format)
{
    vexlor_surface_desc s{input.extent(40), input.extent(12), 0, nullptr, format};
    const auto row = static_cast<uint32_t>(s.width) * ((format & 0x3F) / 8);
    s.stride = input.one_in(8) ? static_cast<uint32_t>(input.extent(200)) : row + input.below(9);
    return s;
}

// The two surfaces of a call that reads one and writes one; once in `same_in` cases they are one and the same.
class Pair {
public:
    Pair(Input& input, uint32_t from, uint32_t same_in)
        : one_surface_(input.one_in(same_in)), source_(input, choose_surface(input, from), 0)
    {
        if (!one_surface_)
            other_ = std::make_unique<Memory>(
                input, choose_surface(input, input.one_in(2) ? from : choose_format(input)), size_t{0});
    }
    const model::Surface& src() const { return source_.surface(); }
    const model::Surface& dst() const { return target().surface(); }
    bool are_small() const { return source_.is_small() && target().is_small(); }
    bool are_owned() const { return source_.is_owned() && target().is_owned(); }
    bool same() const { return source_.same() && target().same(); }
    // Pixels of equivalent formats are copied as they are, so two sizes of them are the caller's own fault.
    bool agree_on_size() const
    {
        return !model::equivalent(src().desc.format, dst().desc.format) || src().bpp() == dst().bpp();
    }

private:
    const Memory& target() const { return one_surface_ ? source_ : *other_; }

    bool one_surface_;
    Memory source_;
    std::unique_ptr<Memory> other_;
};

// A part of `length`: mostly inside.
inline void choose_part(Input& input, int32_t length, int32_t& at, int32_t& part)
{
    if (length < 1 || input.one_in(8)) {
        at = input.extent(40);
        part = input.extent(40);
        return;
    }
    const auto limit = static_cast<uint32_t>(length);
    part = 1 + static_cast<int32_t>((length > 256 ? input.word() : input.byte()) % limit);
    if (part > 64 && input.one_in(2))
        part = part % 64 + 1; // small parts of large surfaces can be drawn
    const auto room = static_cast<uint32_t>(length - part);
    at = static_cast<int32_t>(input.one_in(2) ? room
                                              : (room > 255 ? input.word() : input.byte()) % (room + 1));
}

inline void choose_state(Input& input, vexlor_context* ctx)
{
    const auto few = [&](uint32_t n) { return input.one_in(16) ? input.word() : input.below(n); };
    vexlor_context_set_simd(ctx, input.one_in(4));
    vexlor_context_set_filter(ctx, few(3));
    vexlor_context_set_color(ctx, input.word());
    vexlor_context_set_alpha_op(ctx, few(3));
    vexlor_context_set_alpha_src(ctx, few(2));
    vexlor_context_set_alpha_dst_op(ctx, few(3));
    vexlor_context_set_alpha_mode(ctx, few(2));
    vexlor_context_set_alpha_test(ctx, few(6));
    vexlor_context_set_alpha_value(ctx, static_cast<uint8_t>(input.byte()));
    vexlor_context_set_alpha_ref(ctx, static_cast<uint8_t>(input.byte()));
}

// Whether the context has the routines whose bytes the models know.
inline bool is_portable(const vexlor_context& ctx) { return ctx.memset == vexlor_memset; }

inline bool wraps(int32_t at, int32_t length) { return int64_t{at} + length > INT32_MAX; }
inline bool inside(const vexlor_surface_desc& s, int32_t x, int32_t y, int32_t w, int32_t h)
{
    return x >= 0 && y >= 0 && int64_t{x} + w <= s.width && int64_t{y} + h <= s.height;
}
// What a call may draw without taking all day.
inline bool is_quick(int32_t w, int32_t h) { return int64_t{w} * h <= 1 << 14; }

struct Owner {
    Owner() { vexlor_context_create(&ctx); }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    ~Owner() { vexlor_context_destroy(ctx); }
    vexlor_context* ctx = nullptr;
};

} // namespace fuzz

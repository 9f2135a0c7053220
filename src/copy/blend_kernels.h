// The kernels of src/copy/blend_rows.cpp, for one instruction set.
#pragma once

#include "row/memory_kernels.h"
#include "row/over.h"
#include "row/over565.h"

namespace vexlor {
namespace {

template <class Mix, class Alpha> void src_row(const u32* s, u32* d, u32 n, u32 a)
{
    over<Mix>(Row{s}, d, n, PixelAlpha{shift_count(a)}, Alpha{shift_count(a)});
}

template <class Mix> void gbl_plain(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{g}, Blended{shift_count(a)});
}
// g arrives raised and is raised here once more: 255 blends at 257, and callers' pixels depend on it.
template <class Mix> void gbl_aone(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{factor(g)}, Opaque{shift_count(a)});
}
template <class Mix> void gbl_arepl(const u32* s, u32* d, u32 n, u32 g, u32 a)
{
    over<Mix>(Row{s}, d, n, Constant{factor(g)}, ClearedThenOred{shift_count(a), g});
}

// Pixels that do not pass are stored as they were: without a branch the row runs at the speed of a copy.
inline void copy_where(const u32* src, u32* dst, u32 count, u32 shift, auto passes)
{
    const auto pick = [=](auto s, auto d) { return passes(s >> shift & 0xFF) ? s : d; };
#if defined(__SSE2__)
    const auto make = [=](auto vector, u32 i) { return pick(vector.load(src + i), vector.load(dst + i)); };
    cover<4>(count, make, Target{dst, count >= far_from}, dst);
#else
    for (u32 i = 0; i < count; ++i)
        store(dst + i, pick(load<u32>(src + i), load<u32>(dst + i)));
#endif
}

inline void copy_blend_over_gbl_565(const u16* src, u16* dst, u32 count, u32 g)
{
    if (g <= 256)
        over_565<Lerp565>(src, dst, count, Constant{g});
    else
        over_565_pixels<Lerp565>(src, dst, count, Constant{g});
}

// Each pixel is read before it is written, from pixel 0 up: overlapping rows of one surface come here.
inline void copy_opaque_aone_8888(const u32* src, u32* dst, u32 count, u32 shift)
{
    const u32 alpha = 0xFFu << shift_count(shift);
#if defined(__SSE2__)
    // Vectors read on where the row ahead of them is not written yet.
    const uintptr_t ahead = reinterpret_cast<uintptr_t>(dst) - reinterpret_cast<uintptr_t>(src);
    if (ahead == 0 || ahead >= uintptr_t{count} * 4)
        return cover<4>(
            count, [=](auto vector, u32 i) { return vector.load(src + i) | alpha; }, Target{dst, true}, dst);
#endif
    for (u32 i = 0; i < count; ++i)
        store(dst + i, load<u32>(src + i) | alpha);
}
inline void stream_opaque_row(void* dst, const void* src, size_t bytes, u32 shift)
{
    stream_units(
        dst, src, bytes, 4,
        [=](void* to, const void* from, size_t n) {
            copy_opaque_aone_8888(static_cast<const u32*>(from), static_cast<u32*>(to),
                                  static_cast<u32>(n / 4), shift);
        },
        [=](auto vector) {
            using Pixels = typename Vector<sizeof vector>::U32;
            return native(reinterpret_cast<Pixels>(vector) | 0xFFu << shift_count(shift));
        });
}

inline void copy_test_8888(const u32* src, u32* dst, u32 count, u32 test, u32 reference, u32 shift)
{
    const u32 at = shift_count(shift);
    switch (test) {
    case VEXLOR_ALPHA_TEST_LESS:
        copy_where(src, dst, count, at, [=](auto a) { return a < reference; });
        break;
    case VEXLOR_ALPHA_TEST_LESS_EQUAL:
        copy_where(src, dst, count, at, [=](auto a) { return a <= reference; });
        break;
    case VEXLOR_ALPHA_TEST_EQUAL:
        copy_where(src, dst, count, at, [=](auto a) { return a == reference; });
        break;
    case VEXLOR_ALPHA_TEST_GREATER_EQUAL:
        copy_where(src, dst, count, at, [=](auto a) { return a >= reference; });
        break;
    case VEXLOR_ALPHA_TEST_GREATER:
        copy_where(src, dst, count, at, [=](auto a) { return a > reference; });
        break;
    case VEXLOR_ALPHA_TEST_NOT_EQUAL:
        copy_where(src, dst, count, at, [=](auto a) { return a != reference; });
        break;
    default: break;
    }
}

} // namespace
} // namespace vexlor

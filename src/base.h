// What every folder needs: short integer names, access to pixels at any address, address arithmetic that
// cannot overflow. Everything here is per translation unit (unnamed namespace), because a file may be
// compiled for another instruction set than its neighbours.
#pragma once

#include "vexlor.h"

#include <stddef.h>

namespace vexlor {
using u8 = uint8_t;
using u16 = uint16_t;
using u32 = uint32_t;
using u64 = uint64_t;
using i32 = int32_t;
using i64 = int64_t;

namespace {

// Rows start at any address and their bytes are pixels of several widths in turn. Copying the bytes says so
// to the compiler, and costs one move.
template <class T> inline T load(const void* at)
{
    T value;
    __builtin_memcpy(&value, at, sizeof value);
    return value;
}
template <class T> inline void store(void* at, T value) { __builtin_memcpy(at, &value, sizeof value); }

// Addresses are formed as integers: rows far outside a surface may be named, as long as nobody reads them.
template <class T> inline T* moved(T* at, uintptr_t bytes)
{
    return reinterpret_cast<T*>(reinterpret_cast<uintptr_t>(at) + bytes);
}
// A signed number of strides or pixels in bytes, at pointer width: the factors are widened before they meet.
inline uintptr_t bytes_of(i64 number, u32 unit) { return static_cast<uintptr_t>(number) * unit; }

constexpr i32 wrapping_add(i32 a, i32 b)
{
    return static_cast<i32>(static_cast<u32>(a) + static_cast<u32>(b));
}

constexpr u32 bits_per_pixel(u32 format) { return format & 0x3F; }
constexpr u32 bytes_per_pixel(u32 format) { return bits_per_pixel(format) >> 3; }

template <class Pixel = u8>
inline Pixel* pixel_address(const vexlor_surface_desc& surface, i64 x, i64 y, u32 bytes)
{
    return reinterpret_cast<Pixel*>(moved(surface.pixels, bytes_of(y, surface.stride) + bytes_of(x, bytes)));
}
// One past the last byte that the surface owns.
inline const u8* end_of(const vexlor_surface_desc& surface)
{
    return pixel_address(surface, surface.width, i64{surface.height} - 1, bytes_per_pixel(surface.format));
}

} // namespace
} // namespace vexlor

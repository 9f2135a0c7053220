// Vectors of lanes, for compilers' operators: as wide as the instruction set that a file is compiled for, and narrower ones
// for short rows. Without vectors there are none, and rows are done pixel by pixel.
#pragma once

#include "base.h"

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace vexlor {
namespace {

#if defined(__AVX512BW__)
constexpr u32 vector_bytes = 64;
#elif defined(__AVX2__)
constexpr u32 vector_bytes = 32;
#elif defined(__SSE2__)
constexpr u32 vector_bytes = 16;
#else
constexpr u32 vector_bytes = 0;
#endif

constexpr u32 lanes = 0x00FF00FF; // every second byte of a pixel, with 8 bits of headroom

// Written out for each width: g++ loses the size of a vector that depends on a template's parameter.
template <u32 Bytes> struct LaneTypes;
template <> struct LaneTypes<16> {
    typedef u32 U32 __attribute__((vector_size(16)));
    typedef u16 U16 __attribute__((vector_size(16)));
    typedef int16_t I16 __attribute__((vector_size(16)));
};
template <> struct LaneTypes<32> {
    typedef u32 U32 __attribute__((vector_size(32)));
    typedef u16 U16 __attribute__((vector_size(32)));
    typedef int16_t I16 __attribute__((vector_size(32)));
};
template <> struct LaneTypes<64> {
    typedef u32 U32 __attribute__((vector_size(64)));
    typedef u16 U16 __attribute__((vector_size(64)));
    typedef int16_t I16 __attribute__((vector_size(64)));
};

template <u32 Bytes> struct Vector {
    using U16 = typename LaneTypes<Bytes>::U16; // one channel per lane: nothing borrows from a neighbour
    using I16 = typename LaneTypes<Bytes>::I16;
    using U32 = typename LaneTypes<Bytes>::U32; // two channels per lane, with all the borrows of a word
    static constexpr u32 pixels = Bytes / 4;
};

} // namespace
} // namespace vexlor

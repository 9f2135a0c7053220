// How any row routine is called, and what it may touch: one type for routines of all kinds, and the ways to make one from
// a routine and its model.
#pragma once

#include "filter_model.h"
#include "isa/kernels.h"
#include "model_memory.h"

using Src = const uint8_t*;
using Dst = uint8_t*;

// What the exhaustive sweeps run through.
enum class Kind { other, src, gbl, fill, gbl_565, lerp_565, decode, encode, blend_yuv };

// `n` is the count that the routine takes. Sizes are those of the memory that it may read and write.
struct AnyRow {
    Kind kind;
    bool signed_count;
    bool in_every_set; // of instructions: then `routine` takes the one of a set, or null for the exported one
    void (*routine)(const vexlor::Kernels* set, Src s, Dst d, uint32_t n, const RowArgs& args);
    bool (*model)(Src s, Dst d, uint32_t n, const RowArgs& args); // false: the call has no defined bytes
    size_t (*src_bytes)(uint32_t n, const RowArgs& args);
    size_t (*dst_bytes)(uint32_t n, const RowArgs& args);
    uint32_t most = 130; // counts that are tried
    bool floats = false; // then the bytes depend on how the processor is set to round
};

// Pixels and bytes of a unit, the smallest run of pixels that a routine treats at once.
struct Shape {
    uint32_t pixels, src_bytes, dst_bytes;
    bool signed_count;

    constexpr uint32_t units(uint32_t n) const { return signed_count && n > INT32_MAX ? 0 : n / pixels; }
};
constexpr Shape pixel_32{1, 4, 4, false}, pixel_16{1, 2, 2, false}, fill_32{1, 0, 4, false};
constexpr Shape yuv_to_rgb{2, 4, 8, true}, rgb_to_yuv{2, 8, 4, true}, yuv_to_yuv{2, 4, 4, true};
constexpr Shape word_32{1, 4, 4, true};

inline const uint32_t* words(const uint8_t* p) { return reinterpret_cast<const uint32_t*>(p); }
inline uint32_t* words(uint8_t* p) { return reinterpret_cast<uint32_t*>(p); }
inline const uint16_t* halves(const uint8_t* p) { return reinterpret_cast<const uint16_t*>(p); }
inline uint16_t* halves(uint8_t* p) { return reinterpret_cast<uint16_t*>(p); }

// How each kind of routine is called with the common arguments.
inline void pass(vexlor_copy_src_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(words(s), words(d), n, a.shift);
}
inline void pass(vexlor_copy_gbl_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(words(s), words(d), n, a.g, a.shift);
}
inline void pass(vexlor_copy_test_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(words(s), words(d), n, a.test, a.reference, a.shift);
}
inline void pass(vexlor_fill_blend_fn f, Src, Dst d, uint32_t n, const RowArgs& a)
{
    f(a.color, words(d), n, a.g, a.shift);
}
inline void pass(vexlor_copy_gbl_565_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(halves(s), halves(d), n, a.g);
}
inline void pass(vexlor_copy_gbl_yuv_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(s, d, static_cast<int32_t>(n), a.g);
}
inline void pass(vexlor_convert_fn f, Src s, Dst d, uint32_t n, const RowArgs&)
{
    f(s, d, static_cast<int32_t>(n));
}
inline void pass(vexlor_lerp_8888_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(words(d), words(s), n, a.shift, a.dst_shift);
}
inline void pass(vexlor_lerp_565_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(halves(d), halves(s), n, a.shift);
}
inline void pass(vexlor_scale_span_fn f, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    f(s, d, a.shift % 32 == 24 ? VEXLOR_FMT_B8G8R8A8 : VEXLOR_FMT_A8R8G8B8, n, a.x, a.step);
}
inline void pass(vexlor_memcpy_fn f, Src s, Dst d, uint32_t n, const RowArgs&) { f(d, s, n); }
inline void pass(vexlor_memset_fn f, Src, Dst d, uint32_t n, const RowArgs& a) { f(d, a.color, n); }

// The routine that is exported, or where a member of the tables of instruction sets is named, the one of a set.
template <auto* Routine, auto Member = nullptr>
void call(const vexlor::Kernels* set, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    if constexpr (!std::is_null_pointer_v<decltype(Member)>)
        pass(set != nullptr && set->*Member != nullptr ? set->*Member : Routine, s, d, n, a);
    else
        pass(Routine, s, d, n, a);
}

// ---- Rows of units: the model of one unit makes that of the row.

template <model::Unit Unit, Shape S> bool run_units(Src s, Dst d, uint32_t n, const RowArgs& a)
{
    for (uint32_t i = S.units(n); i != 0; --i, s += S.src_bytes, d += S.dst_bytes)
        Unit(s, d, a);
    return true;
}
// In vector routines whole blocks of 16 bytes at 16-byte boundaries of the destination have a model of their own.
inline bool at_boundary(const void* p) { return reinterpret_cast<uintptr_t>(p) % 16 == 0; }
template <model::Unit Edge, model::Unit Body, Shape S>
bool run_blocks(Src s, Dst d, uint32_t n, const RowArgs& a)
{
    constexpr uint32_t block = 16 / S.dst_bytes;
    for (uint32_t units = S.units(n); units != 0;) {
        const bool body = at_boundary(d) && units >= block;
        for (uint32_t i = body ? block : 1; i != 0; --i, --units, s += S.src_bytes, d += S.dst_bytes)
            (body ? Body : Edge)(s, d, a);
    }
    return true;
}
template <Shape S> size_t src_of(uint32_t n, const RowArgs&) { return size_t{S.units(n)} * S.src_bytes; }
template <Shape S> size_t dst_of(uint32_t n, const RowArgs&) { return size_t{S.units(n)} * S.dst_bytes; }

template <Kind K, Shape S, auto* Routine, model::Unit Unit, auto Member = nullptr>
constexpr AnyRow units{K,
                       S.signed_count,
                       !std::is_null_pointer_v<decltype(Member)>,
                       call<Routine, Member>,
                       run_units<Unit, S>,
                       src_of<S>,
                       dst_of<S>};
template <Kind K, Shape S, auto* Routine, model::Unit Edge, model::Unit Body, auto Member = nullptr>
constexpr AnyRow blocks{K,
                        S.signed_count,
                        !std::is_null_pointer_v<decltype(Member)>,
                        call<Routine, Member>,
                        run_blocks<Edge, Body, S>,
                        src_of<S>,
                        dst_of<S>,
                        130,
                        K == Kind::decode};

// ---- Spans: units of the source at steps. A unit of two pixels takes two of the count.

inline int64_t span_unit(uint32_t i, const RowArgs& a) { return (a.x + int64_t{i} * a.step) >> 16; }
template <model::Unit Unit, uint32_t Pixels, uint32_t Size>
bool run_span(Src s, Dst d, uint32_t n, const RowArgs& a)
{
    RowArgs args = a;
    args.shift = a.shift % 32 == 24 ? 24 : 0;
    if (n >= Pixels && span_unit(n / Pixels - 1, a) < 0)
        return false;
    for (uint32_t i = 0; i < n / Pixels; ++i)
        Unit(s + Size * span_unit(i, a), d + size_t{Size} * Pixels * i, args);
    return true;
}
template <uint32_t Pixels, uint32_t Size> size_t span_bytes(uint32_t n, const RowArgs& a)
{
    if (n < Pixels)
        return 0;
    return Size * (static_cast<size_t>(std::max(span_unit(0, a), span_unit(n / Pixels - 1, a))) + 1);
}
template <auto* Routine, auto Member, model::Unit Unit, uint32_t Pixels = 1>
constexpr AnyRow span{Kind::other,
                      false,
                      true,
                      call<Routine, Member>,
                      run_span<Unit, Pixels, 4>,
                      span_bytes<Pixels, 4>,
                      [](uint32_t n, const RowArgs&) { return size_t{n} / Pixels * Pixels * 4; }};

// ---- Filters: the source is a whole surface of `rows` rows; `n` pixels are made from its width.

inline int64_t filter_width(const RowArgs& a) { return a.twist == 0 ? a.width : a.width % 12 + 1; }
// Memory on either side of the surface of a twisted call, which reads around it.
inline int64_t around(int size, const RowArgs& a)
{
    return a.twist == 0 ? 0 : 8 * (filter_width(a) * size + a.pad) + 400;
}
inline model::Filter filter_call(model::Kernel x, model::Kernel y, int size, uint32_t n, const RowArgs& a)
{
    uint32_t state = a.twist;
    const auto below = [&](uint32_t most) { return ((state = state * 0x915F77F5 + 1) >> 8) % most; };
    const auto or_any = [&](int32_t usual) {
        return a.twist != 0 && below(4) == 0 ? static_cast<int32_t>(below(0x30000)) : usual;
    };
    const auto near = [&](int64_t usual) {
        return a.twist != 0 && below(4) == 0 ? usual + (int64_t{below(7)} - 3) * size : usual;
    };
    const auto rows = [&](int32_t usual) { return a.twist == 0 ? usual : static_cast<int32_t>(below(4)); };
    const auto width = static_cast<uint32_t>(filter_width(a));
    const uint32_t step = a.twist == 0 ? (width << 16) / std::max(n, 1u) : below(0x48000) * 16 / (n + 16);
    const auto xstep = static_cast<int32_t>(step);
    const int32_t ystep = std::abs(a.step);
    const int64_t length = (int64_t{width} - 1) * size, stride = length + size + a.pad, at = around(size, a),
                  row = at + (a.x >> 16) * stride;
    return {x,
            y,
            size,
            near(at),
            near(at + (int64_t{a.rows} - 1) * stride + length),
            row,
            std::max(row, near(row + length)),
            {static_cast<uint32_t>(a.x), xstep, or_any(xstep >> 1), or_any(ystep >> 1), rows(ystep >> 17),
             rows(((ystep >> 1) + 0x1000) >> 16), or_any((xstep >> 1) + 0x1000), n,
             static_cast<uint32_t>(stride)}};
}
template <auto* Routine, model::Kernel X, model::Kernel Y, int Size>
void call_filter(const vexlor::Kernels*, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    const model::Filter f = filter_call(X, Y, Size, n, a);
    Routine(s + f.first, s + f.last, s + f.row, s + f.row_end, &f.params, d);
}
template <int Size> size_t filter_bytes(uint32_t, const RowArgs& a)
{
    const int64_t row = filter_width(a) * Size;
    return static_cast<size_t>((int64_t{a.rows} - 1) * (row + a.pad) + row + 2 * around(Size, a));
}
// False when it would have to read outside of the surface.
template <model::Kernel X, model::Kernel Y, int Size>
bool run_filter(Src s, Dst d, uint32_t n, const RowArgs& a)
{
    const model::Filter f = filter_call(X, Y, Size, n, a);
    bool inside = true;
    const auto end = static_cast<int64_t>(filter_bytes<Size>(n, a));
    const model::Bytes bytes = [&](int64_t place) {
        inside = inside && place >= 0 && place < end;
        return inside ? s[place] : uint8_t{0};
    };
    for (uint32_t i = 0; i < n && inside; ++i) {
        const uint32_t pixel = model::resample(f, bytes, i);
        std::memcpy(d + size_t{i} * Size, &pixel, Size);
    }
    return inside;
}
template <auto* Routine, model::Kernel X, model::Kernel Y, int Size>
constexpr AnyRow filter_row{Kind::other,
                            false,
                            false,
                            call_filter<Routine, X, Y, Size>,
                            run_filter<X, Y, Size>,
                            filter_bytes<Size>,
                            [](uint32_t n, const RowArgs&) { return size_t{n} * Size; },
                            130,
                            X == model::Kernel::gauss || X == model::Kernel::catrom};

// ---- Memory routines: counts are bytes.

inline size_t exact_bytes(uint32_t n, const RowArgs&) { return n; }
inline size_t word_bytes(uint32_t n, const RowArgs&) { return model::copied(n); }
inline size_t even_bytes(uint32_t n, const RowArgs&) { return (size_t{n} + 1) / 2 * 2; }
inline size_t no_bytes(uint32_t, const RowArgs&) { return 0; }
using Bytes = size_t(uint32_t n, const RowArgs& args);
using Run = bool(Src s, Dst d, uint32_t n, const RowArgs& args);

template <uint32_t Long, Bytes Short, Bytes Else> size_t by_length(uint32_t n, const RowArgs& a)
{
    return n < Long ? Short(n, a) : Else(n, a);
}
template <uint32_t Long, Run Short, Run Else> bool run_by_length(Src s, Dst d, uint32_t n, const RowArgs& a)
{
    return n < Long ? Short(s, d, n, a) : Else(s, d, n, a);
}
inline bool run_words(Src s, Dst d, uint32_t n, const RowArgs&)
{
    model::copy_words(d, s, n);
    return true;
}
inline bool run_exact(Src s, Dst d, uint32_t n, const RowArgs&)
{
    std::memmove(d, s, n);
    return true;
}
// Any other call of vexlor_memcpy copies on until it faults.
inline bool run_aligned(Src s, Dst d, uint32_t n, const RowArgs& a)
{
    const auto both = reinterpret_cast<uintptr_t>(s) | reinterpret_cast<uintptr_t>(d);
    return (both % 4 == 0 ? n % 4 == 0 : both % 2 == 0 ? n % 4 == 2 : n == 0) && run_exact(s, d, n, a);
}
inline bool run_copied_blocks(Src s, Dst d, uint32_t n, const RowArgs& a)
{
    return at_boundary(s) && at_boundary(d) && run_exact(s, d, n / 16 * 16, a);
}
inline size_t block_bytes(uint32_t n, const RowArgs&) { return n / 16 * 16; }
inline bool run_set(Src, Dst d, uint32_t n, const RowArgs& a)
{
    model::set(d, a.color, n);
    return true;
}
inline bool run_set_blocks(Src, Dst d, uint32_t n, const RowArgs& a)
{
    for (; !at_boundary(d) && n > 1; n -= 2, d += 2)
        model::store(d, static_cast<uint16_t>(a.color));
    for (; n > 15; n -= 16)
        for (int word = 0; word < 4; ++word, d += 4)
            model::store(d, a.color);
    if (n != 0)
        *d = static_cast<uint8_t>(a.color);
    return true;
}
template <auto* Routine, Run Model, Bytes Source, Bytes Target>
constexpr AnyRow memory_row{Kind::other, false, false, call<Routine>, Model, Source, Target, 4 * 130 + 3};

// ---- Rows that the tables of instruction sets have besides the exported ones.

inline const vexlor::Kernels& set_or_best(const vexlor::Kernels* set)
{
    return set != nullptr ? *set : vexlor::kernels();
}
inline void call_set_words(const vexlor::Kernels* set, Src, Dst d, uint32_t n, const RowArgs& a)
{
    set_or_best(set).set_words(d, a.color, n);
}
inline void call_copy_words(const vexlor::Kernels* set, Src s, Dst d, uint32_t n, const RowArgs&)
{
    set_or_best(set).copy_words(d, s, n);
}
inline void call_nearest_565(const vexlor::Kernels* set, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    set_or_best(set).scale_opaque_nofilt_565(s, d, VEXLOR_FMT_565, n, a.x, a.step);
}
inline void set_unit(Src, Dst d, const RowArgs& a) { model::store(d, a.color); }
inline void copy_half(Src s, Dst d, const RowArgs&) { model::store(d, model::load<uint16_t>(s)); }

inline void call_stream(const vexlor::Kernels* set, Src s, Dst d, uint32_t n, const RowArgs&)
{
    set_or_best(set).stream_row(d, s, n);
    set_or_best(set).end_streaming();
}
inline void call_stream_opaque(const vexlor::Kernels* set, Src s, Dst d, uint32_t n, const RowArgs& a)
{
    set_or_best(set).stream_opaque_row(d, s, size_t{4} * n, a.shift);
    set_or_best(set).end_streaming();
}

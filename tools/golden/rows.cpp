// Lines of the exported row routines: each is called with many counts, places and arguments.
#include "golden/parts.h"

#include <algorithm>

// Numbers are drawn one by one, in a statement each: compilers evaluate arguments in different orders.
namespace golden {

namespace {

constexpr uint32_t most = 140; // pixels of a row
constexpr uint32_t guard = 64; // bytes before and behind it
constexpr size_t row_size = 2 * guard + most * 4 + 64;
constexpr uint32_t shifts[] = {0, 24, 8, 56};

struct Row {
    const uint8_t* src;
    uint8_t* dst;
    uint32_t count;
    Numbers& numbers;

    template <class T> T* to() const { return reinterpret_cast<T*>(dst); }
    template <class T> const T* from() const { return reinterpret_cast<const T*>(src); }
    int32_t signed_count() const { return static_cast<int32_t>(count); }
    uint32_t factor() const { return numbers.below(257); }
    uint32_t shift() const { return shifts[numbers.below(4)]; }
    uint32_t format() const { return numbers.below(2) != 0 ? VEXLOR_FMT_A8R8G8B8 : VEXLOR_FMT_B8G8R8A8; }
};

// One call of each kind of routine.
void run(vexlor_memcpy_fn f, const Row& r) { f(r.dst, r.src, r.count * 2); }
void run(vexlor_memset_fn f, const Row& r) { f(r.dst, r.numbers.next(), r.count * 2); }
void run(vexlor_fill_blend_fn f, const Row& r)
{
    const uint32_t color = r.numbers.next(), factor = r.factor();
    f(color, r.to<uint32_t>(), r.count, factor, r.shift());
}
void run(vexlor_copy_src_fn f, const Row& r) { f(r.from<uint32_t>(), r.to<uint32_t>(), r.count, r.shift()); }
void run(vexlor_copy_gbl_fn f, const Row& r)
{
    const uint32_t factor = r.factor();
    f(r.from<uint32_t>(), r.to<uint32_t>(), r.count, factor, r.shift());
}
void run(vexlor_copy_gbl_565_fn f, const Row& r)
{
    f(r.from<uint16_t>(), r.to<uint16_t>(), r.count, r.factor());
}
void run(vexlor_copy_gbl_yuv_fn f, const Row& r) { f(r.src, r.dst, r.signed_count(), r.factor()); }
void run(vexlor_copy_test_fn f, const Row& r)
{
    const uint32_t test = r.numbers.below(7), reference = r.numbers.below(256);
    f(r.from<uint32_t>(), r.to<uint32_t>(), r.count, test, reference, r.shift());
}
void run(vexlor_convert_fn f, const Row& r) { f(r.src, r.dst, r.signed_count()); }
void run(vexlor_scale_span_fn f, const Row& r)
{
    constexpr int32_t steps[] = {0x4000, 0x8000, 0xFFFF, 0x10000};
    const uint32_t format = r.format();
    const auto x = static_cast<int32_t>(r.numbers.below(0x8000));
    f(r.src, r.dst, format, r.count, x, steps[r.numbers.below(4)]);
}
void run(vexlor_lerp_8888_fn f, const Row& r)
{
    const uint32_t src_shift = r.shift();
    f(r.to<uint32_t>(), r.from<uint32_t>(), r.count, src_shift, r.shift());
}
void run(vexlor_lerp_565_fn f, const Row& r)
{
    f(r.to<uint16_t>(), r.from<uint16_t>(), r.count, r.numbers.below(16));
}
// Copies words for ever unless it gets a multiple of 4 bytes between such addresses.
void run_aligned_copy(const Row& r)
{
    vexlor_memcpy(r.dst, r.src - reinterpret_cast<uintptr_t>(r.src) % 4, r.count * 4);
}
// The source is a band of 7 short rows, of which `row` is one.
template <class Pixel> void run_filter(vexlor_filter_fn f, const Row& r)
{
    constexpr int32_t steps[] = {0x5555, 0x8000, 0xC123, 0x10000, 0x18000, 0x2AAAA};
    constexpr uint32_t width = 20, rows = 7, stride = width * sizeof(Pixel);
    const uint32_t row = r.numbers.below(rows);
    const int32_t x = steps[r.numbers.below(6)], y = steps[r.numbers.below(6)];
    vexlor_filter_params params{};
    params.ypos = row << 16 | (r.numbers.next() & 0xFFFF);
    params.xstep = x;
    params.xhalf = x >> 1;
    params.yhalf = y >> 1;
    params.yhalf_rows = y >> 17;
    params.ycentre_rows = (params.yhalf + 0x1000) >> 16;
    params.xcentre = params.xhalf + 0x1000;
    params.count = std::min(r.count, (width << 16) / static_cast<uint32_t>(x));
    params.stride = stride;
    const uint8_t* const start = r.src + size_t{row} * stride;
    f(r.src, r.src + size_t{rows} * stride - sizeof(Pixel), start, start + stride - sizeof(Pixel), &params,
      r.dst);
}

template <auto* Routine> void plain(const Row& r) { run(Routine, r); }
template <auto* Filter> void filter_8888(const Row& r) { run_filter<uint32_t>(Filter, r); }
template <auto* Filter> void filter_565(const Row& r) { run_filter<uint16_t>(Filter, r); }

struct Routine {
    const char* name;
    void (*call)(const Row&);
    uint32_t unit = 4; // places are multiples of it
};

#define ROW(name) #name, plain < name>
#define FILTER(kernels) "vexlor_filter_" #kernels "_8888", filter_8888<vexlor_filter_##kernels##_8888>
#define FILTER_565(kernels) "vexlor_filter_" #kernels "_565", filter_565<vexlor_filter_##kernels##_565>, 2
constexpr Routine routines[] = {
    {ROW(vexlor_memcpy_x86), 2},
    {ROW(vexlor_memmove), 2},
    {ROW(vexlor_memset), 2},
    {"vexlor_memcpy", run_aligned_copy},
    {ROW(vexlor_memcpy16_sse), 16},
    {ROW(vexlor_memcpy_stream_sse), 2},
    {ROW(vexlor_memset_stream_sse), 2},
    {ROW(vexlor_1d_fill_blend_over_8888)},
    {ROW(vexlor_1d_fill_blend_over_aone_8888)},
    {ROW(vexlor_1d_fill_blend_over_arepl_8888)},
    {ROW(vexlor_1d_copy_opaque_aone_8888)},
    {ROW(vexlor_1d_copy_test_8888)},
    {ROW(vexlor_1d_copy_blend_over_src_8888)},
    {ROW(vexlor_1d_copy_blend_over_src_aone_8888)},
    {ROW(vexlor_1d_copy_blend_over_src_arepl_8888)},
    {ROW(vexlor_1d_copy_blend_over_src_pre_8888)},
    {ROW(vexlor_1d_copy_blend_over_src_pre_aone_8888)},
    {ROW(vexlor_1d_copy_blend_over_src_pre_arepl_8888)},
    {ROW(vexlor_1d_copy_blend_over_gbl_8888)},
    {ROW(vexlor_1d_copy_blend_over_gbl_aone_8888)},
    {ROW(vexlor_1d_copy_blend_over_gbl_arepl_8888)},
    {ROW(vexlor_1d_copy_blend_over_gbl_pre_8888)},
    {ROW(vexlor_1d_copy_blend_over_gbl_pre_aone_8888)},
    {ROW(vexlor_1d_copy_blend_over_gbl_pre_arepl_8888)},
    {ROW(vexlor_1d_copy_blend_over_src_8888_sse2)},
    {ROW(vexlor_1d_copy_blend_over_src_pre_8888_sse2)},
    {ROW(vexlor_1d_copy_blend_over_gbl_8888_sse2)},
    {ROW(vexlor_1d_copy_blend_over_gbl_pre_8888_sse2)},
    {ROW(vexlor_1d_copy_blend_over_gbl_565), 2},
    {ROW(vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8)},
    {ROW(vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8)},
    {ROW(vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8)},
    {ROW(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8)},
    {ROW(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8)},
    {ROW(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8)},
    {ROW(vexlor_1d_Y8V8Y8U8_2_X8R8G8B8)},
    {ROW(vexlor_1d_Y8V8Y8U8_2_B8G8R8X8)},
    {ROW(vexlor_1d_U8Y8V8Y8_2_X8R8G8B8)},
    {ROW(vexlor_1d_U8Y8V8Y8_2_B8G8R8X8)},
    {ROW(vexlor_1d_X8R8G8B8_2_Y8V8Y8U8)},
    {ROW(vexlor_1d_B8G8R8X8_2_Y8V8Y8U8)},
    {ROW(vexlor_1d_X8R8G8B8_2_U8Y8V8Y8)},
    {ROW(vexlor_1d_B8G8R8X8_2_U8Y8V8Y8)},
    {ROW(vexlor_1d_passthrough)},
    {ROW(vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2)},
    {ROW(vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2)},
    {ROW(vexlor_1d_scale_opaque_nofilt_32)},
    {ROW(vexlor_1d_scale_opaque_nofilt_aone_8888)},
    {ROW(vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8)},
    {ROW(vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8)},
    {ROW(vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8)},
    {ROW(vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8)},
    {ROW(vexlor_1d_scale_blend_over_src_nofilt_8888)},
    {ROW(vexlor_1d_scale_blend_over_src_nofilt_8888_pre)},
    {ROW(vexlor_1d_scale_blend_over_src_nofilt_arepl_8888)},
    {ROW(vexlor_1d_scale_blend_over_src_nofilt_arepl_8888_pre)},
    {ROW(vexlor_1d_scale_blend_over_src_nofilt_aone_8888)},
    {ROW(vexlor_1d_scale_blend_over_src_nofilt_aone_8888_pre)},
    {ROW(vexlor_1d_lerp_8888)},
    {ROW(vexlor_1d_lerp_pre_8888)},
    {ROW(vexlor_1d_lerp_arepl_8888)},
    {ROW(vexlor_1d_lerp_pre_arepl_8888)},
    {ROW(vexlor_1d_lerp_aone_8888)},
    {ROW(vexlor_1d_lerp_pre_aone_8888)},
    {ROW(vexlor_1d_lerp_565), 2},
    {ROW(vexlor_1d_lerp_pre_565), 2},
    {ROW(vexlor_writer_arepl_8888)},
    {ROW(vexlor_writer_aone_8888)},
    {FILTER(xmean_ymean)},
    {FILTER(xmean_ylinear)},
    {FILTER(xlinear_ymean)},
    {FILTER(xlinear_ylinear)},
    {FILTER(xgauss_ygauss)},
    {FILTER(xgauss_ycatrom)},
    {FILTER(xcatrom_ygauss)},
    {FILTER(xcatrom_ycatrom)},
    {FILTER_565(xmean_ymean)},
    {FILTER_565(xmean_ylinear)},
    {FILTER_565(xlinear_ymean)},
    {FILTER_565(xlinear_ylinear)},
    {FILTER_565(xgauss_ygauss)},
    {FILTER_565(xgauss_ycatrom)},
    {FILTER_565(xcatrom_ygauss)},
    {FILTER_565(xcatrom_ycatrom)},
};
#undef ROW
#undef FILTER
#undef FILTER_565

void add_routine(std::vector<Line>& lines, const Routine& routine)
{
    Numbers numbers(3);
    Memory src(row_size), dst(row_size);
    std::vector<uint8_t> random(2 * row_size);
    numbers.fill(random.data(), random.size());
    Checksum sum;
    for (uint32_t i = 0; i < 300; ++i) {
        const size_t from = numbers.below(row_size);
        std::memcpy(src.data(), random.data() + from, row_size);
        std::memcpy(dst.data(), random.data() + row_size - from, row_size);
        const uint32_t count = i < 80 ? i : numbers.below(most + 1);
        const auto place = [&](Memory& memory) {
            return memory.data() + guard + size_t{numbers.below(64 / routine.unit)} * routine.unit;
        };
        uint8_t* const s = place(src);
        uint8_t* const d = place(dst);
        routine.call({s, d, count, numbers});
        dst.add_to(sum);
    }
    lines.push_back({routine.name, sum.text(), ""});
}

// Colours packed and unpacked: every 16-bit pixel, as many 32-bit ones, components inside and outside 0 to 1.
void add_packing(std::vector<Line>& lines)
{
    Numbers numbers(4);
    Checksum unpack_8888, unpack_565, pack_8888, pack_565;
    for (uint32_t i = 0; i < 1 << 16; ++i) {
        float out[4];
        vexlor_color4_unpack_8888(numbers.next(), out);
        unpack_8888.add(out, sizeof out);
        pack_8888.add(vexlor_color4_pack_8888(out));
        vexlor_color3_unpack_565(static_cast<uint16_t>(i), out);
        unpack_565.add(out, 3 * sizeof *out);
        pack_565.add(vexlor_color3_pack_565(out));
        for (float& component : out)
            component = (static_cast<float>(numbers.below(4001)) - 1000) / 2000;
        pack_8888.add(vexlor_color4_pack_8888(out));
        pack_565.add(vexlor_color3_pack_565(out));
    }
    lines.push_back({"vexlor_color4_unpack_8888", unpack_8888.text(), ""});
    lines.push_back({"vexlor_color3_unpack_565", unpack_565.text(), ""});
    lines.push_back({"vexlor_color4_pack_8888", pack_8888.text(), ""});
    lines.push_back({"vexlor_color3_pack_565", pack_565.text(), ""});
}

} // namespace

void add_rows(std::vector<Line>& lines)
{
    const bool simd = has_simd();
    for (const Routine& routine : routines)
        if (simd || std::strstr(routine.name, "_sse") == nullptr)
            add_routine(lines, routine);
    add_packing(lines);
}

} // namespace golden

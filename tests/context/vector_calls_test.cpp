// What vector routines leave alone, the control words of both floating-point units, and what they must not
// depend on, their caller's alignment of the stack.
#include "support/vector_rows.h"

static void pass(vexlor_memcpy_fn f, Src s, Dst d, uint32_t n, const RowArgs&) { f(d, s, n); }
static void pass(vexlor_memset_fn f, Src, Dst d, uint32_t n, const RowArgs& a) { f(d, a.color, n); }

namespace {

constexpr struct {
    void (*call)(Src s, Dst d, uint32_t n, const RowArgs& args);
    size_t at;       // of the destination, modulo 16
    uint32_t raises; // status bits of MXCSR
} routines[] = {
    {call<vexlor_memcpy16_sse>, 0, 0},
    {call<vexlor_memcpy_stream_sse>, 8, 0},
    {call<vexlor_memset_stream_sse>, 8, 0},
    {call<vexlor_1d_copy_blend_over_src_8888_sse2>, 8, 0},
    {call<vexlor_1d_copy_blend_over_gbl_8888_sse2>, 8, 0},
    {call<vexlor_1d_copy_blend_over_src_pre_8888_sse2>, 8, 0},
    {call<vexlor_1d_copy_blend_over_gbl_pre_8888_sse2>, 8, 0},
    {call<vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2>, 8, 0x20}, // inexact
    {call<vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2>, 8, 0x20},
};
constexpr uint32_t count = 200;
constexpr RowArgs args{.g = 129, .shift = 24, .color = 0x11223344};

} // namespace

TEST(VectorCalls, LeaveControlWordsAlone)
{
    alignas(16) uint8_t s[1024] = {}, d[1024] = {};
    Random(23).fill(s, sizeof s);
    const uint16_t x87_set = 0x0C3F; // towards zero, to single precision
    for (const auto& r : routines)
        for (const uint32_t set : {0x1F80u, 0x5F80u | no_denormals}) { // as by default; upwards
            const uint32_t before = mxcsr();
            uint16_t x87_before, x87;
            asm volatile("fnstcw %0\n\tfldcw %1" : "=m"(x87_before) : "m"(x87_set));
            set_mxcsr(set);
            r.call(s, d + r.at, count, args);
            const uint32_t after = mxcsr();
            asm volatile("fnstcw %0\n\tfldcw %1" : "=m"(x87) : "m"(x87_before));
            set_mxcsr(before);
            EXPECT_EQ(after & ~r.raises, set) << &r - routines;
            EXPECT_EQ(x87 & 0x0F3F, x87_set) << &r - routines;
        }
}

#ifdef __i386__
// Calls where compilers expect the stack on a 16-byte boundary, with one that is `off` bytes below.
[[gnu::noinline]] static void call_off(uintptr_t off, const void* const (&pushed_then_called)[5])
{
    const void* const* words = pushed_then_called;
    asm volatile("movl %%esp, %%ebx\n\tandl $-16, %%esp\n\tsubl %1, %%esp\n\t"
                 "pushl (%0)\n\tpushl 4(%0)\n\tpushl 8(%0)\n\tpushl 12(%0)\n\tcall *16(%0)\n\t"
                 "movl %%ebx, %%esp"
                 : "+a"(words)
                 : "S"(off)
                 : "ebx", "ecx", "edx", "memory", "cc");
}

// A routine that keeps vectors on the stack as it finds it would fault.
TEST(VectorCalls, TakeStacksOf4ByteAlignment)
{
    for (const auto& r : routines)
        for (const uintptr_t off : {4u, 8u, 12u}) {
            alignas(16) uint8_t s[1024], d[2][1024] = {};
            Random(24).fill(s, sizeof s);
            r.call(s, d[0] + r.at, count, args);
            call_off(off, {&args, reinterpret_cast<void*>(count), d[1] + r.at, s,
                           reinterpret_cast<void*>(r.call)});
            EXPECT_EQ(std::memcmp(d[0], d[1], sizeof d[0]), 0) << &r - routines << ' ' << off;
        }
}
#endif

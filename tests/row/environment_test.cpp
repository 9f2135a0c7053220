// What a caller may have set before any row routine, which must neither show in the bytes nor be changed: the control
// words of both floating-point units, the registers that calls preserve, and in 32-bit programs a stack that is aligned
// to 4 bytes only.
#include "support/rows.h"

namespace {

struct Control {
    uint32_t mxcsr;
    uint16_t x87;
};
constexpr Control usual{0x1F80, 0x037F};
constexpr uint32_t mxcsr_flags = 0x3F, no_denormals = 0x8040;

// The vector unit's header is not for builds without SSE.
Control control()
{
    Control c;
    asm volatile("stmxcsr %0\n\tfnstcw %1" : "=m"(c.mxcsr), "=m"(c.x87));
    return c;
}
void set(const Control& c) { asm volatile("ldmxcsr %0\n\tfldcw %1" : : "m"(c.mxcsr), "m"(c.x87)); }

// Whether no register of the x87, or of MMX in its place, is left in use.
bool x87_is_empty()
{
    uint32_t environment[7];
    asm volatile("fnstenv %0\n\tfldenv %0" : "=m"(environment));
    return (environment[2] & 0xFFFF) == 0xFFFF;
}

struct Job {
    const AnyRow& row;
    const vexlor::Kernels* set;
    Src s;
    Dst d;
    uint32_t n;
    const RowArgs& args;
};
void run(const Job* job) { job->row.routine(job->set, job->s, job->d, job->n, job->args); }

// Runs the job on a stack that is `off` bytes below a multiple of 16; 0 when the registers came back as they were.
[[gnu::noinline]] uintptr_t run_watched(const Job* job, uintptr_t off)
{
    const Job* changed = job;
    auto routine = run;
#ifdef __i386__
    asm volatile(
        "movl %%esp, %%ebx\n\tandl $-16, %%esp\n\tsubl %%edx, %%esp\n\tpushl %%ebx\n\tpushl %%ebp\n\t"
        "pushl %%eax\n\tmovl $0x11223344, %%ebx\n\tmovl $0x22334455, %%esi\n\tmovl $0x33445566, %%edi\n\t"
        "movl $0x44556677, %%ebp\n\tcall *%%ecx\n\tleal -0x11223344(%%ebx), %%eax\n\t"
        "subl $0x22334455, %%esi\n\torl %%esi, %%eax\n\tsubl $0x33445566, %%edi\n\torl %%edi, %%eax\n\t"
        "subl $0x44556677, %%ebp\n\torl %%ebp, %%eax\n\taddl $4, %%esp\n\tpopl %%ebp\n\tpopl %%esp"
        : "+a"(changed), "+c"(routine), "+d"(off)
        :
        : "ebx", "esi", "edi", "memory", "cc");
#else
    asm volatile(
        "movq %%rsp, %%rax\n\tsubq $256, %%rsp\n\tandq $-16, %%rsp\n\tpushq %%rax\n\tpushq %%rbp\n\t"
        "movq $0x11223344, %%rbx\n\tmovq $0x22334455, %%r12\n\tmovq $0x33445566, %%r13\n\t"
        "movq $0x44556677, %%r14\n\tmovq $0x55667788, %%r15\n\tmovq $0x66778899, %%rbp\n\tcall *%%rcx\n\t"
        "leaq -0x11223344(%%rbx), %%rdi\n\tsubq $0x22334455, %%r12\n\torq %%r12, %%rdi\n\t"
        "subq $0x33445566, %%r13\n\torq %%r13, %%rdi\n\tsubq $0x44556677, %%r14\n\torq %%r14, %%rdi\n\t"
        "subq $0x55667788, %%r15\n\torq %%r15, %%rdi\n\tsubq $0x66778899, %%rbp\n\torq %%rbp, %%rdi\n\t"
        "popq %%rbp\n\tpopq %%rsp"
        : "+D"(changed), "+c"(routine)
        : "S"(off)
        : "rax", "rbx", "rdx", "r8", "r9", "r10", "r11", "r12", "r13", "r14", "r15", "memory", "cc");
#endif
    return reinterpret_cast<uintptr_t>(changed);
}

} // namespace

TEST(Environment, NeitherShowsNorChanges)
{
    std::vector<Control> controls;
    for (const uint32_t rounding : {0u, 1u, 2u, 3u})
        for (const uint32_t denormals : {0u, no_denormals})
            for (const uint32_t precision : {0x027Fu, 0x037Fu}) // of a double, of the whole register
                controls.push_back(
                    {0x1F80 | rounding << 13 | denormals, static_cast<uint16_t>(precision | rounding << 10)});
    Random random(23);
    Arena src, dst;
    for (const vexlor::Kernels* const kernels : all_sets())
        for (const AnyRow& row : row_table::all)
            for (int round = 0; round < 96 && (kernels == nullptr || row.in_every_set);) {
                const uint32_t n = random.below(row.most + 1);
                const RowArgs args = random_args(random);
                uint8_t* const s = src.place(row.src_bytes(n, args), Side::end, random.below(3) * 8);
                uint8_t* const d = dst.place(row.dst_bytes(n, args), Side::end, random.below(3) * 8);
                const uintptr_t off = sizeof off == 4 ? random.below(4) * 4 : 0;
                for (const Control& c : controls) {
                    src.randomize(random);
                    dst.randomize(random);
                    if (!row.model(src.twin(s), dst.twin(d), n, args))
                        break;
                    ++round;
                    const Job job{row, kernels, s, d, n, args};
                    set(c);
                    const uintptr_t registers = run_watched(&job, off);
                    const Control after = control();
                    const bool empty = x87_is_empty();
                    set(usual);
                    const auto where = testing::Message()
                                       << "row " << &row - row_table::all << ", set " << kernels << ", count "
                                       << n << ", control " << std::hex << c.mxcsr << ' ' << c.x87;
                    ASSERT_EQ(after.mxcsr & ~(row.floats ? mxcsr_flags : 0), c.mxcsr) << where;
                    ASSERT_EQ(after.x87, c.x87) << where;
                    ASSERT_TRUE(empty && registers == 0) << where;
                    const bool rounds = (c.x87 & 0x0C00) != 0 || (c.mxcsr & no_denormals) != 0;
                    ASSERT_TRUE((row.floats && rounds) || dst.same_as_twin(d)) << where;
                }
            }
}

// Contexts for drawing, and which routine sits in each of their slots.
#pragma once

#include <vexlor.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tool {

struct ContextDeleter {
    void operator()(vexlor_context* ctx) const { vexlor_context_destroy(ctx); }
};
using Context = std::unique_ptr<vexlor_context, ContextDeleter>;

// Which instruction sets a context draws with: positions in the words of --simd.
constexpr uint32_t simd_none = 0, simd_sse = 1, simd_sse2 = 2, simd_all = 3;

// simd_sse and simd_sse2 put routines of that set alone into the slots, and are a Failure where the processor
// does not have it; simd_all takes whatever the processor has.
Context new_context(uint32_t simd = simd_none);

// One routine slot of a context, by the name it has in the header, and the exported routine that sits there.
struct Slot {
    std::string name;
    const char* routine;
};
std::vector<Slot> slots_of(const vexlor_context& ctx);
bool uses(const vexlor_context& ctx, uint32_t set); // simd_sse or simd_sse2: whether any slot does

} // namespace tool

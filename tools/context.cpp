// A slot is known by its place in the context, a routine by its address and, for what instruction set it is,
// by its name's ending.
#include "context.h"

#include "failure.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>

namespace tool {

namespace {

using Routine = void (*)();

// Slots in their order: those between the state and the cache, then the conversions.
constexpr const char* slot_names[] = {
    "memcpy",
    "memcpy_stream",
    "memmove",
    "memmove_stream",
    "memset",
    "fill_blend_over_8888",
    "fill_blend_over_aone_8888",
    "fill_blend_over_arepl_8888",
    "copy_opaque_aone_8888",
    "copy_blend_over_src_8888",
    "copy_blend_over_src_aone_8888",
    "copy_blend_over_src_arepl_8888",
    "copy_blend_over_gbl_8888",
    "copy_blend_over_gbl_aone_8888",
    "copy_blend_over_gbl_arepl_8888",
    "copy_blend_over_src_pre_8888",
    "copy_blend_over_src_pre_aone_8888",
    "copy_blend_over_src_pre_arepl_8888",
    "copy_blend_over_gbl_pre_8888",
    "copy_blend_over_gbl_pre_aone_8888",
    "copy_blend_over_gbl_pre_arepl_8888",
    "copy_blend_over_gbl_565",
    "Y8V8Y8U8_2_X8R8G8B8",
    "Y8V8Y8U8_2_B8G8R8X8",
    "U8Y8V8Y8_2_X8R8G8B8",
    "U8Y8V8Y8_2_B8G8R8X8",
    "copy_blend_over_gbl_Y8V8Y8U8",
    "copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8",
    "copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8",
    "copy_blend_over_gbl_U8Y8V8Y8",
    "copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8",
    "copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8",
    "copy_test_8888",
};
constexpr size_t named = std::size(slot_names);
constexpr size_t conversions = std::extent_v<decltype(vexlor_context::conversions)>;
static_assert(offsetof(vexlor_context, cache) - offsetof(vexlor_context, memcpy) == named * sizeof(Routine));
static_assert(sizeof(vexlor_context) - offsetof(vexlor_context, conversions) ==
              conversions * sizeof(Routine));

size_t place(size_t slot)
{
    return slot < named ? offsetof(vexlor_context, memcpy) + slot * sizeof(Routine)
                        : offsetof(vexlor_context, conversions) + (slot - named) * sizeof(Routine);
}

void copy_slot(vexlor_context& to, const vexlor_context& from, size_t slot)
{
    std::memcpy(reinterpret_cast<char*>(&to) + place(slot),
                reinterpret_cast<const char*>(&from) + place(slot), sizeof(Routine));
}

struct Exported {
    const char* name;
    Routine address;
};

#define EXPORTED(routine)                                                                                    \
    Exported { #routine, reinterpret_cast < Routine>(&(routine)) }
// All that fit into some slot.
const Exported* find(Routine address)
{
    static const Exported routines[] = {
        EXPORTED(vexlor_memcpy_x86),
        EXPORTED(vexlor_memcpy16_sse),
        EXPORTED(vexlor_memcpy_stream_sse),
        EXPORTED(vexlor_memcpy),
        EXPORTED(vexlor_memmove),
        EXPORTED(vexlor_memset),
        EXPORTED(vexlor_memset_stream_sse),
        EXPORTED(vexlor_1d_fill_blend_over_8888),
        EXPORTED(vexlor_1d_fill_blend_over_aone_8888),
        EXPORTED(vexlor_1d_fill_blend_over_arepl_8888),
        EXPORTED(vexlor_1d_copy_opaque_aone_8888),
        EXPORTED(vexlor_1d_copy_blend_over_src_8888),
        EXPORTED(vexlor_1d_copy_blend_over_src_8888_sse2),
        EXPORTED(vexlor_1d_copy_blend_over_src_aone_8888),
        EXPORTED(vexlor_1d_copy_blend_over_src_arepl_8888),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_8888),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_8888_sse2),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_aone_8888),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_arepl_8888),
        EXPORTED(vexlor_1d_copy_blend_over_src_pre_8888),
        EXPORTED(vexlor_1d_copy_blend_over_src_pre_8888_sse2),
        EXPORTED(vexlor_1d_copy_blend_over_src_pre_aone_8888),
        EXPORTED(vexlor_1d_copy_blend_over_src_pre_arepl_8888),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_pre_8888),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_pre_8888_sse2),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_pre_aone_8888),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_pre_arepl_8888),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_565),
        EXPORTED(vexlor_1d_Y8V8Y8U8_2_X8R8G8B8),
        EXPORTED(vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2),
        EXPORTED(vexlor_1d_Y8V8Y8U8_2_B8G8R8X8),
        EXPORTED(vexlor_1d_U8Y8V8Y8_2_X8R8G8B8),
        EXPORTED(vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2),
        EXPORTED(vexlor_1d_U8Y8V8Y8_2_B8G8R8X8),
        EXPORTED(vexlor_1d_X8R8G8B8_2_Y8V8Y8U8),
        EXPORTED(vexlor_1d_B8G8R8X8_2_Y8V8Y8U8),
        EXPORTED(vexlor_1d_X8R8G8B8_2_U8Y8V8Y8),
        EXPORTED(vexlor_1d_B8G8R8X8_2_U8Y8V8Y8),
        EXPORTED(vexlor_1d_passthrough),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8),
        EXPORTED(vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8),
        EXPORTED(vexlor_1d_copy_test_8888),
    };
    for (const Exported& exported : routines)
        if (exported.address == address)
            return &exported;
    return nullptr;
}
#undef EXPORTED

Slot slot_of(const vexlor_context& ctx, size_t slot)
{
    Routine address = nullptr;
    std::memcpy(&address, reinterpret_cast<const char*>(&ctx) + place(slot), sizeof address);
    const Exported* const exported = find(address);
    return {slot < named ? slot_names[slot] : "conversions[" + std::to_string(slot - named) + "]",
            exported != nullptr  ? exported->name
            : address != nullptr ? "a routine that is not exported"
                                 : "empty"};
}

bool is_of(const Slot& slot, uint32_t set)
{
    return std::string_view(slot.routine).ends_with(set == simd_sse ? "_sse" : "_sse2");
}

} // namespace

std::vector<Slot> slots_of(const vexlor_context& ctx)
{
    std::vector<Slot> slots;
    for (size_t i = 0; i < named + conversions; ++i)
        slots.push_back(slot_of(ctx, i));
    return slots;
}

bool uses(const vexlor_context& ctx, uint32_t set)
{
    for (const Slot& slot : slots_of(ctx))
        if (is_of(slot, set))
            return true;
    return false;
}

Context new_context(uint32_t simd)
{
    vexlor_context* ctx = nullptr;
    vexlor_context_create(&ctx);
    if (ctx == nullptr)
        throw std::bad_alloc();
    Context context(ctx);
    vexlor_context_set_simd(ctx, simd != simd_none);
    if (simd == simd_none || simd == simd_all)
        return context;
    if (!uses(*ctx, simd))
        throw Failure("--simd",
                      simd == simd_sse ? "this processor has no SSE" : "this processor has no SSE2");
    const Context portable = new_context();
    for (size_t i = 0; i < named + conversions; ++i)
        if (!is_of(slot_of(*ctx, i), simd))
            copy_slot(*ctx, *portable, i);
    return context;
}

} // namespace tool

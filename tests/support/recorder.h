// Routines that only write down what they are called with, for every kind of slot.
#pragma once

#include "vexlor.h"
#include <memory>
#include <vector>

using Call = std::vector<uint64_t>;
inline std::vector<Call> calls;

template <class T> uint64_t number(T value)
{
    if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<uintptr_t>(value);
    else
        return static_cast<uint32_t>(value);
}

template <class... Args> void record(Args... args) { calls.push_back({number(args)...}); }

template <class... Args> auto recorder(void (*)(Args...)) { return &record<Args...>; }

// What tests do to a slot without knowing its type.
struct Slot {
    void (*record)(vexlor_context*);
    void (*empty)(vexlor_context*);
};

template <auto Member>
constexpr Slot slot{[](vexlor_context* ctx) { ctx->*Member = recorder(ctx->*Member); },
                    [](vexlor_context* ctx) { ctx->*Member = nullptr; }};

struct Destroy {
    void operator()(vexlor_context* ctx) const { vexlor_context_destroy(ctx); }
};
using Context = std::unique_ptr<vexlor_context, Destroy>;

inline Context make_context()
{
    vexlor_context* ctx = nullptr;
    vexlor_context_create(&ctx);
    return Context(ctx);
}

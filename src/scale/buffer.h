// Memory of one scale call.
#pragma once

#include "base.h"

#include <stdlib.h>

namespace vexlor {
namespace {

// False where there is no memory.
class Buffer {
public:
    explicit Buffer(u64 bytes)
        : memory(bytes != 0 && bytes <= PTRDIFF_MAX ? malloc(static_cast<size_t>(bytes)) : nullptr)
    {}
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer() { free(memory); }
    explicit operator bool() const { return memory != nullptr; }
    template <class T = u8> T* at(u64 bytes = 0) const
    {
        return reinterpret_cast<T*>(static_cast<u8*>(memory) + bytes);
    }

private:
    void* memory;
};

} // namespace
} // namespace vexlor

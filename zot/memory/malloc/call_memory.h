#pragma once

#include <cstddef>

// What the C library's allocator does for large memory is left to it.
namespace ZOTMem {

class CallMemory {
public:
    CallMemory() noexcept {}
    CallMemory(const CallMemory&) = delete;
    CallMemory& operator=(const CallMemory&) = delete;
    ~CallMemory() {}
};

inline void PreferLargePages(void*, std::size_t) noexcept {}

}  // namespace ZOTMem

#pragma once

#include <cstddef>

namespace ZOTMem {

// While one lives, the thread keeps all large memory that it gives back, whatever its size, and takes it
// before it asks the system, which clears what it gives: what the parse of a large page needed serves its
// content tree, and what the tree needed its text. The last one on a thread gives the rest back. They nest.
class CallMemory {
public:
    CallMemory() noexcept;
    CallMemory(const CallMemory&) = delete;
    CallMemory& operator=(const CallMemory&) = delete;
    ~CallMemory();
};

// Asks for pages as large as the system has them where memory of another allocator, which nobody has written
// to yet, is large. Nothing depends on the answer. The wish stays with the addresses, also when the other
// allocator gives them to somebody else.
void PreferLargePages(void* memory, std::size_t bytes) noexcept;

}  // namespace ZOTMem

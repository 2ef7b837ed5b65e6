// The memory pool on the C library's allocator.

#include <cstdlib>
#include <zot/memory.h>

namespace ZOTMem {

void* MemoryPool::New(unsigned int size) noexcept {
    return std::malloc(size);
}

void MemoryPool::Delete(void* memory) noexcept {
    std::free(memory);
}

}  // namespace ZOTMem

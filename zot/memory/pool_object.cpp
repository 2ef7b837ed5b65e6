#include <limits>
#include <new>
#include <zot/memory.h>

namespace ZOT {

void* PoolAllocate(std::size_t size) noexcept {
    if (size == 0) return nullptr;
    if (size <= std::numeric_limits<unsigned int>::max()) {
        void* const memory = ZOTMem::MemoryPool::New(static_cast<unsigned int>(size));
        if (memory != nullptr) return memory;
    }
    if (const std::new_handler handler = std::get_new_handler()) handler();
    return nullptr;
}

void PoolFree(void* memory) noexcept {
    if (memory != nullptr) ZOTMem::MemoryPool::Delete(memory);
}

void* PoolObject::operator new(std::size_t size) noexcept {
    return PoolAllocate(size);
}
void* PoolObject::operator new[](std::size_t size) noexcept {
    return PoolAllocate(size);
}
void PoolObject::operator delete(void* memory) noexcept {
    PoolFree(memory);
}
void PoolObject::operator delete[](void* memory) noexcept {
    PoolFree(memory);
}

}  // namespace ZOT

#include <limits>
#include <new>

#include <zot/memory.h>

#include "pool.h"

namespace ZOTMem {

void* MemoryPool::New(unsigned int size) noexcept {
    void* const memory = FastNew(size);
    return memory != nullptr || size == 0 ? memory : SlowNew(size);
}

void MemoryPool::Delete(void* memory) noexcept {
    if (memory != nullptr) PoolDelete(memory);
}

}  // namespace ZOTMem

namespace ZOT {

namespace {

// A handler may say by an exception that there is no more memory; here the null pointer says it.
void CallNewHandler() {
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) return;
    try {
        handler();
    } catch (const std::bad_alloc&) {
    }
}

// Kept out of Allocate, so that the usual request saves no registers.
[[gnu::noinline]] void* AllocateSlowly(std::size_t size) {
    if (size == 0) return nullptr;
    if (size <= std::numeric_limits<unsigned int>::max()) {
        void* const memory = ZOTMem::SlowNew(size);
        if (memory != nullptr) return memory;
    }
    CallNewHandler();
    return nullptr;
}

inline void* Allocate(std::size_t size) {
    void* const memory = ZOTMem::FastNew(size);
    return memory != nullptr ? memory : AllocateSlowly(size);
}

// Kept in 32 bits, like all sizes of the pool.
void* Reallocate(void* memory, std::size_t used, std::size_t size) {
    if (size == 0) return nullptr;
    if (size <= std::numeric_limits<unsigned int>::max()) {
        void* const moved = ZOTMem::SlowReallocate(memory, used, size);
        if (moved != nullptr) return moved;
    }
    CallNewHandler();
    return nullptr;
}

inline void Free(void* memory) {
    if (memory != nullptr) ZOTMem::PoolDelete(memory);
}

}  // namespace

void* PoolAllocate(std::size_t size) noexcept {
    return Allocate(size);
}
void* PoolReallocate(void* memory, std::size_t used, std::size_t size) noexcept {
    return memory == nullptr ? Allocate(size) : Reallocate(memory, used, size);
}
void PoolFree(void* memory) noexcept {
    Free(memory);
}

void* PoolObject::operator new(std::size_t size) noexcept {
    return Allocate(size);
}
void* PoolObject::operator new[](std::size_t size) noexcept {
    return Allocate(size);
}
void PoolObject::operator delete(void* memory) noexcept {
    Free(memory);
}
void PoolObject::operator delete[](void* memory) noexcept {
    Free(memory);
}

}  // namespace ZOT

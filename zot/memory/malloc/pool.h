#pragma once

#include <cstddef>
#include <cstdlib>

#include "pool_observer.h"

// The pool on the C library's allocator: where that is as quick as anything, and under sanitizers, which see
// every object this way.
namespace ZOTMem {

// Sends every request of this thread onto the slow way. Nothing to do here: poolObserver says it all.
inline void SetSlow(bool) {}

// There is no faster way than the slow one.
inline void* FastNew(std::size_t) {
    return nullptr;
}

inline void* SlowNew(std::size_t size) {
    PoolObserver* const observer = poolObserver.load(std::memory_order_relaxed);
    if (observer != nullptr && !observer->Grant()) [[unlikely]]
        return nullptr;
    return std::malloc(size);
}

// `memory`, which is not null, as `size` bytes; null when memory runs out.
inline void* SlowReallocate(void* memory, std::size_t, std::size_t size) {
    PoolObserver* const observer = poolObserver.load(std::memory_order_relaxed);
    if (observer != nullptr && !observer->Grant()) [[unlikely]]
        return nullptr;
    void* const moved = std::realloc(memory, size);
    if (observer != nullptr && moved != nullptr) [[unlikely]]
        observer->Took();
    return moved;
}

// `memory` is not null.
inline void PoolDelete(void* memory) {
    ObserveDelete();
    std::free(memory);
}

}  // namespace ZOTMem

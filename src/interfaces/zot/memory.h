#pragma once

#include <cstddef>
#include <zot/export.h>

namespace ZOTMem {

// Where every object, node and buffer of the library comes from. Any thread may call it; memory may be freed
// on another thread than the one that asked for it. It never throws.
class QUILL_API MemoryPool {
public:
    // `size` bytes aligned for any fundamental type, or null when there are none. 0 bytes give null.
    static void* New(unsigned int size) noexcept;

    // Takes back what New gave. Null does nothing.
    static void Delete(void* memory) noexcept;
};

}  // namespace ZOTMem

namespace ZOT {

// Base of everything that is allocated from the memory pool. It adds no field.
//
// The operators never throw: a failed allocation calls the installed new-handler once (if there is one),
// gives a null pointer and runs no constructor, so the result of `new` must be looked at. A std::bad_alloc
// that the handler throws is caught. 0 bytes give null without asking the pool. The process-wide operators
// are not touched.
class QUILL_API PoolObject {
public:
    static void* operator new(std::size_t size) noexcept;
    static void* operator new[](std::size_t size) noexcept;
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* memory) noexcept;
    static void operator delete[](void* memory) noexcept;
    static void operator delete(void*, void*) noexcept {}
};

// Raw bytes under the rules of PoolObject. PoolReallocate gives `size` bytes that begin with the first `used`
// of `memory` (null: there are none), which is then given back; a null result leaves `memory` as it was.
// Large memory is moved without being copied where the platform can.
QUILL_API void* PoolAllocate(std::size_t size) noexcept;
QUILL_API void* PoolReallocate(void* memory, std::size_t used, std::size_t size) noexcept;
QUILL_API void PoolFree(void* memory) noexcept;

}  // namespace ZOT

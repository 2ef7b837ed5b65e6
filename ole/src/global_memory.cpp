#include <ole/global_memory.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

// A fixed block is its bytes with their size in front; the handle is the address of the bytes. A moveable
// block is a record of its own; its handle is the record's address plus one, which no address of bytes is.
//
//   fixed      [ size ][ bytes ... ]          moveable   [ bytes, size, locks ]
//                       ^ handle                          ^ handle - 1

namespace {

struct alignas(std::max_align_t) FixedBlock {
    SIZE_T size;
};

struct MoveableBlock {
    void* bytes;
    SIZE_T size;
    unsigned locks;
};

bool IsMoveable(HGLOBAL memory) {
    return (reinterpret_cast<std::uintptr_t>(memory) & 1) != 0;
}

MoveableBlock* Moveable(HGLOBAL memory) {
    return reinterpret_cast<MoveableBlock*>(static_cast<char*>(memory) - 1);
}

FixedBlock* Fixed(HGLOBAL memory) {
    return static_cast<FixedBlock*>(memory) - 1;
}

void ZeroTail(void* bytes, SIZE_T from, SIZE_T to, UINT flags) {
    if ((flags & GMEM_ZEROINIT) != 0 && to > from)
        std::memset(static_cast<char*>(bytes) + from, 0, to - from);
}

HGLOBAL AllocateFixed(UINT flags, SIZE_T bytes) {
    if (bytes > SIZE_MAX - sizeof(FixedBlock)) return nullptr;
    auto* const block = static_cast<FixedBlock*>(std::malloc(sizeof(FixedBlock) + bytes));
    if (block == nullptr) return nullptr;
    block->size = bytes;
    ZeroTail(block + 1, 0, bytes, flags);
    return block + 1;
}

HGLOBAL AllocateMoveable(UINT flags, SIZE_T bytes) {
    auto* const block = static_cast<MoveableBlock*>(std::malloc(sizeof(MoveableBlock)));
    if (block == nullptr) return nullptr;
    *block = {bytes == 0 ? nullptr : std::malloc(bytes), bytes, 0};
    if (block->bytes == nullptr && bytes != 0) {
        std::free(block);
        return nullptr;
    }
    ZeroTail(block->bytes, 0, bytes, flags);
    return reinterpret_cast<char*>(block) + 1;
}

HGLOBAL ReallocateFixed(HGLOBAL memory, SIZE_T bytes, UINT flags) {
    FixedBlock* const block = Fixed(memory);
    const SIZE_T old = block->size;
    if (bytes <= old) {
        block->size = bytes;
        return memory;
    }
    if ((flags & GMEM_MOVEABLE) == 0 || bytes > SIZE_MAX - sizeof(FixedBlock)) return nullptr;
    auto* const grown = static_cast<FixedBlock*>(std::realloc(block, sizeof(FixedBlock) + bytes));
    if (grown == nullptr) return nullptr;
    grown->size = bytes;
    ZeroTail(grown + 1, old, bytes, flags);
    return grown + 1;
}

// Null for 0 bytes, and when memory runs out.
void* Resized(void* old, SIZE_T bytes) {
    if (bytes != 0) return std::realloc(old, bytes);
    std::free(old);
    return nullptr;
}

// A locked block stays where somebody may be looking at it.
HGLOBAL ReallocateMoveable(HGLOBAL memory, SIZE_T bytes, UINT flags) {
    MoveableBlock* const block = Moveable(memory);
    if (block->locks != 0 && bytes > block->size) return nullptr;
    if (block->locks == 0) {
        void* const moved = Resized(block->bytes, bytes);
        if (moved == nullptr && bytes != 0) return nullptr;
        block->bytes = moved;
    }
    ZeroTail(block->bytes, block->size, bytes, flags);
    block->size = bytes;
    return memory;
}

}  // namespace

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    return (flags & GMEM_MOVEABLE) != 0 ? AllocateMoveable(flags, bytes) : AllocateFixed(flags, bytes);
}

HGLOBAL GlobalReAlloc(HGLOBAL memory, SIZE_T bytes, UINT flags) {
    if (memory == nullptr) return nullptr;
    return IsMoveable(memory) ? ReallocateMoveable(memory, bytes, flags)
                              : ReallocateFixed(memory, bytes, flags);
}

HGLOBAL GlobalFree(HGLOBAL memory) {
    if (memory == nullptr) return nullptr;
    if (IsMoveable(memory)) {
        std::free(Moveable(memory)->bytes);
        std::free(Moveable(memory));
    } else {
        std::free(Fixed(memory));
    }
    return nullptr;
}

SIZE_T GlobalSize(HGLOBAL memory) {
    if (memory == nullptr) return 0;
    return IsMoveable(memory) ? Moveable(memory)->size : Fixed(memory)->size;
}

void* GlobalLock(HGLOBAL memory) {
    if (memory == nullptr || !IsMoveable(memory)) return memory;
    if (Moveable(memory)->bytes == nullptr) return nullptr;
    ++Moveable(memory)->locks;
    return Moveable(memory)->bytes;
}

BOOL GlobalUnlock(HGLOBAL memory) {
    if (memory == nullptr || !IsMoveable(memory) || Moveable(memory)->locks == 0) return FALSE;
    return --Moveable(memory)->locks != 0 ? TRUE : FALSE;
}

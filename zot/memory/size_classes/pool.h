#pragma once

#include <cstddef>
#include <cstdint>

// The pool as free lists, one for each size class and thread, so that the usual request is one list operation
// without a lock. An object may be freed on another thread; its block then changes over to that thread's
// lists. Lists that grow too long, and the lists of a thread that ends, go to a store that all threads share
// (slow_pool.cpp).
//
//   stride bytes, a multiple of 16
//   | tag (8) | object (stride - 8), aligned to 16 |
//
// The low half of a tag is the stride of the block, 0 for a large one, which comes from the C library.
namespace ZOTMem {

constexpr unsigned int kTagBytes = 8;
constexpr unsigned int kGranule = 16;
constexpr unsigned int kLargestStride = 256;
constexpr unsigned int kLargestSmall = kLargestStride - kTagBytes;

// May alias: the compiler must not move what an object writes across the list operations on the same memory.
struct [[gnu::may_alias]] FreeBlock {
    FreeBlock* next;
};

struct FreeList {
    FreeBlock* first;
    std::int64_t budget;  // blocks it may take in before its length is looked at
};
static_assert(sizeof(FreeList) == kGranule, "the stride of a class is the offset of its list");

// Entry 0 has no blocks and no budget: it sends large ones onto the slow way.
struct ThreadCache {
    FreeList lists[kLargestStride / kGranule + 1];
};

// All zero at first: every list sends its first request onto the slow way, which sets it up.
extern constinit thread_local ThreadCache cache __attribute__((tls_model("initial-exec")));

void* SlowNew(unsigned int size);
void SlowDelete(void* memory);

// Sends every request of this thread onto the slow way, or no longer.
void SetSlow(bool slow);

inline FreeList& ListOf(std::uint32_t stride) {
    return *reinterpret_cast<FreeList*>(reinterpret_cast<char*>(&cache) + stride);
}

inline std::uint32_t StrideOf(const void* memory) {
    return reinterpret_cast<const std::uint32_t*>(
        memory)[-static_cast<int>(kTagBytes / sizeof(std::uint32_t))];
}

// A block of the thread's own lists, or null where it takes the slow way. For any size, 0 too.
inline void* FastNew(std::size_t size) {
    if (size - 1 >= kLargestSmall) [[unlikely]]
        return nullptr;
    FreeList& list = ListOf((static_cast<std::uint32_t>(size) + kTagBytes + kGranule - 1) & ~(kGranule - 1));
    FreeBlock* const block = list.first;
    if (block != nullptr) [[likely]]
        list.first = block->next;
    return block;
}

// `memory` is not null.
inline void PoolDelete(void* memory) {
    FreeList& list = ListOf(StrideOf(memory));
    if (--list.budget < 0) [[unlikely]]
        return SlowDelete(memory);
    auto* const block = static_cast<FreeBlock*>(memory);
    block->next = list.first;
    list.first = block;
}

}  // namespace ZOTMem

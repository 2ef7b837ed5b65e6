#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "pool_observer.h"

// The pool as chunks, which each thread fills from their beginning to their end:
//
//   kChunkBytes, aligned to them
//   | head | object | object | object |  room  |
//                                     next     end
//
// Objects are never looked for: the chunk counts those that live, and goes back as a whole with the last of
// them. A page's objects are made together and die together, so that is soon, and they stand in memory in the
// order in which every walk reads them. Asking moves `next`, freeing takes one off the count: no lock, no
// list, and no word beside the object. An object may be freed on another thread.
//
// What is too large for a chunk is alone in a span, chunks side by side under one head (spans.h).
namespace ZOTMem {

constexpr std::size_t kChunkBytes = 64 * 1024;
constexpr std::size_t kGranule = 16;  // objects are aligned to it
constexpr std::size_t kLargestInChunk = 16 * 1024;

struct alignas(64) SpanHead {
    std::atomic<std::int32_t> live;  // objects; more by kFilling while a thread fills the chunk
    bool alone;                      // one object that is too large for a chunk, which may be reallocated
    std::size_t bytes;               // of the span, a multiple of kChunkBytes
};

// The chunk that a thread fills. All null at first.
struct Filling {
    char* next;
    char* end;
    std::int32_t objects;  // made in it
};
extern constinit thread_local Filling filling __attribute__((tls_model("initial-exec")));

void* SlowNew(std::size_t size);
// `size` bytes that begin with the first `used` of `memory`, which is given back; null when memory runs out
// (`memory` is then as it was). `memory` is not null.
void* SlowReallocate(void* memory, std::size_t used, std::size_t size);
void SlowDelete(SpanHead* head);

// Sends every request of this thread onto the slow way, or no longer.
void SetSlow(bool slow);

inline SpanHead* HeadOf(void* memory) {
    return reinterpret_cast<SpanHead*>(reinterpret_cast<std::uintptr_t>(memory) & ~(kChunkBytes - 1));
}

// Room in the thread's chunk, or null where it takes the slow way. For any size, 0 too.
inline void* FastNew(std::size_t size) {
    if (size - 1 >= kLargestInChunk) [[unlikely]]
        return nullptr;
    const std::size_t bytes = (size + kGranule - 1) & ~(kGranule - 1);
    char* const memory = filling.next;
    if (bytes > static_cast<std::size_t>(filling.end - memory)) [[unlikely]]
        return nullptr;
    filling.next = memory + bytes;
    ++filling.objects;
    return memory;
}

// `memory` is not null.
inline void PoolDelete(void* memory) {
    SpanHead* const head = HeadOf(memory);
    if (poolObserver.load(std::memory_order_relaxed) != nullptr) [[unlikely]]
        ObserveDelete();
    if (head->live.fetch_sub(1, std::memory_order_acq_rel) == 1) [[unlikely]]
        SlowDelete(head);
}

}  // namespace ZOTMem

#pragma once

#include <cstddef>

#include "pool.h"

namespace ZOTMem {

// From the system: `bytes` (a multiple of kChunkBytes) aligned to kChunkBytes, in pages as large as the
// system has them; null when there are none. Any part of it that is a multiple of kChunkBytes may be given
// back.
void* MapSpan(std::size_t bytes) noexcept;
void UnmapSpan(void* span, std::size_t bytes) noexcept;

// Moves a whole span that MapSpan gave to a place where `bytes`, more than it has, have room. Null when the
// system has no memory, or cannot move without copying.
void* MoveSpan(void* span, std::size_t from, std::size_t bytes) noexcept;

// Free spans in the hands of one thread, so that page after page takes the same memory without a word to the
// system, which would take the pages away and clear them.
//
// At most kKeepBytes: one more, and all go back. So a page whose tree is larger than that costs a call to the
// system for every kKeepBytes.
class KeptSpans {
public:
    static constexpr std::size_t kKeepBytes = 16 * 1024 * 1024;

    constexpr KeptSpans() = default;

    // Null when memory runs out.
    void* TakeChunk();
    void* Take(std::size_t bytes);
    // Whether Take, for more than a chunk, would not ask the system.
    bool Has(std::size_t bytes) { return *BestFit(bytes) != nullptr; }
    void Give(void* span, std::size_t bytes);
    // Gives everything back to the system.
    void GiveBack();

private:
    struct Free {
        Free* next;
        std::size_t bytes;
    };

    Free** BestFit(std::size_t bytes);
    void* TakeBestFit(std::size_t bytes);
    void Keep(void* span, std::size_t bytes);

    // Chunks are asked from the system side by side: a few first, more with every time.
    static constexpr std::size_t kFirstBatch = 4 * kChunkBytes;
    static constexpr std::size_t kLargestBatch = 64 * kChunkBytes;

    Free* chunks_ = nullptr;  // of one chunk, the last one given first
    Free* larger_ = nullptr;
    std::size_t bytes_ = 0;
    std::size_t batch_ = kFirstBatch;
};

}  // namespace ZOTMem

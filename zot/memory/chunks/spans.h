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
// system, which would take the pages away and clear them. At most kMostBytes, for a thread that reads large
// pages: no more than its pages have needed.
class KeptSpans {
public:
    static constexpr std::size_t kChunksBytes = 12 * 1024 * 1024;
    static constexpr std::size_t kSurplusBytes = 4 * 1024 * 1024;
    static constexpr std::size_t kLargerBytes = 12 * 1024 * 1024;
    static constexpr std::size_t kLeastBatch = 256 * 1024;
    static constexpr std::size_t kLargestBatch = 4 * 1024 * 1024;
    static constexpr std::size_t kMostBytes = kChunksBytes + kSurplusBytes + kLargerBytes + kLargestBatch;

    constexpr KeptSpans() = default;

    // Null when memory runs out.
    void* TakeChunk();
    // At least `bytes`, which is then what the span has; more than a chunk.
    void* Take(std::size_t& bytes);
    // Whether Take would not ask the system.
    bool Has(std::size_t bytes) { return *larger_.BestFit(bytes) != nullptr; }

    void GiveChunk(void* chunk);
    void Give(void* span, std::size_t bytes);  // more than a chunk

    // Gives everything back to the system.
    void GiveBack();

private:
    struct Free {
        Free* next;
        std::size_t bytes;
    };

    struct List {
        void Push(void* span, std::size_t size);
        void* Pop(Free** link);
        Free** BestFit(std::size_t size);
        void GiveBack();

        Free* first = nullptr;  // the last one given
        std::size_t bytes = 0;
    };

    List chunks_;
    List surplus_;  // chunks beyond, which go back together: the system is asked once for neighbours
    List larger_;   // never cut up: the next page wants them as they are

    // New chunks come side by side: a quarter of those that came already.
    std::size_t mapped_ = 0;
    char* rest_ = nullptr;  // of the last batch
    char* rest_end_ = nullptr;
};

}  // namespace ZOTMem

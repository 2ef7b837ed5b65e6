#pragma once

#include <cstddef>
#include <cstdint>

#include "pool.h"

namespace ZOTMem {

// From the system: `bytes` (a multiple of kChunkBytes) aligned to kChunkBytes, in pages as large as the
// system has them; null when there are none. Any part of it that is a multiple of kChunkBytes may be given
// back.
void* MapSpan(std::size_t bytes) noexcept;
void UnmapSpan(void* span, std::size_t bytes) noexcept;

// Gives a whole span room for `bytes`, more than it has: in place, or elsewhere by moving its pages. Null
// when the system has no memory, or cannot move it without copying, as where it was put together from
// several.
void* MoveSpan(void* span, std::size_t from, std::size_t bytes) noexcept;

constexpr std::size_t kHugePage = 2 * 1024 * 1024;
constexpr std::size_t kLeastHugeSpan = 4 * kHugePage;  // from here on spans are whole huge pages

// Free spans in the hands of one thread, so that page after page takes the same memory without a word to the
// system, which would take the pages away and clear them. At most kMostBytes, for a thread that reads large
// pages: no more than its pages have needed. Between Begin and End (CallMemory) it is whatever was given, for
// the same page.
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
    bool Has(std::size_t bytes) {
        return *larger_.BestFit(bytes) != nullptr || *idle_.Least(bytes) != nullptr;
    }
    // Takes `bytes` from `place` on: true when they are whole huge pages and were idle.
    bool TakeAt(void* place, std::size_t bytes);

    void GiveChunk(void* chunk);
    void Give(void* span, std::size_t bytes);  // more than a chunk

    // For a request that what is idle does not serve: it is not held on top of what the system gives.
    void GiveBackIdle() { idle_.GiveBack(); }

    void Begin() { ++calls_; }
    void End() {
        if (--calls_ == 0) Trim();
    }

    // Gives everything back to the system.
    void GiveBack();

private:
    struct Free {
        Free* next;
        std::size_t bytes;
    };

    bool TakeBatch();
    void Trim();

    struct List {
        void Push(void* span, std::size_t size);
        void* Pop(Free** link);
        void* Cut(Free** link, std::size_t size);
        Free** Least(std::size_t size, std::size_t below = SIZE_MAX);
        Free** BestFit(std::size_t size) { return Least(size, size + size / 2 + 1); }
        void GiveBack();

        Free* first = nullptr;  // the last one given
        std::size_t bytes = 0;
    };

    List chunks_;
    List surplus_;  // chunks beyond, which go back together: the system is asked once for neighbours
    List larger_;   // never cut up: the next page wants them as they are
    List idle_;  // what is too large for these lists, until the call ends: whole huge pages, cut up at will
    unsigned int calls_ = 0;

    // New chunks come side by side: a quarter of those that came already.
    std::size_t mapped_ = 0;
    char* rest_ = nullptr;  // of the last batch
    char* rest_end_ = nullptr;
};

}  // namespace ZOTMem

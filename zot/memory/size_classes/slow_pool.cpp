#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <mutex>
#include <new>
#include <utility>

#include <pthread.h>

#include "pool.h"
#include "pool_observer.h"

namespace ZOTMem {

constinit thread_local ThreadCache cache __attribute__((tls_model("initial-exec"))) = {};

namespace {

constexpr std::size_t kChunkBytes = 64 * 1024;        // asked from the C library at once
constexpr std::size_t kBatchBlocks = 64;              // a thread fetches at once
constexpr std::size_t kKeepBytes = 256 * 1024;        // of one class that a thread keeps, about
constexpr std::size_t kLeastTrimBytes = 1024 * 1024;  // of one class that the store keeps
constexpr std::size_t kClasses = kLargestStride / kGranule + 1;

struct Tag {
    std::uint32_t stride;
    std::uint32_t place;  // of the object in its chunk, in bytes
};
static_assert(sizeof(Tag) == kTagBytes);

Tag& TagOf(void* memory) {
    return static_cast<Tag*>(memory)[-1];
}

// A chunk holds blocks of one class.
struct alignas(kGranule) Chunk {
    Chunk* next;
    std::size_t home;  // blocks found in the store by Trim
};

Chunk* ChunkOf(FreeBlock* block) {
    return reinterpret_cast<Chunk*>(reinterpret_cast<char*>(block) - TagOf(block).place);
}

// The blocks of one class that are in no thread's hands. One thread at a time.
class SharedClass {
public:
    // Up to kBatchBlocks blocks as a list; null when memory runs out.
    FreeBlock* Fetch(std::uint32_t stride) {
        if (first_ == nullptr) return Carve(stride);
        FreeBlock* const batch = first_;
        FreeBlock* last = batch;
        std::size_t count = 1;
        for (; count != kBatchBlocks && last->next != nullptr; ++count) last = last->next;
        first_ = last->next;
        last->next = nullptr;
        blocks_ -= count;
        return batch;
    }

    // Takes in a list of `count` blocks from `first` to `last`.
    void Give(FreeBlock* first, FreeBlock* last, std::size_t count, std::uint32_t stride) {
        last->next = first_;
        first_ = first;
        blocks_ += count;
        if (blocks_ * stride >= trim_at_) Trim(stride);
    }

    // Gives chunks of which every block is here back to the C library. The next time comes when as much again
    // has been given, so that looking at every block costs each of them a constant time.
    void Trim(std::uint32_t stride) {
        for (FreeBlock* block = first_; block != nullptr; block = block->next) ++ChunkOf(block)->home;
        FreeBlock* kept = nullptr;
        Chunk* whole = nullptr;
        blocks_ = 0;
        for (FreeBlock* block = first_; block != nullptr;) {
            FreeBlock* const next = block->next;
            Chunk* const chunk = ChunkOf(block);
            if (chunk->home == (chunk == chunk_ ? carved_ : BlocksPerChunk(stride))) {
                chunk->next = std::exchange(whole, chunk);
                chunk->home = kListed;
                if (chunk == chunk_) chunk_ = nullptr;
            }
            if (chunk->home != kListed) {
                block->next = kept;
                kept = block;
                ++blocks_;
            }
            block = next;
        }
        for (FreeBlock* block = kept; block != nullptr; block = block->next) ChunkOf(block)->home = 0;
        while (whole != nullptr) std::free(std::exchange(whole, whole->next));
        first_ = kept;
        trim_at_ = std::max(kLeastTrimBytes, 2 * blocks_ * stride);
    }

private:
    static std::size_t BlocksPerChunk(std::uint32_t stride) {
        return (kChunkBytes - sizeof(Chunk) - kTagBytes) / stride;
    }

    // New blocks from the present chunk, or a new one.
    FreeBlock* Carve(std::uint32_t stride) {
        if (chunk_ == nullptr || carved_ == BlocksPerChunk(stride)) {
            auto* const chunk = static_cast<Chunk*>(std::malloc(kChunkBytes));
            if (chunk == nullptr) return nullptr;
            chunk_ = ::new (chunk) Chunk{nullptr, 0};
            carved_ = 0;
        }
        FreeBlock* batch = nullptr;
        const std::size_t end = std::min(carved_ + kBatchBlocks, BlocksPerChunk(stride));
        for (std::size_t i = end; i != carved_; --i) {
            const std::size_t place = sizeof(Chunk) + (i - 1) * stride + kGranule;
            char* const object = reinterpret_cast<char*>(chunk_) + place;
            ::new (object - kTagBytes) Tag{stride, static_cast<std::uint32_t>(place)};
            batch = ::new (object) FreeBlock{batch};
        }
        carved_ = end;
        return batch;
    }

    static constexpr std::size_t kListed = ~std::size_t{0};

    FreeBlock* first_ = nullptr;
    std::size_t blocks_ = 0;
    std::size_t trim_at_ = kLeastTrimBytes;
    Chunk* chunk_ = nullptr;  // the one that is not carved to its end
    std::size_t carved_ = 0;  // blocks of it
};

constinit std::mutex storeLock;
constinit SharedClass store[kClasses];

// Whether this thread keeps no blocks: because it is about to end, or wants every request seen.
constinit thread_local bool keepsNothing = false;

std::int64_t Budget(std::uint32_t stride) {
    return static_cast<std::int64_t>(kKeepBytes / stride);
}

void GiveAll(FreeList& list, std::uint32_t stride) {
    FreeBlock* const first = std::exchange(list.first, nullptr);
    list.budget = 0;
    if (first == nullptr) return;
    FreeBlock* last = first;
    std::size_t count = 1;
    for (; last->next != nullptr; ++count) last = last->next;
    const std::lock_guard guard(storeLock);
    store[stride / kGranule].Give(first, last, count, stride);
}

void GiveAll() {
    for (std::uint32_t stride = kGranule; stride <= kLargestStride; stride += kGranule)
        GiveAll(ListOf(stride), stride);
}

// Has the lists of a thread that ends given to the store. A key of the C library, unlike a destructor of the
// language, does not keep the library loaded until the thread ends.
class ThreadEnd {
public:
    void Watch() {
        const std::lock_guard guard(storeLock);
        if (!created_) created_ = pthread_key_create(&key_, Ended) == 0;
        if (created_) pthread_setspecific(key_, &cache);
    }

    void Forget() {
        if (created_) pthread_key_delete(key_);
        created_ = false;
    }

private:
    static void Ended(void*) {
        keepsNothing = true;
        GiveAll();
    }

    bool created_ = false;
    pthread_key_t key_{};
};

constinit ThreadEnd threadEnd;
constinit thread_local bool watched = false;

void Watch() {
    if (!std::exchange(watched, true)) threadEnd.Watch();
}

void* NewLarge(std::size_t size) {
    auto* const memory = static_cast<char*>(std::malloc(size + kGranule));
    if (memory == nullptr) return nullptr;
    ::new (memory + kGranule - kTagBytes) Tag{0, 0};
    return memory + kGranule;
}

void DeleteLarge(void* memory) {
    std::free(static_cast<char*>(memory) - kGranule);
}

// Runs when the library is unloaded, after everything of it that could still use the pool. Blocks in the
// lists of other threads keep their chunks.
__attribute__((destructor(101))) void Unload() {
    threadEnd.Forget();
    keepsNothing = true;
    GiveAll();
    const std::lock_guard guard(storeLock);
    for (std::uint32_t stride = kGranule; stride <= kLargestStride; stride += kGranule) {
        store[stride / kGranule].Trim(stride);
    }
}

}  // namespace

void* SlowNew(unsigned int size) {
    PoolObserver* const observer = poolObserver.load(std::memory_order_relaxed);
    if (observer != nullptr && !observer->Grant()) return nullptr;
    if (size > kLargestSmall || keepsNothing || observer != nullptr) return NewLarge(size);
    Watch();
    const std::uint32_t stride = (size + kTagBytes + kGranule - 1) & ~(kGranule - 1);
    FreeBlock* batch = nullptr;
    {
        const std::lock_guard guard(storeLock);
        batch = store[stride / kGranule].Fetch(stride);
    }
    if (batch == nullptr) return nullptr;
    FreeList& list = ListOf(stride);
    list.first = batch->next;
    return batch;
}

void SlowDelete(void* memory) {
    PoolObserver* const observer = poolObserver.load(std::memory_order_relaxed);
    if (observer != nullptr) observer->Took();
    const std::uint32_t stride = StrideOf(memory);
    FreeList& list = ListOf(stride);
    list.budget = 0;
    if (stride == 0) return DeleteLarge(memory);

    list.first = ::new (memory) FreeBlock{list.first};
    if (keepsNothing) return GiveAll(list, stride);
    Watch();
    std::int64_t length = 0;
    for (const FreeBlock* block = list.first; block != nullptr && length <= Budget(stride);
         block = block->next)
        ++length;
    if (length > Budget(stride)) GiveAll(list, stride);
    list.budget = Budget(stride);
}

void SetSlow(bool slow) {
    keepsNothing = slow;
    if (slow) GiveAll();
}

}  // namespace ZOTMem

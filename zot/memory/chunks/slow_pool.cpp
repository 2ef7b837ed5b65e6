#include <cstring>
#include <mutex>
#include <new>
#include <utility>

#include <pthread.h>

#include "call_memory.h"
#include "pool.h"
#include "spans.h"

namespace ZOTMem {

constinit thread_local Filling filling __attribute__((tls_model("initial-exec"))) = {};

namespace {

constexpr std::int32_t kFilling = 1 << 30;  // more than the objects of a chunk

// What a thread has of the pool, beside the chunk that it fills.
constinit thread_local KeptSpans kept;
constinit thread_local char* limit = nullptr;  // where the chunk ends; `filling.end` may hide it
constinit thread_local bool slow = false;
constinit thread_local bool ending = false;  // the thread keeps nothing any more
constinit thread_local bool watched = false;

// Has what a thread keeps given back when it ends. A key of the C library, unlike a destructor of the
// language, does not keep the library loaded until the thread ends.
class ThreadEnd {
public:
    void Watch() {
        const std::lock_guard guard(lock_);
        if (!created_) created_ = pthread_key_create(&key_, Ended) == 0;
        if (created_) pthread_setspecific(key_, &filling);
    }

    void Forget() {
        const std::lock_guard guard(lock_);
        if (created_) pthread_key_delete(key_);
        created_ = false;
    }

    static void Ended(void*);

private:
    std::mutex lock_;
    bool created_ = false;
    pthread_key_t key_{};
};

constinit ThreadEnd threadEnd;

// To be called where the thread may come to keep something.
void WatchEnd() {
    if (!ending && !std::exchange(watched, true)) threadEnd.Watch();
}

void Give(SpanHead* head) {
    const std::size_t bytes = head->bytes;
    if (bytes == kChunkBytes) {
        kept.GiveChunk(head);
    } else {
        kept.Give(head, bytes);
    }
    if (ending) return kept.GiveBack();
    WatchEnd();
}

// Leaves the thread's chunk to its objects. True when there are none any more, and the chunk may be filled
// again.
bool IsEmptyWhenLeft() {
    if (limit == nullptr) return false;
    const std::int32_t objects = std::exchange(filling.objects, 0);
    const std::int32_t off = kFilling - objects;
    return HeadOf(limit - 1)->live.fetch_sub(off, std::memory_order_acq_rel) == off;
}

void Fill(void* chunk) {
    auto* const head = ::new (chunk) SpanHead{kFilling, false, kChunkBytes};
    filling.next = reinterpret_cast<char*>(head + 1);
    limit = static_cast<char*>(chunk) + kChunkBytes;
    filling.end = slow ? filling.next : limit;
}

void LeaveChunk() {
    SpanHead* const head = limit == nullptr ? nullptr : HeadOf(limit - 1);
    if (IsEmptyWhenLeft()) Give(head);
    limit = filling.next = filling.end = nullptr;
}

void ThreadEnd::Ended(void*) {
    ending = true;
    LeaveChunk();
    kept.GiveBack();
}

bool FillAnotherChunk() {
    if (IsEmptyWhenLeft()) {
        Fill(HeadOf(limit - 1));
        return true;
    }
    limit = filling.next = filling.end = nullptr;
    WatchEnd();
    void* const chunk = kept.TakeChunk();
    if (chunk != nullptr) Fill(chunk);
    return chunk != nullptr;
}

void* NewInChunk(std::size_t size) {
    const std::size_t bytes = (size + kGranule - 1) & ~(kGranule - 1);
    if (bytes > static_cast<std::size_t>(limit - filling.next) && !FillAnotherChunk()) return nullptr;
    void* const memory = filling.next;
    filling.next += bytes;
    ++filling.objects;
    if (slow) filling.end = filling.next;
    if (ending) LeaveChunk();
    return memory;
}

// 0 for one that does not fit the address space.
std::size_t SpanFor(std::size_t size) {
    const std::size_t least = sizeof(SpanHead) + size;
    const std::size_t unit = least < kLeastHugeSpan ? kChunkBytes : kHugePage;
    const std::size_t bytes = least + unit - 1;
    return bytes < size ? 0 : bytes & ~(unit - 1);
}

void* NewAlone(std::size_t size) {
    std::size_t bytes = SpanFor(size);
    if (bytes == 0) return nullptr;
    WatchEnd();
    void* const span = bytes == kChunkBytes ? kept.TakeChunk() : kept.Take(bytes);
    return span == nullptr ? nullptr : ::new (span) SpanHead{1, true, bytes} + 1;
}

// In place, also where free memory follows, or by moving pages instead of bytes. Null when neither will do,
// and when the thread keeps a span that is large enough: its pages are there already.
void* ReallocateAlone(SpanHead* head, std::size_t size) {
    const std::size_t bytes = SpanFor(size);
    if (bytes == 0) return nullptr;
    if (bytes <= head->bytes) return head + 1;
    if (kept.TakeAt(reinterpret_cast<char*>(head) + head->bytes, bytes - head->bytes)) {
        head->bytes = bytes;
        return head + 1;
    }
    if (kept.Has(bytes)) return nullptr;
    kept.GiveBackIdle();
    auto* const moved = static_cast<SpanHead*>(MoveSpan(head, head->bytes, bytes));
    if (moved == nullptr) return nullptr;
    moved->bytes = bytes;
    return moved + 1;
}

bool IsGranted() {
    PoolObserver* const observer = poolObserver.load(std::memory_order_relaxed);
    return observer == nullptr || observer->Grant();
}

// Runs when the library is unloaded, after everything of it that could still use the pool. What other threads
// keep stays theirs.
__attribute__((destructor(101))) void Unload() {
    threadEnd.Forget();
    ThreadEnd::Ended(nullptr);
}

}  // namespace

void* SlowNew(std::size_t size) {
    if (!IsGranted()) return nullptr;
    return size > kLargestInChunk ? NewAlone(size) : NewInChunk(size);
}

void* SlowReallocate(void* memory, std::size_t used, std::size_t size) {
    SpanHead* const head = HeadOf(memory);
    const bool moves = head->alone && size > kLargestInChunk && !slow;
    if (moves) {
        if (void* const moved = ReallocateAlone(head, size)) return moved;
    }
    void* target = FastNew(size);
    if (target == nullptr) target = SlowNew(size);
    if (target == nullptr) return nullptr;
    std::memcpy(target, memory, used);
    PoolDelete(memory);
    return target;
}

void SlowDelete(SpanHead* head) {
    Give(head);
}

CallMemory::CallMemory() noexcept {
    kept.Begin();
}

CallMemory::~CallMemory() {
    kept.End();
}

void SetSlow(bool isSlow) {
    slow = isSlow;
    filling.end = slow ? filling.next : limit;
}

}  // namespace ZOTMem

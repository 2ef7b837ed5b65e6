#include <cerrno>
#include <cstdint>

#include <sys/mman.h>

#include "call_memory.h"
#include "spans.h"

namespace ZOTMem {

namespace {

void* Map(std::size_t bytes, int protection) {
    void* const memory = mmap(nullptr, bytes, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : memory;
}

// The system puts mappings side by side, so that where one is aligned the next one mostly is.
char* MapAligned(std::size_t bytes, std::size_t alignment, int protection) {
    auto* memory = static_cast<char*>(Map(bytes, protection));
    if (memory == nullptr || reinterpret_cast<std::uintptr_t>(memory) % alignment == 0) return memory;
    munmap(memory, bytes);
    memory = static_cast<char*>(Map(bytes + alignment, protection));
    if (memory == nullptr) return nullptr;
    const std::size_t before = alignment - reinterpret_cast<std::uintptr_t>(memory) % alignment;
    munmap(memory, before);
    if (before != alignment) munmap(memory + before + bytes, alignment - before);
    return memory + before;
}

std::size_t AlignmentOf(std::size_t bytes) {
    return bytes >= 2 * kHugePage ? kHugePage : kChunkBytes;
}

// Advice that is not taken does no harm.
void AdviseHugePages(void* span, std::size_t bytes) {
    if (bytes >= 2 * kHugePage) madvise(span, bytes, MADV_HUGEPAGE);
}

}  // namespace

void* MapSpan(std::size_t bytes) noexcept {
    char* const span = MapAligned(bytes, AlignmentOf(bytes), PROT_READ | PROT_WRITE);
    if (span != nullptr) AdviseHugePages(span, bytes);
    return span;
}

void UnmapSpan(void* span, std::size_t bytes) noexcept {
    munmap(span, bytes);
}

// In place first. That also tells a span that was put together from several mappings, which cannot be moved,
// before a place is taken for it.
void* MoveSpan(void* span, std::size_t from, std::size_t bytes) noexcept {
    if (reinterpret_cast<std::uintptr_t>(span) % AlignmentOf(bytes) == 0) {
        if (mremap(span, from, bytes, 0) == span) {
            AdviseHugePages(span, bytes);
            return span;
        }
        if (errno == EFAULT) return nullptr;
    }
    char* const place = MapAligned(bytes, AlignmentOf(bytes), PROT_NONE);
    if (place == nullptr) return nullptr;
    void* const moved = mremap(span, from, bytes, MREMAP_MAYMOVE | MREMAP_FIXED, place);
    // The system may have cleared the place before it failed, and another thread may have it by now: it is
    // not given back.
    if (moved == MAP_FAILED) return nullptr;
    AdviseHugePages(moved, bytes);
    return moved;
}

void PreferLargePages(void* memory, std::size_t bytes) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t begin = (address + kHugePage - 1) / kHugePage * kHugePage;
    const std::uintptr_t end = (address + bytes) / kHugePage * kHugePage;
    if (begin < end) AdviseHugePages(reinterpret_cast<void*>(begin), end - begin);
}

}  // namespace ZOTMem

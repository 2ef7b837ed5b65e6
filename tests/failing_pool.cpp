#include "failing_pool.h"

#include <atomic>
#include <cstdlib>
#include <zot/memory.h>

namespace {

constexpr unsigned int kNever = 0xFFFFFFFFu;

std::atomic<unsigned int> live{0};
std::atomic<unsigned int> left{kNever};  // allocations until they fail

}  // namespace

namespace ZOTMem {

void* MemoryPool::New(unsigned int size) noexcept {
    if (left == 0) return nullptr;
    if (left != kNever && --left == 0) return nullptr;
    ++live;
    return std::malloc(size);
}

void MemoryPool::Delete(void* memory) noexcept {
    if (memory != nullptr) --live;
    std::free(memory);
}

}  // namespace ZOTMem

namespace QuillNS {

unsigned int LiveAllocations() {
    return live;
}

FailFromNthAllocation::FailFromNthAllocation(unsigned int n) {
    left = n;
}
FailFromNthAllocation::~FailFromNthAllocation() {
    left = kNever;
}
bool FailFromNthAllocation::Happened() const {
    return left == 0;
}

}  // namespace QuillNS

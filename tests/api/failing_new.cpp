#include "api/failing_new.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

int countdown = 0;  // 0 and below: nothing is to fail
std::atomic<int> live{0};

}  // namespace

FailNthNew::FailNthNew(int n) {
    countdown = n;
}
FailNthNew::~FailNthNew() {
    countdown = 0;
}
bool FailNthNew::Happened() const {
    return countdown <= 0;
}

int LiveNews() {
    return live;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (countdown > 0 && --countdown == 0) return nullptr;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) ++live;
    return memory;
}

void* operator new(std::size_t size) {
    if (void* const memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) --live;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

#pragma once

#include <atomic>
#include <cstdint>
#include <zot/memory.h>

namespace ZOT {

// The reference count of a counted object: a signed 32-bit number that starts at 0. Copying an object never
// copies its count: a copy starts at 0, and the target of an assignment keeps its own.
//
// A counted class holds one as its first member (right after the virtual table where there is one), mutable,
// and offers NbRef, AddRef and Release, all const. Add and Sub are atomic with full ordering; Get is a plain
// read.
class SPRefCounter {
public:
    SPRefCounter() noexcept = default;
    SPRefCounter(const SPRefCounter&) noexcept {}
    SPRefCounter& operator=(const SPRefCounter&) noexcept { return *this; }
    ~SPRefCounter() = default;

    long Get() const noexcept { return count_.load(std::memory_order_relaxed); }
    long Add() noexcept { return count_.fetch_add(1) + 1; }
    long Sub() noexcept { return count_.fetch_sub(1) - 1; }

private:
    std::atomic<std::int32_t> count_{0};
};

}  // namespace ZOT

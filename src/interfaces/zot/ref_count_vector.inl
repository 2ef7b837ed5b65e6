#pragma once

#include <memory>
#include <new>

namespace ZOT {

template <class T, class Handle>
RefCountVector<T, Handle>::RefCountVector(std::size_t size) {
    if (!Reserve(size)) return;
    std::uninitialized_default_construct(begin_, limit_);
    end_ = limit_;
}

template <class T, class Handle>
RefCountVector<T, Handle>::~RefCountVector() {
    while (end_ != begin_) std::destroy_at(--end_);
    PoolFree(begin_);
}

template <class T, class Handle>
bool RefCountVector<T, Handle>::Reserve(std::size_t capacity) {
    if (capacity < Capacity() || capacity == 0) return true;
    if (capacity > static_cast<std::size_t>(-1) / sizeof(Handle)) return false;
    const std::size_t size = Size();
    auto* const slots =
        static_cast<Handle*>(PoolReallocate(begin_, size * sizeof(Handle), capacity * sizeof(Handle)));
    if (slots == nullptr) return false;
    begin_ = slots;
    end_ = slots + size;
    limit_ = slots + capacity;
    return true;
}

template <class T, class Handle>
bool RefCountVector<T, Handle>::Append(const Handle& handle) {
    if (end_ != limit_) {
        ::new (static_cast<void*>(end_)) Handle(handle);
        ++end_;
        return true;
    }
    Handle kept(handle);  // it may stand in this very array
    if (!Reserve(Size() == 0 ? 1 : 2 * Size())) return false;
    ::new (static_cast<void*>(end_)) Handle(kept);
    ++end_;
    return true;
}

template <class T, class Handle>
void RefCountVector<T, Handle>::Clear() {
    std::destroy(begin_, end_);
    end_ = begin_;
}

}  // namespace ZOT

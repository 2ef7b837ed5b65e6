#pragma once

#include <cstring>

namespace ZOT {

template <class T, class Handle>
RefCountVector<T, Handle>::RefCountVector(std::size_t size) {
    if (Reserve(size)) end_ = limit_;
}

template <class T, class Handle>
bool RefCountVector<T, Handle>::Reserve(std::size_t capacity) {
    if (capacity < Capacity() || capacity == 0) return true;
    Handle* const slots = new Handle[capacity];
    if (slots == nullptr) return false;
    const std::size_t size = Size();
    Move(begin_, end_, slots);
    delete[] begin_;
    begin_ = slots;
    end_ = slots + size;
    limit_ = slots + capacity;
    return true;
}

template <class T, class Handle>
bool RefCountVector<T, Handle>::Append(const Handle& handle) {
    if (end_ != limit_) {
        *end_++ = handle;
        return true;
    }
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may stand in this very array
    const Handle kept(handle);
    if (!Reserve(Size() == 0 ? 1 : 2 * Size())) return false;
    *end_++ = kept;
    return true;
}

template <class T, class Handle>
void RefCountVector<T, Handle>::Clear() {
    for (Handle* slot = begin_; slot != end_; ++slot) *slot = Handle();
    end_ = begin_;
}

// The old slots become null without any of their references being released.
template <class T, class Handle>
void RefCountVector<T, Handle>::Move(Handle* first, Handle* last, Handle* target) {
    const std::size_t bytes = static_cast<std::size_t>(last - first) * sizeof(Handle);
    if (bytes == 0) return;
    std::memcpy(static_cast<void*>(target), static_cast<const void*>(first), bytes);
    std::memset(static_cast<void*>(first), 0, bytes);
}

}  // namespace ZOT

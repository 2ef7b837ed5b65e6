#pragma once

#include <cstddef>
#include <zot/memory.h>

namespace ZOT {

// A growable array of owning handles (SmartPtr<T>, RefCount<T>). Growing moves the handles bytewise, so no
// reference count is touched. One thread at a time may change it. When memory runs out, Reserve and Append
// return false and the array stays as it was.
//
//   begin_                end_              limit_
//     v                     v                  v
//     [ A ][ B ][ C ][ D ]  [ room ][ room ]
template <class T, class Handle>
class RefCountVector : public PoolObject {
public:
    RefCountVector() noexcept = default;
    // `size` null slots, all of them in use; fewer (none) when memory runs out.
    explicit RefCountVector(std::size_t size);
    RefCountVector(const RefCountVector&) = delete;  // a copy would touch every count: copy what you need
    RefCountVector& operator=(const RefCountVector&) = delete;
    ~RefCountVector();  // lets go of the last one first

    const Handle* Begin() const noexcept { return begin_; }
    const Handle* End() const noexcept { return end_; }
    Handle* Begin() noexcept { return begin_; }
    Handle* End() noexcept { return end_; }
    const Handle* begin() const noexcept { return begin_; }
    const Handle* end() const noexcept { return end_; }

    std::size_t Size() const noexcept { return static_cast<std::size_t>(end_ - begin_); }
    std::size_t Capacity() const noexcept { return static_cast<std::size_t>(limit_ - begin_); }
    Handle& operator[](std::size_t index) noexcept { return begin_[index]; }
    const Handle& operator[](std::size_t index) const noexcept { return begin_[index]; }

    // Makes room for exactly `capacity` handles when that is not less than the present room.
    bool Reserve(std::size_t capacity);

    // Appends a handle; a full array doubles first (1 when empty).
    bool Append(const Handle& handle);

    // Empties every slot in use and keeps the room.
    void Clear();

private:
    Handle* begin_ = nullptr;
    Handle* end_ = nullptr;
    Handle* limit_ = nullptr;
};

}  // namespace ZOT

#include <zot/ref_count_vector.inl>

#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>
#include <zot/memory.h>

namespace ZOT {

// A growable array of plain values: never constructed or destroyed one by one, moved as bytes. One thread at
// a time. When memory runs out, Reserve, Resize and Append return false and the array stays as it was.
template <class T>
class FastVector : public PoolObject {
    static_assert(std::is_trivially_copyable_v<T>, "the elements are moved as bytes");

public:
    FastVector() noexcept = default;
    // `size` elements, left unset; none when memory runs out.
    explicit FastVector(std::size_t size) { Resize(size); }
    FastVector(const FastVector&) = delete;  // nobody needs a second one
    FastVector& operator=(const FastVector&) = delete;
    virtual ~FastVector() { Free(); }

    T* Begin() noexcept { return begin_; }
    T* End() noexcept { return end_; }
    const T* Begin() const noexcept { return begin_; }
    const T* End() const noexcept { return end_; }
    T* begin() noexcept { return begin_; }
    T* end() noexcept { return end_; }
    const T* begin() const noexcept { return begin_; }
    const T* end() const noexcept { return end_; }

    std::size_t Size() const noexcept { return static_cast<std::size_t>(end_ - begin_); }
    std::size_t Capacity() const noexcept { return static_cast<std::size_t>(limit_ - begin_); }
    T& operator[](std::size_t index) noexcept { return begin_[index]; }
    const T& operator[](std::size_t index) const noexcept { return begin_[index]; }

    // Makes room for exactly `capacity` elements when that is more than the present room.
    bool Reserve(std::size_t capacity) { return capacity <= Capacity() || Reallocate(capacity); }

    // New elements are left unset. Allocates exactly `size` elements when they do not fit.
    bool Resize(std::size_t size) {
        if (!Reserve(size)) return false;
        end_ = begin_ + size;
        return true;
    }

    // A full array grows by the factor 2 up to 256 elements and 1.25 above, and has room for at least 16.
    bool Append(const T& value) {
        const T kept = value;  // it may stand in this very array
        if (end_ == limit_ && !Reallocate(Grown(Size()))) return false;
        *end_++ = kept;
        return true;
    }

    void Swap(FastVector& other) noexcept {
        std::swap(begin_, other.begin_);
        std::swap(end_, other.end_);
        std::swap(limit_, other.limit_);
    }

    // Gives the storage back.
    void Free() noexcept {
        PoolFree(begin_);
        begin_ = end_ = limit_ = nullptr;
    }

private:
    static std::size_t Grown(std::size_t size) {
        const double factor = size <= 256 ? 2.0 : 1.25;
        const auto grown = static_cast<std::size_t>(static_cast<double>(size) * factor);
        return grown < 16 ? 16 : grown;
    }

    bool Reallocate(std::size_t capacity) {
        if (capacity > static_cast<std::size_t>(-1) / sizeof(T)) return false;
        const std::size_t size = Size();
        T* const storage = static_cast<T*>(PoolReallocate(begin_, size * sizeof(T), capacity * sizeof(T)));
        if (storage == nullptr) return false;
        begin_ = storage;
        end_ = storage + size;
        limit_ = storage + capacity;
        return true;
    }

    T* begin_ = nullptr;
    T* end_ = nullptr;
    T* limit_ = nullptr;
};

}  // namespace ZOT

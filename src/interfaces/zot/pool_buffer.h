#pragma once

#include <cstddef>
#include <utility>

#include <zot/memory.h>

namespace ZOT {

// Bytes in pool memory that grow at the end. Movable, not copyable. When memory runs out, Reserve returns
// false and the buffer stays as it was.
class QUILL_API PoolBuffer {
public:
    PoolBuffer() noexcept = default;
    PoolBuffer(PoolBuffer&& other) noexcept { Swap(other); }
    PoolBuffer& operator=(PoolBuffer&& other) noexcept {
        PoolBuffer taken(std::move(other));
        Swap(taken);
        return *this;
    }
    ~PoolBuffer() { PoolFree(data_); }

    const unsigned char* Data() const noexcept { return data_; }
    unsigned char* Data() noexcept { return data_; }
    std::size_t Size() const noexcept { return size_; }
    std::size_t Capacity() const noexcept { return capacity_; }

    // Room for at least `capacity` bytes in all.
    bool Reserve(std::size_t capacity);

    // Counts `size` bytes as held, at most the capacity. New bytes are what was written into the room behind
    // the end.
    void SetSize(std::size_t size) noexcept { size_ = size; }

    // Hands the bytes to the caller, who frees them with PoolFree. Null when nothing was ever reserved.
    unsigned char* Detach() noexcept {
        PoolBuffer taken(std::move(*this));
        return std::exchange(taken.data_, nullptr);
    }

private:
    void Swap(PoolBuffer& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }

    unsigned char* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace ZOT

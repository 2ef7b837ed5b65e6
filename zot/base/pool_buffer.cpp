#include <cstring>

#include <zot/pool_buffer.h>

namespace ZOT {

bool PoolBuffer::Reserve(std::size_t capacity) {
    if (capacity <= capacity_) return true;
    auto* const storage = static_cast<unsigned char*>(PoolAllocate(capacity));
    if (storage == nullptr) return false;
    if (size_ != 0) std::memcpy(storage, data_, size_);
    PoolFree(data_);
    data_ = storage;
    capacity_ = capacity;
    return true;
}

}  // namespace ZOT

#include <zot/pool_buffer.h>

namespace ZOT {

bool PoolBuffer::Reserve(std::size_t capacity) {
    if (capacity <= capacity_) return true;
    auto* const storage = static_cast<unsigned char*>(PoolReallocate(data_, size_, capacity));
    if (storage == nullptr) return false;
    data_ = storage;
    capacity_ = capacity;
    return true;
}

}  // namespace ZOT

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <zot/memory_buffer.h>

#include "copy_in_pieces.h"

namespace ZOTFile {

namespace {

constexpr unsigned int kMostBytes = ZOT::kWholeStream;
constexpr unsigned int kLeastCapacity = 16;

// Sets `position` to the target of a seek; false when that lies outside [0, size].
bool Seek(int offset, ZOT::Direction from, unsigned int size, unsigned int& position) {
    std::int64_t target = offset;
    if (from == ZOT::kFromCurrent) target += position;
    if (from == ZOT::kFromEnd) target += size;
    if (target < 0 || target > std::int64_t{size}) return false;
    position = static_cast<unsigned int>(target);
    return true;
}

bool AreUnitsInPlace(const unsigned char* bytes) {
    return std::endian::native == std::endian::little &&
           reinterpret_cast<std::uintptr_t>(bytes) % alignof(char16_t) == 0;
}

void AppendUnits(std::u16string& target, const unsigned char* bytes, std::size_t units) {
    if (!AreUnitsInPlace(bytes)) {
        for (std::size_t i = 0; i < units; ++i) {
            target.push_back(static_cast<char16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8)));
        }
        return;
    }
    const auto* from = reinterpret_cast<const char16_t*>(bytes);
    target.reserve(target.size() + units);
    for (std::size_t left = units; left != 0;) {
        const std::size_t now = std::min<std::size_t>(left, kPiece / sizeof(char16_t));
        target.append(from, now);
        from += now;
        left -= now;
    }
}

}  // namespace

MemoryBuffer::MemoryBuffer(unsigned int size)
    : first_capacity_(std::max(size, kLeastCapacity)), capacity_(first_capacity_) {}

MemoryBuffer::MemoryBuffer(const void* data, unsigned int size, unsigned int)
    : data_(static_cast<const unsigned char*>(data)), size_(size), put_(size) {}

MemoryBuffer::~MemoryBuffer() {
    ZOT::PoolFree(owned_);
}

unsigned int MemoryBuffer::vPut(const void* bytes, unsigned int count) {
    if (IsView() || count == 0 || count > kMostBytes - put_) return 0;
    const unsigned int end = put_ + count;
    if (owned_ == nullptr || end > capacity_) {
        // `bytes` may stand in this very buffer.
        const std::less<const void*> less;
        const bool inside = owned_ != nullptr && !less(bytes, owned_) && less(bytes, owned_ + size_);
        const std::ptrdiff_t place = inside ? static_cast<const unsigned char*>(bytes) - owned_ : 0;
        if (!Grow(end)) return 0;
        if (inside) bytes = owned_ + place;
    }
    std::memmove(owned_ + put_, bytes, count);
    put_ = end;
    size_ = std::max(size_, end);
    return count;
}

// Doubles, or takes exactly what is needed where memory does not suffice for more.
bool MemoryBuffer::Grow(unsigned int needed) {
    unsigned int capacity = capacity_;
    while (capacity < needed) capacity = capacity > kMostBytes / 2 ? kMostBytes : 2 * capacity;
    void* storage = ZOT::PoolReallocate(owned_, size_, capacity);
    if (storage == nullptr && capacity != needed)
        storage = ZOT::PoolReallocate(owned_, size_, capacity = needed);
    if (storage == nullptr) return false;
    owned_ = static_cast<unsigned char*>(storage);
    data_ = owned_;
    capacity_ = capacity;
    return true;
}

unsigned int MemoryBuffer::vTellP() const {
    return put_;
}

bool MemoryBuffer::vSeekP(int offset, ZOT::Direction from) {
    return Seek(offset, from, size_, put_);
}

unsigned int MemoryBuffer::vGet(void* bytes, unsigned int count) {
    const unsigned int now = std::min(count, size_ - get_);
    CopyInPieces(bytes, data_ + get_, now);
    get_ += now;
    return now;
}

unsigned int MemoryBuffer::vTellG() const {
    return get_;
}

bool MemoryBuffer::vSeekG(int offset, ZOT::Direction from) {
    return Seek(offset, from, size_, get_);
}

void MemoryBuffer::vFlush() {}

void MemoryBuffer::vClear() {
    size_ = put_ = get_ = 0;
}

void MemoryBuffer::vClearMemory() {
    vClear();
    ZOT::PoolFree(owned_);
    owned_ = nullptr;
    data_ = nullptr;
    capacity_ = first_capacity_;
}

void MemoryBuffer::vClearEnd() {
    size_ = put_;
    get_ = std::min(get_, size_);
}

unsigned int MemoryBuffer::vSize() const {
    return size_;
}

bool MemoryBuffer::vEndOfFile() const {
    return get_ == size_;
}

unsigned int MemoryBuffer::vCopy(std::u16string& target, unsigned int count) {
    const unsigned int units = std::min(count, size_ - get_) / 2;
    if (units != 0) AppendUnits(target, data_ + get_, units);
    get_ += 2 * units;
    return 2 * units;
}

unsigned int MemoryBuffer::vCopy(std::string& target, unsigned int count) {
    const unsigned int bytes = std::min(count, size_ - get_);
    if (bytes != 0) target.append(reinterpret_cast<const char*>(data_ + get_), bytes);
    get_ += bytes;
    return bytes;
}

unsigned int MemoryBuffer::vCopy(ZOT::BinaryStreamBuf& target, unsigned int count) {
    const unsigned int bytes = std::min(count, size_ - get_);
    const unsigned int copied = bytes == 0 ? 0 : target.vPut(data_ + get_, bytes);
    get_ += copied;
    return copied;
}

}  // namespace ZOTFile

#include <algorithm>
#include <cstring>
#include <zot/stream_parser.h>

namespace ZOTFile {

namespace {

constexpr unsigned int kLeastGrowth = 4096;  // bytes of room, once the stream has more than it said

unsigned int BytesLeft(const ZOT::BinaryStreamBuf& stream) {
    const unsigned int size = stream.vSize();
    const unsigned int position = stream.vTellG();
    return size > position ? size - position : 0;
}

unsigned int Larger(unsigned int capacity) {
    return capacity > ZOT::kWholeStream / 2 ? ZOT::kWholeStream : std::max(kLeastGrowth, 2 * capacity);
}

}  // namespace

BinaryStreamParser::~BinaryStreamParser() {
    ZOT::PoolFree(data_);
}

bool BinaryStreamParser::ReadAll(unsigned int padding) {
    ZOT::PoolFree(Detach());
    for (unsigned int room = BytesLeft(stream_); Reserve(room, padding); room = Larger(capacity_)) {
        if (!Fill()) continue;
        if (padding != 0) std::memset(data_ + size_, 0, padding);
        return true;
    }
    ZOT::PoolFree(Detach());
    return false;
}

// Room for `capacity` bytes, which is more than before, and the padding behind them.
bool BinaryStreamParser::Reserve(unsigned int capacity, unsigned int padding) {
    if (capacity == size_ && size_ != 0) return false;  // the stream holds more than 32 bits can count
    const std::size_t total = std::size_t{capacity} + padding;
    if (total == 0) return true;
    auto* const storage = static_cast<unsigned char*>(ZOT::PoolReallocate(data_, size_, total));
    if (storage == nullptr) return false;
    data_ = storage;
    capacity_ = capacity;
    return true;
}

// Reads until the stream ends (true) or the room does.
bool BinaryStreamParser::Fill() {
    while (!stream_.vEndOfFile()) {
        if (size_ == capacity_) return false;
        const unsigned int got = stream_.vGet(data_ + size_, capacity_ - size_);
        if (got == 0) return true;
        size_ += got;
    }
    return true;
}

unsigned char* BinaryStreamParser::Detach() noexcept {
    unsigned char* const data = data_;
    data_ = nullptr;
    size_ = capacity_ = 0;
    return data;
}

}  // namespace ZOTFile

#pragma once

#include <zot/stream.h>

namespace ZOTFile {

// Reads what is left of a stream into one piece of memory, in as few reads as the stream allows.
class QUILL_API BinaryStreamParser : public ZOT::PoolObject {
public:
    // The stream belongs to the caller and outlives the reader.
    explicit BinaryStreamParser(ZOT::BinaryStreamBuf& stream) noexcept : stream_(stream) {}
    BinaryStreamParser(const BinaryStreamParser&) = delete;  // one reader, one buffer
    BinaryStreamParser& operator=(const BinaryStreamParser&) = delete;
    ~BinaryStreamParser();

    // Reads to the end. False when memory runs out; what was read is then gone.
    // `padding` zero bytes follow the bytes read.
    bool ReadAll(unsigned int padding);

    unsigned int Size() const noexcept { return size_; }
    const unsigned char* Data() const noexcept { return data_; }

    // Hands the bytes read to the caller, who frees them with ZOT::PoolFree. Null when nothing was read.
    unsigned char* Detach() noexcept;

private:
    bool Reserve(unsigned int capacity, unsigned int padding);
    bool Fill();

    ZOT::BinaryStreamBuf& stream_;
    unsigned char* data_ = nullptr;
    unsigned int size_ = 0;
    unsigned int capacity_ = 0;
};

}  // namespace ZOTFile

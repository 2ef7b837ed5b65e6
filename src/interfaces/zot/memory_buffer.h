#pragma once

#include <zot/stream.h>

namespace ZOTFile {

// A stream in memory: one that grows, or a view of the caller's bytes. The write position of a growing one
// stands at its end until it is moved. Moves, reads and growth follow ZOT::BinaryStreamBuf.
class QUILL_API MemoryBuffer : public ZOT::BinaryStreamBuf {
public:
    // An empty growing buffer whose first allocation has room for `size` bytes; it doubles from there, to at
    // most 4 GiB - 1. A write that finds no memory takes nothing.
    explicit MemoryBuffer(unsigned int size);

    // Reads `size` bytes at `data` in place. They stay the caller's and must outlive the buffer. Writing into
    // such a buffer takes nothing; its write position stands at its end. `mode` is 0.
    MemoryBuffer(const void* data, unsigned int size, unsigned int mode);

    MemoryBuffer(const MemoryBuffer&) = delete;  // share it through BinaryStream
    MemoryBuffer& operator=(const MemoryBuffer&) = delete;
    ~MemoryBuffer() override;

    unsigned int vPut(const void* bytes, unsigned int count) override;
    unsigned int vTellP() const override;
    bool vSeekP(int offset, ZOT::Direction from) override;
    unsigned int vGet(void* bytes, unsigned int count) override;
    unsigned int vTellG() const override;
    bool vSeekG(int offset, ZOT::Direction from) override;
    void vFlush() override;
    void vClear() override;
    void vClearMemory() override;
    void vClearEnd() override;
    unsigned int vSize() const override;
    bool vEndOfFile() const override;
    unsigned int vCopy(std::u16string& target, unsigned int count) override;
    unsigned int vCopy(std::string& target, unsigned int count) override;
    unsigned int vCopy(ZOT::BinaryStreamBuf& target, unsigned int count) override;

private:
    bool IsView() const noexcept { return first_capacity_ == 0; }
    bool Grow(unsigned int needed);

    unsigned char* owned_ = nullptr;  // null until the first write, and for a view
    const unsigned char* data_ = nullptr;
    unsigned int size_ = 0;
    unsigned int first_capacity_ = 0;  // bytes of the first allocation; 0 for a view
    unsigned int capacity_ = 0;        // bytes of the present or next allocation
    unsigned int put_ = 0;
    unsigned int get_ = 0;
};

}  // namespace ZOTFile

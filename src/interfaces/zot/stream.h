#pragma once

#include <string>
#include <string_view>
#include <zot/memory.h>

namespace ZOT {

// Where a seek counts from.
enum Direction : unsigned int { kFromBegin = 0, kFromCurrent = 1, kFromEnd = 2 };

// All that is left to read: the count that Copy takes for "to the end".
constexpr unsigned int kWholeStream = 0xFFFFFFFFu;

// A stream of bytes with separate read and write positions, in bytes from its start, at most 4 GiB - 1.
// One thread at a time may use it.
class QUILL_API BinaryStreamBuf : public PoolObject {
public:
    virtual ~BinaryStreamBuf();

    // Writes at the write position and moves it. Returns the bytes written, fewer than `count` when the
    // stream takes no more.
    virtual unsigned int vPut(const void* bytes, unsigned int count) = 0;
    virtual unsigned int vTellP() const = 0;
    // Seeks return false, and move nothing, when the target lies before the start or behind the end.
    virtual bool vSeekP(int offset, Direction from) = 0;

    // Reads at the read position and moves it. Returns the bytes read, 0 at the end.
    virtual unsigned int vGet(void* bytes, unsigned int count) = 0;
    virtual unsigned int vTellG() const = 0;
    virtual bool vSeekG(int offset, Direction from) = 0;

    virtual void vFlush() = 0;
    // Forgets the content and rewinds both positions; vClear keeps the memory, vClearMemory gives it back.
    virtual void vClear() = 0;
    virtual void vClearMemory() = 0;
    // Cuts off what lies at and after the write position.
    virtual void vClearEnd() = 0;

    // Bytes held.
    virtual unsigned int vSize() const = 0;
    // Whether nothing is left to read.
    virtual bool vEndOfFile() const = 0;

    // Append up to `count` bytes from the read position to `target` and move the read position; return the
    // bytes copied. A wide string takes the bytes as 16-bit units, low byte first; an odd last byte is left
    // unread.
    virtual unsigned int vCopy(std::u16string& target, unsigned int count) = 0;
    virtual unsigned int vCopy(std::string& target, unsigned int count) = 0;
    virtual unsigned int vCopy(BinaryStreamBuf& target, unsigned int count) = 0;

    unsigned int Put(const void* bytes, unsigned int count) { return vPut(bytes, count); }
    unsigned int Get(void* bytes, unsigned int count) { return vGet(bytes, count); }
    bool SeekP(int offset, Direction from) { return vSeekP(offset, from); }
    bool SeekG(int offset, Direction from) { return vSeekG(offset, from); }
    // Move exactly `count` bytes, or return false.
    bool SafePut(const void* bytes, unsigned int count) { return vPut(bytes, count) == count; }
    bool SafeGet(void* bytes, unsigned int count);
    template <class Target>
    unsigned int Copy(Target& target, unsigned int count) {
        return vCopy(target, count);
    }
};

// Writes the first `count` units of `text` (all of them when it has fewer), low byte first. Returns the bytes
// written.
QUILL_API unsigned int Copy(BinaryStreamBuf& target, std::u16string_view text, unsigned int count);

// Holds a stream, and deletes it at the end when it owns it.
class QUILL_API BinaryStream : public PoolObject {
public:
    BinaryStream(BinaryStreamBuf* buffer, bool owning) noexcept : owning_(owning), buffer_(buffer) {}
    BinaryStream(const BinaryStream&) = delete;  // two owners of one stream; share it through RefCount
    BinaryStream& operator=(const BinaryStream&) = delete;
    ~BinaryStream();

    BinaryStreamBuf* Buffer() const noexcept { return buffer_; }

private:
    bool owning_;
    BinaryStreamBuf* buffer_;
};

}  // namespace ZOT

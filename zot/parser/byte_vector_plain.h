#pragma once

#include <cstddef>
#include <cstring>

namespace ZOTParser {

// Sixteen bytes in plain C++, for every machine.
class ByteVectorPlain {
public:
    static constexpr std::size_t kSize = 16;

    // The 16 bytes at `at`, which need no alignment.
    static ByteVectorPlain Load(const char* at) noexcept {
        ByteVectorPlain vector;
        std::memcpy(vector.bytes_, at, kSize);
        return vector;
    }

    // The `count` bytes at `at`, 1 to 15, and zeros behind them. Reads no further byte.
    static ByteVectorPlain LoadPart(const char* at, std::size_t count) noexcept {
        ByteVectorPlain vector{};
        std::memcpy(vector.bytes_, at, count);
        return vector;
    }

    // 0xFF where the byte is `c`, else 0.
    ByteVectorPlain Equal(char c) const noexcept {
        return Map([c](unsigned char byte) { return byte == static_cast<unsigned char>(c); });
    }

    // 0xFF where the byte is at most `c`, both taken as unsigned numbers, else 0.
    ByteVectorPlain AtMost(char c) const noexcept {
        return Map([c](unsigned char byte) { return byte <= static_cast<unsigned char>(c); });
    }

    friend ByteVectorPlain operator|(ByteVectorPlain a, const ByteVectorPlain& b) noexcept {
        for (std::size_t i = 0; i < kSize; ++i) {
            a.bytes_[i] = static_cast<unsigned char>(a.bytes_[i] | b.bytes_[i]);
        }
        return a;
    }

    // Bit n is the top bit of byte n: set for bytes that are not ASCII, and for 0xFF of Equal and AtMost.
    unsigned Mask() const noexcept {
        unsigned bits = 0;
        for (std::size_t i = 0; i < kSize; ++i) bits |= static_cast<unsigned>(bytes_[i] >> 7) << i;
        return bits;
    }

    // Writes the bytes as 16 units at `to`.
    void Widen(char16_t* to) const noexcept {
        for (std::size_t i = 0; i < kSize; ++i) to[i] = bytes_[i];
    }

    // Takes the vector for eight UTF-8 sequences of two bytes each and writes eight units at `to`; gives how
    // many of them, from the first on, are well-formed. The units behind those mean nothing.
    unsigned DecodePairs(char16_t* to) const noexcept {
        unsigned good = 0;
        for (unsigned i = 0; i < 8; ++i) {
            const unsigned lead = bytes_[2 * i];
            const unsigned trail = bytes_[2 * i + 1];
            to[i] = static_cast<char16_t>((lead & 0x1F) << 6 | (trail & 0x3F));
            if (good == i && lead >= 0xC2 && lead <= 0xDF && (trail & 0xC0) == 0x80) ++good;
        }
        return good;
    }

private:
    template <class Test>
    ByteVectorPlain Map(Test test) const noexcept {
        ByteVectorPlain result;
        for (std::size_t i = 0; i < kSize; ++i) result.bytes_[i] = test(bytes_[i]) ? 0xFF : 0;
        return result;
    }

    unsigned char bytes_[kSize];
};

}  // namespace ZOTParser

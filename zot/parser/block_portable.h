#pragma once

#include <cstddef>
#include <cstring>

namespace ZOTParser {

// Sixteen bytes in plain C++, for every machine.
class PortableBlock {
public:
    static constexpr std::size_t kSize = 16;

    // The 16 bytes at `at`, which need no alignment.
    static PortableBlock Load(const char* at) noexcept {
        PortableBlock block;
        std::memcpy(block.bytes_, at, kSize);
        return block;
    }

    // The `count` bytes at `at`, fewer than 16, and zeros behind them. Reads no further byte.
    static PortableBlock LoadPart(const char* at, std::size_t count) noexcept {
        PortableBlock block{};
        std::memcpy(block.bytes_, at, count);
        return block;
    }

    // 0xFF where the byte is `c`, else 0.
    PortableBlock Equal(char c) const noexcept {
        PortableBlock equal;
        for (std::size_t i = 0; i < kSize; ++i) {
            equal.bytes_[i] = bytes_[i] == static_cast<unsigned char>(c) ? 0xFF : 0;
        }
        return equal;
    }

    friend PortableBlock operator|(PortableBlock a, const PortableBlock& b) noexcept {
        for (std::size_t i = 0; i < kSize; ++i)
            a.bytes_[i] = static_cast<unsigned char>(a.bytes_[i] | b.bytes_[i]);
        return a;
    }

    // Bit n is the top bit of byte n: set for bytes that are not ASCII, and for 0xFF of Equal.
    unsigned TopBits() const noexcept {
        unsigned bits = 0;
        for (std::size_t i = 0; i < kSize; ++i) bits |= static_cast<unsigned>(bytes_[i] >> 7) << i;
        return bits;
    }

    // Writes the bytes as 16 units at `to`.
    void Widen(char16_t* to) const noexcept {
        for (std::size_t i = 0; i < kSize; ++i) to[i] = bytes_[i];
    }

    // Takes the block for eight UTF-8 sequences of two bytes each and writes eight units at `to`; gives how
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
    unsigned char bytes_[kSize];
};

}  // namespace ZOTParser

#pragma once

#include <cstddef>

namespace ZOTCharset {

// Moves ASCII in blocks of kWidth characters, one by one: what every faster block must do as well. Each
// operation reads a whole block, may write a whole block, and returns how many characters at its beginning
// are ASCII; what it writes behind those means nothing.
struct PlainBlock {
    static constexpr std::size_t kWidth = 16;

    static std::size_t Count(const unsigned char* source) {
        std::size_t count = 0;
        while (count != kWidth && source[count] < 0x80) ++count;
        return count;
    }

    // Bytes to bytes.
    static std::size_t Copy(const unsigned char* source, unsigned char* target) {
        const std::size_t count = Count(source);
        for (std::size_t i = 0; i != count; ++i) target[i] = source[i];
        return count;
    }

    // Bytes to units.
    static std::size_t Widen(const unsigned char* source, char16_t* target) {
        const std::size_t count = Count(source);
        for (std::size_t i = 0; i != count; ++i) target[i] = source[i];
        return count;
    }

    // Units, given as bytes, to bytes.
    template <bool kHighFirst>
    static std::size_t Narrow(const unsigned char* source, unsigned char* target) {
        std::size_t count = 0;
        for (; count != kWidth; ++count) {
            const unsigned char low = source[2 * count + (kHighFirst ? 1 : 0)];
            const unsigned char high = source[2 * count + (kHighFirst ? 0 : 1)];
            if (high != 0 || low >= 0x80) break;
            target[count] = low;
        }
        return count;
    }
};

}  // namespace ZOTCharset

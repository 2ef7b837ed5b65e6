#pragma once

#include <cstddef>

// UTF-8 sequence by sequence, as https://encoding.spec.whatwg.org/#utf-8-decoder has it.
namespace ZOTCharset {

inline bool IsTrail(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// What stands at the beginning of `bytes`, whose first byte is not ASCII:
//   n > 0   a character of n bytes
//   0       the beginning of a character whose end lies behind the `left` bytes there are
//   n < 0   -n bytes that are no character; what follows them may be one
inline int Utf8Sequence(const unsigned char* bytes, std::size_t left) {
    const unsigned char lead = bytes[0];
    if (lead < 0xC2 || lead > 0xF4) return -1;
    if (left < 2) return 0;
    if (lead < 0xE0) return IsTrail(bytes[1]) ? 2 : -1;

    // No overlong forms, no surrogates, nothing behind U+10FFFF.
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (bytes[1] < lowest || bytes[1] > highest) return -1;
    if (left < 3) return 0;
    if (!IsTrail(bytes[2])) return -2;
    if (lead < 0xF0) return 3;
    if (left < 4) return 0;
    return IsTrail(bytes[3]) ? 4 : -3;
}

// The code point of a whole, valid sequence of `length` bytes.
inline char32_t Utf8CodePoint(const unsigned char* bytes, int length) {
    constexpr unsigned char kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t point = bytes[0] & kLeadBits[length];
    for (int i = 1; i < length; ++i) point = (point << 6) | (bytes[i] & 0x3Fu);
    return point;
}

// Writes `point` and returns the place behind it. At most 4 bytes.
inline unsigned char* PutUtf8(unsigned char* target, char32_t point) {
    const auto byte = [](char32_t bits) { return static_cast<unsigned char>(bits); };
    if (point < 0x80) {
        *target++ = byte(point);
        return target;
    }
    if (point < 0x800) {
        *target++ = byte(0xC0 | (point >> 6));
    } else {
        if (point < 0x10000) {
            *target++ = byte(0xE0 | (point >> 12));
        } else {
            *target++ = byte(0xF0 | (point >> 18));
            *target++ = byte(0x80 | ((point >> 12) & 0x3F));
        }
        *target++ = byte(0x80 | ((point >> 6) & 0x3F));
    }
    *target++ = byte(0x80 | (point & 0x3F));
    return target;
}

}  // namespace ZOTCharset

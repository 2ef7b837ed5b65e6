#pragma once

#include <cstddef>
#include <string>

#include "utf8_sequence.h"

namespace ZOTParser {

constexpr char32_t kReplacementCharacter = 0xFFFD;

// One character of UTF-8 text, or the stretch of bytes for which U+FFFD stands.
struct Utf8Character {
    char32_t code;
    unsigned length;  // bytes, at least 1
};

// Reads the character at `at`, which lies before `end`. Ill-formed bytes are taken as the UTF-8 decoder of
// the WHATWG Encoding Standard takes them: the longest start of a well-formed sequence, or one byte, is one
// U+FFFD.
inline Utf8Character DecodeUtf8(const char* at, const char* end) noexcept {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(at);
    if (*bytes < 0x80) return {*bytes, 1};
    const auto left = static_cast<std::size_t>(end - at);
    const int length = ZOTCharset::Utf8Sequence(bytes, left);
    if (length > 0) return {ZOTCharset::Utf8CodePoint(bytes, length), static_cast<unsigned>(length)};
    return {kReplacementCharacter,
            length == 0 ? static_cast<unsigned>(left) : static_cast<unsigned>(-length)};
}

// Appends the Unicode scalar value `code` as UTF-8.
inline void AppendUtf8(char32_t code, std::string& out) {
    unsigned char bytes[4];
    const auto* const end = ZOTCharset::PutUtf8(bytes, code);
    out.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(end - bytes));
}

}  // namespace ZOTParser

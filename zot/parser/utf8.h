#pragma once

#include <string>

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
    const unsigned lead = static_cast<unsigned char>(*at);
    if (lead < 0x80) return {lead, 1};
    if (lead < 0xC2 || lead > 0xF4) return {kReplacementCharacter, 1};
    const unsigned trails = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    char32_t code = lead & (0x3Fu >> trails);
    // The first trail byte is bound further where the sequence could be shorter, a surrogate or beyond
    // U+10FFFF.
    unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    for (unsigned i = 1; i <= trails; ++i) {
        if (at + i == end) return {kReplacementCharacter, i};
        const unsigned trail = static_cast<unsigned char>(at[i]);
        if (trail < low || trail > high) return {kReplacementCharacter, i};
        code = code << 6 | (trail & 0x3F);
        low = 0x80;
        high = 0xBF;
    }
    return {code, trails + 1};
}

// Appends the Unicode scalar value `code` as UTF-8.
inline void AppendUtf8(char32_t code, std::string& out) {
    const auto trail = [code](unsigned shift) { return static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += {static_cast<char>(0xC0 | code >> 6), trail(0)};
    } else if (code < 0x10000) {
        out += {static_cast<char>(0xE0 | code >> 12), trail(6), trail(0)};
    } else {
        out += {static_cast<char>(0xF0 | code >> 18), trail(12), trail(6), trail(0)};
    }
}

}  // namespace ZOTParser

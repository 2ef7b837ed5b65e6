#pragma once

#include <cstddef>
#include <cstring>

#include "span.h"
#include "utf8_sequence.h"

// The conversions of whole pages: to UTF-8 from UTF-8 (mended), UTF-16 and the single-byte encodings. Runs of
// ASCII go in blocks, everything else character by character. `Block` is PlainBlock or a faster twin. `last`
// and `strict` as for FastConversion.
namespace ZOTCharset {

constexpr std::size_t kLongestUtf8 = 4;  // bytes of one character

// Moves the ASCII at the beginning, as far as the room goes.
template <class Block>
void CopyAscii(Bytes& source, ByteRoom& target) {
    while (source.Left() >= Block::kWidth && target.Left() >= Block::kWidth) {
        const std::size_t count = Block::Copy(source.at, target.at);
        source.at += count;
        target.at += count;
        if (count != Block::kWidth) return;
    }
    while (source.at != source.end && target.at != target.end && *source.at < 0x80)
        *target.at++ = *source.at++;
}

// Whether another character that is not ASCII may be moved.
inline bool AtNonAscii(const Bytes& source) {
    return source.at != source.end && *source.at >= 0x80;
}

template <class Block>
void Utf8ToUtf8(Bytes& source, ByteRoom& target, bool last, bool strict) {
    do {
        CopyAscii<Block>(source, target);
        while (AtNonAscii(source)) {
            if (target.Left() < kLongestUtf8) return;
            const int length = Utf8Sequence(source.at, source.Left());
            if (length > 0) {
                std::memcpy(target.at, source.at, 2);
                if (length > 2) std::memcpy(target.at + length - 2, source.at + length - 2, 2);
                target.at += length;
                source.at += length;
                continue;
            }
            if (strict || (length == 0 && !last)) return;
            target.at = PutUtf8(target.at, kReplacementCharacter);
            source.at = length == 0 ? source.end : source.at - length;
        }
    } while (source.at != source.end && target.at != target.end);
}

template <class Block>
std::size_t ValidUtf8Beginning(const unsigned char* bytes, std::size_t count) {
    const unsigned char* at = bytes;
    const unsigned char* const end = bytes + count;
    for (;;) {
        while (static_cast<std::size_t>(end - at) >= Block::kWidth) {
            const std::size_t ascii = Block::Count(at);
            at += ascii;
            if (ascii != Block::kWidth) break;
        }
        while (at != end && *at < 0x80) ++at;
        if (at == end) return count;
        do {
            const int length = Utf8Sequence(at, static_cast<std::size_t>(end - at));
            if (length <= 0) return static_cast<std::size_t>(at - bytes);
            at += length;
        } while (at != end && *at >= 0x80);
    }
}

template <bool kHighFirst>
char16_t LoadUnit(const unsigned char* bytes) {
    return static_cast<char16_t>(kHighFirst ? bytes[0] << 8 | bytes[1] : bytes[1] << 8 | bytes[0]);
}

inline bool IsSurrogate(char32_t unit) {
    return (unit & 0xF800) == 0xD800;
}
inline bool IsLeadSurrogate(char32_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
inline bool IsTrailSurrogate(char32_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}
inline char32_t JoinSurrogates(char32_t lead, char32_t trail) {
    return 0x10000 + ((lead & 0x3FF) << 10) + (trail & 0x3FF);
}

// https://encoding.spec.whatwg.org/#shared-utf-16-decoder: the character at the beginning and its length in
// bytes; the length is 0 when its end is not there, and negative for what is no character (U+FFFD).
struct Utf16Character {
    char32_t point;
    int length;
};

template <bool kHighFirst>
Utf16Character NextUtf16(const Bytes& source) {
    if (source.Left() < 2) return {kReplacementCharacter, 0};
    const char32_t unit = LoadUnit<kHighFirst>(source.at);
    if (!IsSurrogate(unit)) return {unit, 2};
    if (!IsLeadSurrogate(unit)) return {kReplacementCharacter, -2};
    if (source.Left() < 4) return {kReplacementCharacter, 0};
    const char32_t trail = LoadUnit<kHighFirst>(source.at + 2);
    if (!IsTrailSurrogate(trail)) return {kReplacementCharacter, -2};
    return {JoinSurrogates(unit, trail), 4};
}

template <class Block, bool kHighFirst>
void Utf16ToUtf8(Bytes& source, ByteRoom& target, bool last, bool strict) {
    while (source.at != source.end) {
        while (source.Left() >= 2 * Block::kWidth && target.Left() >= Block::kWidth) {
            const std::size_t count = Block::template Narrow<kHighFirst>(source.at, target.at);
            source.at += 2 * count;
            target.at += count;
            if (count != Block::kWidth) break;
        }
        while (source.at != source.end) {
            if (target.Left() < kLongestUtf8) return;
            const Utf16Character next = NextUtf16<kHighFirst>(source);
            if (next.length <= 0 && (strict || (next.length == 0 && !last))) return;
            target.at = PutUtf8(target.at, next.point);
            if (next.length > 0) source.at += next.length;
            if (next.length < 0) source.at -= next.length;
            if (next.length == 0) source.at = source.end;
            if (next.point < 0x80) break;
        }
    }
}

// `upper` is what the bytes from 0x80 mean.
template <class Block>
void SingleByteToUtf8(const char16_t* upper, Bytes& source, ByteRoom& target, bool strict) {
    do {
        CopyAscii<Block>(source, target);
        for (; AtNonAscii(source); ++source.at) {
            const char16_t unit = upper[*source.at - 0x80];
            if (target.Left() < kLongestUtf8 || (strict && unit == kReplacementCharacter)) return;
            target.at = PutUtf8(target.at, unit);
        }
    } while (source.at != source.end && target.at != target.end);
}

}  // namespace ZOTCharset

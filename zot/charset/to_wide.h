#pragma once

#include <cstddef>

#include "span.h"
#include "to_utf8.h"
#include "utf8_sequence.h"

// The same encodings to UTF-16.
namespace ZOTCharset {

template <class Block>
void WidenAscii(Bytes& source, UnitRoom& target) {
    while (source.Left() >= Block::kWidth && target.Left() >= Block::kWidth) {
        const std::size_t count = Block::Widen(source.at, target.at);
        source.at += count;
        target.at += count;
        if (count != Block::kWidth) return;
    }
    while (source.at != source.end && target.at != target.end && *source.at < 0x80)
        *target.at++ = *source.at++;
}

// Writes one or two units and returns the place behind them.
inline char16_t* PutUtf16(char16_t* target, char32_t point) {
    if (point < 0x10000) {
        *target++ = static_cast<char16_t>(point);
        return target;
    }
    *target++ = static_cast<char16_t>(0xD7C0 + (point >> 10));
    *target++ = static_cast<char16_t>(0xDC00 | (point & 0x3FF));
    return target;
}

template <class Block>
void Utf8ToWide(Bytes& source, UnitRoom& target, bool last) {
    do {
        WidenAscii<Block>(source, target);
        while (AtNonAscii(source)) {
            if (target.Left() < 2) return;
            const int length = Utf8Sequence(source.at, source.Left());
            if (length > 0) {
                target.at = PutUtf16(target.at, Utf8CodePoint(source.at, length));
                source.at += length;
                continue;
            }
            if (length == 0 && !last) return;
            *target.at++ = kReplacementCharacter;
            source.at = length == 0 ? source.end : source.at - length;
        }
    } while (source.at != source.end && target.at != target.end);
}

template <bool kHighFirst>
void Utf16ToWide(Bytes& source, UnitRoom& target, bool last) {
    while (source.at != source.end && target.Left() >= 2) {
        const Utf16Character next = NextUtf16<kHighFirst>(source);
        if (next.length == 0 && !last) return;
        target.at = PutUtf16(target.at, next.point);
        if (next.length > 0) source.at += next.length;
        if (next.length < 0) source.at -= next.length;
        if (next.length == 0) source.at = source.end;
    }
}

template <class Block>
void SingleByteToWide(const char16_t* upper, Bytes& source, UnitRoom& target) {
    do {
        WidenAscii<Block>(source, target);
        while (AtNonAscii(source) && target.at != target.end) *target.at++ = upper[*source.at++ - 0x80];
    } while (source.at != source.end && target.at != target.end);
}

}  // namespace ZOTCharset

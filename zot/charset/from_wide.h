#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>

#include "span.h"
#include "to_utf8.h"
#include "to_wide.h"

// UTF-16 to bytes.
namespace ZOTCharset {

// The character at the beginning of `source`; `units` is 0 when its end is not there. What is no character
// comes as U+FFFD of one unit.
struct WideCharacter {
    char32_t point;
    std::size_t units;
};

inline WideCharacter NextWide(const Units& source) {
    const char32_t unit = *source.at;
    if (!IsSurrogate(unit)) return {unit, 1};
    if (!IsLeadSurrogate(unit)) return {kReplacementCharacter, 1};
    if (source.Left() < 2) return {kReplacementCharacter, 0};
    if (!IsTrailSurrogate(source.at[1])) return {kReplacementCharacter, 1};
    return {JoinSurrogates(unit, source.at[1]), 2};
}

// Calls `put(point, target)` for each character as long as `longest` bytes fit.
template <class Put>
void EncodeEach(Units& source, ByteRoom& target, bool last, std::size_t longest, Put put) {
    while (source.at != source.end && target.Left() >= longest) {
        const WideCharacter next = NextWide(source);
        if (next.units == 0 && !last) return;
        source.at += std::max<std::size_t>(next.units, 1);
        put(next.point, target);
    }
}

template <class Block>
void WideToUtf8(Units& source, ByteRoom& target, bool last) {
    constexpr bool kHighFirst = std::endian::native == std::endian::big;
    Bytes bytes(reinterpret_cast<const unsigned char*>(source.at), source.Left() * sizeof(char16_t));
    Utf16ToUtf8<Block, kHighFirst>(bytes, target, last, false);
    source.at = source.end - bytes.Left() / sizeof(char16_t);
}

template <bool kHighFirst>
void WideToUtf16(Units& source, ByteRoom& target, bool last) {
    EncodeEach(source, target, last, 4, [](char32_t point, ByteRoom& room) {
        char16_t units[2];
        const char16_t* const end = PutUtf16(units, point);
        for (const char16_t* unit = units; unit != end; ++unit) {
            const auto high = static_cast<unsigned char>(*unit >> 8);
            const auto low = static_cast<unsigned char>(*unit & 0xFF);
            *room.at++ = kHighFirst ? high : low;
            *room.at++ = kHighFirst ? low : high;
        }
    });
}

inline void WideToSingleByte(const char16_t* upper, Units& source, ByteRoom& target, bool last) {
    EncodeEach(source, target, last, 1, [upper](char32_t point, ByteRoom& room) {
        constexpr std::size_t kUpper = 128;
        const char16_t* const found = point < 0x80 || point == kReplacementCharacter
                                          ? upper + kUpper
                                          : std::find(upper, upper + kUpper, point);
        const auto place = static_cast<std::size_t>(found - upper);
        if (place != kUpper) *room.at++ = static_cast<unsigned char>(0x80 + place);
        if (place == kUpper) *room.at++ = point < 0x80 ? static_cast<unsigned char>(point) : '?';
    });
}

}  // namespace ZOTCharset

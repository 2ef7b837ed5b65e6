#pragma once

#include <bit>

#include "byte_vector.h"

// Searches over the source, sixteen bytes at a time. kSourcePadding readable bytes follow the source's end,
// so a search may look past it; it never reports a place behind `end`.

namespace ZOTParser {

constexpr unsigned int kSourcePadding = 64;

// HTML's white space: tab, line feed, form feed, carriage return, blank.
constexpr bool IsHtmlSpace(char c) noexcept {
    return c == ' ' || c == '\n' || c == '\t' || c == '\r' || c == '\f';
}

// ASCII letters.
constexpr bool IsLetter(char c) noexcept {
    return static_cast<unsigned char>((c | 0x20) - 'a') < 26;
}

// The first place in [at, end) where `stop` (vector to mask) and `is` (character) agree, or `end`. `stop` may
// mark more than `is` accepts.
template <class Vector = ByteVector, class Stop, class Is>
inline const char* FindFirst(const char* at, const char* end, Stop stop, Is is) noexcept {
    for (; at < end; at += 16) {
        unsigned int mask = stop(Vector::Load(at)).Mask();
        for (; mask != 0; mask &= mask - 1) {
            const char* const found = at + std::countr_zero(mask);
            if (found >= end) return end;
            if (is(*found)) return found;
        }
    }
    return end;
}

template <class Vector = ByteVector>
inline const char* FindByte(const char* at, const char* end, char c) noexcept {
    for (; at < end; at += 16) {
        const unsigned int mask = Vector::Load(at).Equal(c).Mask();
        if (mask == 0) continue;
        const char* const found = at + std::countr_zero(mask);
        return found < end ? found : end;
    }
    return end;
}

constexpr char LowerCase(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

// White space, '/' or '>'.
constexpr bool EndsTagName(char c) noexcept {
    return c == '>' || c == '/' || IsHtmlSpace(c);
}

template <class Vector = ByteVector>
inline const char* FindTagNameEnd(const char* at, const char* end) noexcept {
    return FindFirst<Vector>(
        at, end, [](Vector v) { return v.AtMost(' ') | v.Equal('/') | v.Equal('>'); }, EndsTagName);
}

// White space, '/', '>' or '='.
template <class Vector = ByteVector>
inline const char* FindAttributeNameEnd(const char* at, const char* end) noexcept {
    return FindFirst<Vector>(
        at, end, [](Vector v) { return (v.AtMost(' ') | v.Equal('/')) | (v.Equal('>') | v.Equal('=')); },
        [](char c) { return c == '=' || c == '>' || c == '/' || IsHtmlSpace(c); });
}

// White space or '>'.
template <class Vector = ByteVector>
inline const char* FindUnquotedValueEnd(const char* at, const char* end) noexcept {
    return FindFirst<Vector>(
        at, end, [](Vector v) { return v.AtMost(' ') | v.Equal('>'); },
        [](char c) { return c == '>' || IsHtmlSpace(c); });
}

// Anything but white space.
template <class Vector = ByteVector>
inline const char* FindNoSpace(const char* at, const char* end) noexcept {
    for (; at < end; at += 16) {
        const Vector v = Vector::Load(at);
        const Vector space = (v.Equal(' ') | v.Equal('\n')) | (v.Equal('\t') | v.Equal('\r')) | v.Equal('\f');
        const unsigned int mask = ~space.Mask() & 0xFFFFu;
        if (mask == 0) continue;
        const char* const found = at + std::countr_zero(mask);
        return found < end ? found : end;
    }
    return end;
}

inline const char* SkipHtmlSpace(const char* at, const char* end) noexcept {
    while (at < end && IsHtmlSpace(*at)) ++at;
    return at;
}

}  // namespace ZOTParser

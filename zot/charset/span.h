#pragma once

#include <cstddef>

namespace ZOTCharset {

constexpr char16_t kReplacementCharacter = 0xFFFD;

// What is left of a source, or of the room in a target. Conversions move `at` on.
template <class T>
struct Span {
    T* at;
    T* end;

    Span(T* first, std::size_t count) : at(first), end(first + count) {}
    std::size_t Left() const { return static_cast<std::size_t>(end - at); }
};

using Bytes = Span<const unsigned char>;
using ByteRoom = Span<unsigned char>;
using Units = Span<const char16_t>;
using UnitRoom = Span<char16_t>;

}  // namespace ZOTCharset

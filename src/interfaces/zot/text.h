#pragma once

#include <cstddef>
#include <string>
#include <zot/export.h>

namespace ZOT {

// White space, the same on every platform and in every locale: U+0009 to U+000D, U+0020, U+0085, U+00A0,
// U+1680, U+2000 to U+200A, U+2028, U+2029, U+202F, U+205F, U+3000.
constexpr bool IsWhiteSpace(char16_t unit) noexcept {
    if (unit <= 0x20) return unit == 0x20 || (unit >= 0x09 && unit <= 0x0D);
    if (unit < 0x1680) return unit == 0xA0 || unit == 0x85;
    return (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F ||
           unit == 0x205F || unit == 0x3000 || unit == 0x1680;
}

// What shows nothing and is no white space: C0 controls, U+007F, U+00AD, U+200B, U+FEFF.
constexpr bool ShowsNothing(char16_t unit) noexcept {
    return (unit < 0x20 || unit == 0x7F || unit == 0xAD || unit == 0x200B || unit == 0xFEFF) &&
           !IsWhiteSpace(unit);
}

// Cleans a run of text into `clean`, which is emptied first: every run of white space becomes one blank, or
// one line feed when the run holds U+2028 or U+2029, and what shows nothing goes. Does not trim. `keepLines`
// keeps the line feeds of the run where it has any; `cleanControls` drops what shows nothing. The library
// calls it with false, true.
QUILL_API void BeautifyString(const std::u16string& raw, std::u16string& clean, bool keepLines,
                              bool cleanControls);

// The same in place: returns how many of the `size` units at `text` are left.
QUILL_API std::size_t BeautifyInPlace(char16_t* text, std::size_t size, bool keepLines,
                                      bool cleanControls) noexcept;

}  // namespace ZOT

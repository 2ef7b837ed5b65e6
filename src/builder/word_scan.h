#pragma once

#include <cstddef>

namespace QuillNS {

// Whether `unit` is one of the fourteen characters that divide words.
constexpr bool IsWordSeparator(char16_t unit) noexcept {
    constexpr char16_t kSeparators[] = u"\n\t .,!()%$?*#|";
    for (const char16_t* separator = kSeparators; *separator != 0; ++separator) {
        if (unit == *separator) return true;
    }
    return false;
}

// The number of maximal runs of separators in the `size` units at `text`, up to the first U+0000 if there is
// one. Reads these units and nothing else.
unsigned int CountSeparatorRuns(const char16_t* text, std::size_t size) noexcept;

// The same, one unit at a time.
unsigned int CountSeparatorRunsPlain(const char16_t* text, std::size_t size) noexcept;

}  // namespace QuillNS

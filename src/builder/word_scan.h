#pragma once

#include <cstddef>
#include <cstdint>

namespace QuillNS {

// Whether `unit` is one of the fourteen characters that divide words.
constexpr bool IsWordSeparator(char16_t unit) noexcept {
    constexpr std::uint64_t kBelow64 = [] {  // a bit for each
        std::uint64_t bits = 0;
        for (const char separator : "\n\t .,!()%$?*#") bits |= std::uint64_t{1} << separator;
        return bits & ~std::uint64_t{1};  // the literal's own end
    }();
    return unit < 64 ? (kBelow64 >> unit & 1) != 0 : unit == u'|';
}

// The number of maximal runs of separators in the `size` units at `text`, up to the first U+0000 if there is
// one. Reads these units and nothing else.
unsigned int CountSeparatorRuns(const char16_t* text, std::size_t size) noexcept;

// The same, one unit at a time.
unsigned int CountSeparatorRunsPlain(const char16_t* text, std::size_t size) noexcept;

}  // namespace QuillNS

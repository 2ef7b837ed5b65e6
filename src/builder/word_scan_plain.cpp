#include <array>

#include "word_scan.h"

namespace QuillNS {
namespace {

constexpr std::size_t kAscii = 128;  // every separator lies below

constexpr std::array<bool, kAscii> kIsSeparator = [] {
    std::array<bool, kAscii> table{};
    for (std::size_t unit = 0; unit < kAscii; ++unit)
        table[unit] = IsWordSeparator(static_cast<char16_t>(unit));
    return table;
}();

}  // namespace

unsigned int CountSeparatorRunsPlain(const char16_t* text, std::size_t size) noexcept {
    unsigned int runs = 0;
    bool behindSeparator = false;
    for (const char16_t* const end = text + size; text != end && *text != 0; ++text) {
        const bool separator = *text < kAscii && kIsSeparator[*text];
        runs += static_cast<unsigned int>(separator && !behindSeparator);
        behindSeparator = separator;
    }
    return runs;
}

}  // namespace QuillNS

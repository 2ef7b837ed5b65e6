#include "reading_choice.h"

#include <cstdint>

namespace ZOTParser {
namespace {

// Of a hundred bytes of text, those that must stand in tables. Blocks give the better text as soon as a
// layout has anything but tables to say where its text stands.
constexpr std::uint64_t kLeastTextInTables = 99;

}  // namespace

bool IsLaidOutWithTables(const PageOutline& page) noexcept {
    const TextBytes text = page.All() - page.withoutScripts;
    return text.all != 0 && std::uint64_t{text.inTables} * 100 >= text.all * kLeastTextInTables;
}

}  // namespace ZOTParser

#include "reading_choice.h"

#include <cstdint>

namespace ZOTParser {
namespace {

// Of a hundred bytes of text, those that tables alone must lay out. Blocks give the better text as soon as
// there are blocks that say where it stands, in a table's cells too.
constexpr std::uint64_t kLeastTextInTables = 95;

}  // namespace

bool IsLaidOutWithTables(const PageOutline& page) noexcept {
    const TextBytes text = page.All() - page.withoutScripts;
    return text.all != 0 && std::uint64_t{text.inTables} * 100 >= text.all * kLeastTextInTables;
}

}  // namespace ZOTParser

#include "reading_choice.h"

#include <cstdint>

#include "tree_walk.h"

namespace ZOTParser {
namespace {

// Of a hundred bytes of the text that a reader sees, those that must stand in tables. Blocks give the better
// text as soon as a layout has anything but tables to say where its text stands.
constexpr std::uint64_t kLeastTextInTables = 99;

}  // namespace

bool IsLaidOutWithTables(const NodeStore& nodes) noexcept {
    std::uint64_t text = 0;  // bytes of the source
    std::uint64_t textInTables = 0;
    unsigned int openTables = 0;
    WalkTree(
        nodes,
        [&](NodeIndex node) {
            const unsigned int keyword = nodes[node].Keyword();
            if (keyword == kKeywordText && !nodes[node].IsSpace()) {
                text += nodes[node].SourceLength();
                if (openTables != 0) textInTables += nodes[node].SourceLength();
            }
            openTables += keyword == kKeywordTable;
            return keyword != kKeywordSkipped;
        },
        [&](NodeIndex node) { openTables -= nodes[node].Keyword() == kKeywordTable; });
    return text != 0 && textInTables * 100 >= text * kLeastTextInTables;
}

}  // namespace ZOTParser

#include "reading_choice.h"

#include <cstdint>

#include "text_measure.h"
#include "tree_walk.h"

namespace ZOTParser {
namespace {

// Of a hundred words that a reader sees, those that must stand in tables. Blocks give the better text as soon
// as a layout has anything but tables to say where its text stands.
constexpr std::uint64_t kLeastWordsInTables = 99;

}  // namespace

bool IsLaidOutWithTables(const NodeStore& nodes) noexcept {
    bool hasBlocks = false;
    std::uint64_t words = 0;
    std::uint64_t wordsInTables = 0;
    unsigned int openTables = 0;
    WalkTree(
        nodes,
        [&](NodeIndex node) {
            const unsigned int keyword = nodes[node].Keyword();
            if (keyword == kKeywordText) {
                const unsigned int count = MeasureText(nodes, node).words;
                words += count;
                if (openTables != 0) wordsInTables += count;
            }
            hasBlocks |= keyword == kKeywordBlock;
            openTables += keyword == kKeywordTable;
            return keyword != kKeywordSkipped;
        },
        [&](NodeIndex node) { openTables -= nodes[node].Keyword() == kKeywordTable; });
    return !hasBlocks || (words != 0 && wordsInTables * 100 >= words * kLeastWordsInTables);
}

}  // namespace ZOTParser

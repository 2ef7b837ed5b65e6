#include "block_reading.h"

#include "hidden_element.h"
#include "tree_walk.h"

namespace ZOTParser {
namespace {

// The role of a layout block by its tag.
unsigned int BlockRole(Tag tag) noexcept {
    switch (tag) {
        case Tag::kNav:
        case Tag::kFooter:
        case Tag::kAside: return kKeywordClutter;
        case Tag::kDiv:
        case Tag::kSection:
        case Tag::kArticle:
        case Tag::kMain:
        case Tag::kHeader: return kKeywordTable;
        default: return kKeywordBlock;
    }
}

unsigned int RoleInBlockReading(const NodeStore& nodes, NodeIndex element) noexcept {
    const unsigned int keyword = nodes[element].Keyword();
    if (keyword == kKeywordSkipped) return keyword;
    switch (StandingOf(nodes, element)) {
        case Standing::kShown: break;
        case Standing::kHidden: return kKeywordSkipped;
        case Standing::kClutter: return kKeywordClutter;
    }
    return keyword == kKeywordBlock ? BlockRole(nodes.TagOf(element)) : keyword;
}

// The element's children move into a cell in a row of its own.
void WrapChildren(NodeStore& nodes, NodeIndex element) noexcept {
    const NodeIndex row = nodes.NewElement(Tag::kTr, Namespace::kHtml, 0, 0, 0);
    const NodeIndex cell = nodes.NewElement(Tag::kTd, Namespace::kHtml, 0, 0, 0);
    nodes.SetRole(row, kKeywordRow, false);
    nodes.SetRole(cell, kKeywordCell, false);
    nodes.MoveChildren(element, cell);
    nodes.Append(row, cell);
    nodes.Append(element, row);
}

}  // namespace

void ReadBlocks(NodeStore& nodes) noexcept {
    WalkTree(
        nodes,
        [&](NodeIndex node) {
            if (nodes.TypeOf(node) != NodeType::kElement) return false;
            const unsigned int keyword = RoleInBlockReading(nodes, node);
            nodes.ChangeRole(node, keyword);
            return keyword != kKeywordSkipped && keyword != kKeywordClutter;
        },
        [&](NodeIndex node) {
            const bool isBlock = nodes[node].Keyword() == kKeywordTable && nodes.TagOf(node) != Tag::kTable;
            if (isBlock) WrapChildren(nodes, node);
        });
}

}  // namespace ZOTParser

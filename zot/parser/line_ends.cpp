#include "line_ends.h"

namespace ZOTParser {
namespace {

bool CutsLine(unsigned int keyword) noexcept {
    return keyword == kKeywordTable || keyword == kKeywordLegend || keyword == kKeywordClutter;
}

// Whether an element of that role goes on with the line that it stands in.
bool IsWithinLine(unsigned int keyword) noexcept {
    return keyword == kKeywordInline || keyword == kKeywordAnchor || keyword == kKeywordPreformatted;
}

// Whether there is text before the node on its line. Goes back from node to node, and no further than to the
// last one that ends a line, so that all calls together take a step or two for each node of the page.
bool HasTextBefore(const NodeStore& nodes, NodeIndex node) noexcept {
    for (;;) {
        const NodeIndex previous = nodes.PreviousSibling(node);
        if (previous == kNoNode) {
            node = nodes.Parent(node);
            if (node <= kDocumentNode || !IsWithinLine(nodes[node].Keyword())) return false;
            continue;
        }
        node = previous;
        while (IsWithinLine(nodes[node].Keyword()) && nodes.LastChild(node) != kNoNode) {
            node = nodes.LastChild(node);
        }
        const unsigned int keyword = nodes[node].Keyword();
        if (keyword == kKeywordText && !nodes[node].IsSpace()) return true;
        if (keyword != kKeywordText && keyword != kKeywordSkipped && !IsWithinLine(keyword)) return false;
    }
}

}  // namespace

void EndLineBefore(NodeStore& nodes, NodeIndex element) noexcept {
    if (CutsLine(nodes[element].Keyword()) && HasTextBefore(nodes, element)) nodes.InsertBreak(element);
}

void EndLines(NodeStore& nodes, const PageOutline& page) noexcept {
    for (unsigned int index = 1; index < page.blocks.Size();) {
        const Block& block = page.blocks[index];
        EndLineBefore(nodes, block.element);
        index = nodes.IsLeftOut(block.element) ? block.end : index + 1;
    }
}

}  // namespace ZOTParser

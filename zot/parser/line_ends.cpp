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

void EndLines(NodeStore& nodes) noexcept {
    const NodeIndex end = nodes.End();
    for (NodeIndex node = kFirstNode; node < end; ++node) {
        if (!CutsLine(nodes[node].Keyword()) || nodes.Parent(node) == kNoNode) continue;
        if (!HasTextBefore(nodes, node)) continue;
        nodes.InsertBefore(node, nodes.NewBreak());
        if (nodes.Failed()) return;
    }
}

}  // namespace ZOTParser

#pragma once

#include "node_store.h"

namespace ZOTParser {

// Visits every node below the document in document order, without recursion: enter(node) says whether to go
// into the node's children, leave(node) comes behind them, also where there are none or they were left out.
// leave may move the children of its node elsewhere, and neither may touch other places of the tree. When
// memory runs out in leave the walk ends: a node that could not be made leads astray.
template <class Enter, class Leave>
void WalkTree(const NodeStore& nodes, Enter enter, Leave leave) noexcept {
    NodeIndex node = nodes.FirstChild(kDocumentNode);
    while (node != kNoNode) {
        const NodeIndex child = enter(node) ? nodes.FirstChild(node) : kNoNode;
        if (child != kNoNode) {
            node = child;
            continue;
        }
        for (leave(node); !nodes.Failed() && nodes.NextSibling(node) == kNoNode; leave(node)) {
            node = nodes.Parent(node);
            if (node == kDocumentNode) return;
        }
        if (nodes.Failed()) return;
        node = nodes.NextSibling(node);
    }
}

}  // namespace ZOTParser

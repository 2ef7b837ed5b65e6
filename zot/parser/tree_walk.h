#pragma once

#include "node_store.h"

namespace ZOTParser {

// Visits every node below `root` in document order, without recursion: enter(node) says whether to go into an
// element, and then leave(node) comes behind its children, also where there are none. Both may append
// children to the node that they are given, and neither may touch other places of the tree.
template <class Enter, class Leave>
void WalkTree(const NodeStore& nodes, NodeIndex root, Enter enter, Leave leave) noexcept {
    NodeIndex node = nodes.FirstChild(root);
    while (node != kNoNode) {
        if (enter(node)) {
            const NodeIndex child = nodes.FirstChild(node);
            if (child != kNoNode) {
                node = child;
                continue;
            }
            leave(node);
        }
        while (nodes.NextSibling(node) == kNoNode) {
            node = nodes.Parent(node);
            if (node == root) return;
            leave(node);
        }
        node = nodes.NextSibling(node);
    }
}

}  // namespace ZOTParser

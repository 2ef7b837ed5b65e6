#include "selected_content.h"

namespace ZOTParser {
namespace {

bool Is(const NodeStore& nodes, NodeIndex node, Tag tag) noexcept {
    return nodes.TypeOf(node) == NodeType::kElement && nodes.TagOf(node) == tag &&
           nodes.NamespaceOf(node) == Namespace::kHtml;
}

// The node behind `node` in tree order, inside `root`.
NodeIndex NextInTree(const NodeStore& nodes, NodeIndex node, NodeIndex root) noexcept {
    if (nodes.FirstChild(node) != kNoNode) return nodes.FirstChild(node);
    while (node != root && nodes.NextSibling(node) == kNoNode) node = nodes.Parent(node);
    return node == root ? kNoNode : nodes.NextSibling(node);
}

NodeIndex SelectOf(const NodeStore& nodes, NodeIndex node) noexcept {
    while (node != kNoNode && !Is(nodes, node, Tag::kSelect)) node = nodes.Parent(node);
    return node;
}

// The last option that asks for it; otherwise the first that may be chosen.
NodeIndex ChosenOption(const NodeStore& nodes, NodeIndex select) noexcept {
    NodeIndex first = kNoNode;
    NodeIndex asking = kNoNode;
    for (NodeIndex node = select; node != kNoNode; node = NextInTree(nodes, node, select)) {
        if (!Is(nodes, node, Tag::kOption)) continue;
        if (nodes.HasAttribute(node, "selected")) asking = node;
        if (first == kNoNode && !nodes.HasAttribute(node, "disabled")) first = node;
    }
    return asking != kNoNode ? asking : first;
}

void CopyChildren(NodeStore& nodes, NodeIndex from, NodeIndex to) noexcept {
    NodeIndex parent = to;
    for (NodeIndex node = nodes.FirstChild(from); node != kNoNode && !nodes.Failed();) {
        const NodeIndex copy = nodes.Clone(node);
        nodes.Append(parent, copy);
        if (nodes.FirstChild(node) != kNoNode) {
            node = nodes.FirstChild(node);
            parent = copy;
            continue;
        }
        while (node != from && nodes.NextSibling(node) == kNoNode) {
            node = nodes.Parent(node);
            parent = nodes.Parent(parent);
        }
        if (node == from) return;
        node = nodes.NextSibling(node);
    }
}

}  // namespace

bool CopySelectedOptions(NodeStore& nodes) noexcept {
    bool copied = false;
    NodeIndex done = kNoNode;
    const NodeIndex end = nodes.End();
    for (NodeIndex node = kFirstNode; node < end; ++node) {
        if (!Is(nodes, node, Tag::kSelectedcontent)) continue;
        const NodeIndex select = SelectOf(nodes, node);
        if (select == kNoNode || select == done || nodes.HasAttribute(select, "multiple")) continue;
        done = select;  // its first one is the one that shows
        const NodeIndex option = ChosenOption(nodes, select);
        if (option == kNoNode || nodes.FirstChild(node) != kNoNode) continue;
        CopyChildren(nodes, option, node);
        copied = true;
    }
    return copied;
}

}  // namespace ZOTParser

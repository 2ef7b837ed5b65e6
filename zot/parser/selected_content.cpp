#include "selected_content.h"

#include <cstdint>

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

// Selects may be nested, and each copy may be as large as the page: a page gets only so many steps and copies
// as its own nodes pay for.
class SelectedContent {
public:
    explicit SelectedContent(NodeStore& nodes) noexcept
        : nodes_(nodes), end_(nodes.End()), steps_(16 * std::uint64_t{end_}), copies_(end_) {}

    bool CopyAll() noexcept {
        bool copied = false;
        for (NodeIndex node = kFirstNode; node < end_ && steps_ != 0; ++node) {
            if (Is(nodes_, node, Tag::kSelectedcontent)) copied |= Fill(node);
        }
        return copied;
    }

private:
    // A select shows its choice in the first of these elements.
    bool Fill(NodeIndex target) noexcept {
        const NodeIndex select = SelectOf(nodes_, target);
        if (select == kNoNode || nodes_.FirstChild(target) != kNoNode) return false;
        if (!IsFirst(target, select) || nodes_.HasAttribute(select, "multiple")) return false;
        const NodeIndex option = ChosenOption(select);
        if (option == kNoNode) return false;
        CopyChildren(option, target);
        return true;
    }

    bool IsFirst(NodeIndex target, NodeIndex select) noexcept {
        NodeIndex node = select;
        while (node != target && Step()) {
            node = NextInTree(nodes_, node, select);
            if (Is(nodes_, node, Tag::kSelectedcontent) && SelectOf(nodes_, node) == select) break;
        }
        return node == target;
    }

    // The last option that asks for it; otherwise the first that may be chosen.
    NodeIndex ChosenOption(NodeIndex select) noexcept {
        NodeIndex first = kNoNode;
        NodeIndex asking = kNoNode;
        for (NodeIndex node = select; node != kNoNode; node = NextInTree(nodes_, node, select)) {
            if (!Step()) return kNoNode;
            if (!Is(nodes_, node, Tag::kOption)) continue;
            if (nodes_.HasAttribute(node, "selected")) asking = node;
            if (first == kNoNode && !nodes_.HasAttribute(node, "disabled")) first = node;
        }
        return asking != kNoNode ? asking : first;
    }

    void CopyChildren(NodeIndex from, NodeIndex to) noexcept {
        NodeIndex parent = to;
        for (NodeIndex node = nodes_.FirstChild(from); node != kNoNode && !nodes_.Failed();) {
            if (copies_ == 0) return;
            --copies_;
            const NodeIndex copy = nodes_.Clone(node);
            nodes_.Append(parent, copy);
            if (nodes_.FirstChild(node) != kNoNode) {
                node = nodes_.FirstChild(node);
                parent = copy;
                continue;
            }
            while (node != from && nodes_.NextSibling(node) == kNoNode) {
                node = nodes_.Parent(node);
                parent = nodes_.Parent(parent);
            }
            if (node == from) return;
            node = nodes_.NextSibling(node);
        }
    }

    bool Step() noexcept { return steps_ != 0 && --steps_ != 0; }

    NodeStore& nodes_;
    const NodeIndex end_;
    std::uint64_t steps_;  // of the walks through selects
    NodeIndex copies_;     // nodes that may still be copied
};

}  // namespace

bool CopySelectedOptions(NodeStore& nodes) noexcept {
    return SelectedContent(nodes).CopyAll();
}

}  // namespace ZOTParser

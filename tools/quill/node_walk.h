#pragma once

#include <zot/parser.h>

namespace QuillTool {

using Node = ZOTParser::HtmlDocTree::HtmlTreeNode;

// Calls visit(node, parent) for the nodes below `parent`, which may be null, in document order. Goes down one
// call for each level of nesting, which the parser bounds.
template <class Visit>
void WalkNodes(ZOTParser::HtmlDocTree::ChildRange nodes, const Node* parent, const Visit& visit) {
    for (auto at = nodes.begin(); at != nodes.end(); ++at) {
        const Node& node = *at.operator->();
        visit(node, parent);
        WalkNodes(node.Children(), &node, visit);
    }
}

}  // namespace QuillTool

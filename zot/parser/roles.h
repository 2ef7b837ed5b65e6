#pragma once

#include "node_store.h"

namespace ZOTParser {

// Gives every element of a finished tree the role that it plays in the reading that the table asks for, and
// every paragraph, heading, quote and list that has content a line break as its last child, so that nothing
// runs into it. False when memory runs out; the tree is of no use then.
bool AssignRoles(NodeStore& nodes, const HtmlKeywordTable& keywords) noexcept;

}  // namespace ZOTParser

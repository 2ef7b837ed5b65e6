#pragma once

#include "node_store.h"

namespace ZOTParser {

// Whether authors gave the element a class or an id that is a name for what stands around the content, such
// as "related-posts", "siteSidebar" or "cookie_banner". It is a hint and no more: who asks weighs the text
// too.
bool IsNamedAsClutter(const NodeStore& nodes, NodeIndex element) noexcept;

}  // namespace ZOTParser

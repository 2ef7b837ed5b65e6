#pragma once

#include <cstddef>
#include <string_view>

#include "node_walk.h"

namespace QuillTool {

// The name in the start tag of an element, as the page spells it; empty for a text, and for an element that
// the page does not spell out.
std::string_view NameInTag(const Node& node, std::string_view page);

// Whether two ASCII texts are the same but for case; `lower` has no capitals.
bool IsName(std::string_view text, std::string_view lower);

}  // namespace QuillTool

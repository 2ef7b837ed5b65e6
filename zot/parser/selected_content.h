#pragma once

#include "node_store.h"

namespace ZOTParser {

// Fills every selectedcontent element with a copy of what the chosen option of its select element holds.
// Returns whether anything was copied.
// https://html.spec.whatwg.org/multipage/form-elements.html#the-selectedcontent-element
bool CopySelectedOptions(NodeStore& nodes) noexcept;

}  // namespace ZOTParser

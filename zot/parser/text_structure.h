#pragma once

#include "page_outline.h"

namespace ZOTParser {

// Keeps lines where a reader of the page sees lines, in a page whose clutter has been left out:
//   - preformatted text keeps its lines inside inline elements too, and stands on lines of its own
//   - a table of data gives a line for every row, its cells parted by a blank
void KeepLines(NodeStore& nodes, const PageOutline& page) noexcept;

}  // namespace ZOTParser

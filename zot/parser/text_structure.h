#pragma once

#include "node_store.h"

namespace ZOTParser {

// Keep lines where a reader of the page sees lines, in a page whose clutter has been left out.

// Of preformatted text, inside inline elements too; it stands on lines of its own.
void KeepPreformatted(NodeStore& nodes, NodeIndex element) noexcept;

// Of a table of data: every row is a line, its cells parted by a blank.
void MakeLines(NodeStore& nodes, NodeIndex table) noexcept;

// Before a table, a line of data or clutter that has text before it on its line. Who reads the roles ends no
// line there, so that the texts on both sides of a table that is not chosen would run together.
void EndLineBefore(NodeStore& nodes, NodeIndex element) noexcept;

}  // namespace ZOTParser

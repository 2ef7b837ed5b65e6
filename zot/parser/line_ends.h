#pragma once

#include "page_outline.h"

namespace ZOTParser {

// Ends lines where a reader of the page sees them end, in a page whose blocks have been read: a line break
// goes before every table, line of data and clutter that has text before it on its line. Who reads the roles
// ends no line there, so that the texts on both sides of a table that is not chosen would run together.
void EndLines(NodeStore& nodes, const PageOutline& page) noexcept;

// The same before one element.
void EndLineBefore(NodeStore& nodes, NodeIndex element) noexcept;

}  // namespace ZOTParser

#pragma once

#include "node_store.h"

namespace ZOTParser {

// Changes the roles of a page from those of the table reading to those of the block reading: layout blocks
// become tables of one row and one cell, what a browser does not show is skipped, and so is what stands
// around a page's content by its own account. Layout tables stay what they are.
void ReadBlocks(NodeStore& nodes) noexcept;

}  // namespace ZOTParser

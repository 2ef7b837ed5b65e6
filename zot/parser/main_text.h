#pragma once

#include "page_outline.h"

namespace ZOTParser {

// Leaves out as clutter what follows the main text in the block `root` (0: on the page) and is much less than
// it: comments, related stories, the columns beside it, the small print. False when memory runs out.
//
// The prose of each frame weighs more than in proportion to its length, so that one article outweighs many
// teasers. The main text is what stands, from `root` inwards, in the block that has half of the weight or
// more. What precedes it may be its headline and stays; so do paragraphs, which may end it.
bool LeaveOutAfterMainText(NodeStore& nodes, const PageOutline& page, unsigned int root) noexcept;

}  // namespace ZOTParser

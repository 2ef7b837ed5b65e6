#pragma once

#include "page_outline.h"

namespace ZOTParser {

// Changes the roles of a page from those of the table reading to those of the block reading.
//
//   - What a browser does not show is skipped, and what stands around the content by its own account is
//     clutter.
//   - So is a part of the page whose class or id is a name for clutter.
//   - On a page with prose a form is clutter too, unless it is long.
//   - So is what follows the main text and is much less than it (main_text.h).
//   - A page that names the one element holding its main content is read there alone, when that element holds
//     a fair share of what the page shows.
//   - Such an element that holds a list of cards, posts or rows is read as a whole: it has no tables and no
//     links.
//   - A page that shows next to nothing beside what it hides, or keeps for browsers without scripts, is
//     waiting for a script to move its text into place: all of it is read.
//   - Layout blocks that hold text become tables of one row and one cell, but for those around one that
//     shows the same text, and those that stand among the paragraphs of the page's story and read like them.
//   - On a page without prose, such as a list of goods or of headlines, the cards are the content: an anchor
//     around a card, a heading or a teaser is no link there.
//
// What a page shows is never left out as clutter altogether: where there is nothing else, it is the content.
//
// Layout tables stay what they are, but for those among the paragraphs of the story that hold few links: what
// they lay out is a part of it. False when memory runs out.
bool ReadBlocks(NodeStore& nodes, const PageOutline& page) noexcept;

}  // namespace ZOTParser

#pragma once

#include <string>
#include <string_view>
#include <zot/parser.h>

#include "choice.h"
#include "page_edits.h"

namespace QuillTool {

// Tells of each table of the page its rank, its words and whether it won, and of each cell of a winner its
// words and whether it was refused: attributes in the start tags of their elements. Returns the style that
// draws them, as outlines and labels, with what there is to say of the whole page above it.
std::string DrawOutlines(const ZOTParser::HtmlDocTree& tree, const Choice& choice, std::string_view page,
                         PageEdits& edits);

}  // namespace QuillTool

#pragma once

#include <string>
#include <zot/parser.h>

namespace ZOTParser {

// Replaces `text` by all the text that a reader of the page could see: every text outside skipped elements,
// with each run of white space as one blank and without what shows nothing, and one line feed between blocks.
// No line is empty or begins or ends with a blank, and no line feed stands at either end.
//
// Every element with a role but inline and anchor is a block; skipped elements are none, as nothing of them
// shows.
void DocumentText(const HtmlDocTree& tree, std::u16string& text);

}  // namespace ZOTParser

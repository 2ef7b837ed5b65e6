#pragma once

#include <string>
#include <string_view>
#include <zot/parser.h>

#include "page_edits.h"

namespace QuillTool {

// Makes the UTF-8 page safe to look at in a browser, and puts `style` in front of everything in it. Its order
// and its looks stay as without scripts:
//   - a Content-Security-Policy in front of all else lets no script run, nor plug-ins, frames and forms
//   - what would lead away (refresh), weaken that or contradict UTF-8 goes
//   - what the page has for browsers without scripts (noscript) shows
void MakeSafe(const ZOTParser::HtmlDocTree& tree, std::string_view page, const std::string& style,
              PageEdits& edits);

}  // namespace QuillTool

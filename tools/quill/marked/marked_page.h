#pragma once

#include <string>
#include <string_view>
#include <zot/parser.h>

namespace QuillTool {

enum class Marking {
    kHighlight,  // the chosen text
    kExplain,    // and the ranks of all tables
};

// The page, which is the UTF-8 text that `tree` was parsed from, as a page to look at in a browser: with the
// text that the library chooses marked, and safe as MakeSafe has it. False when memory runs out.
bool MarkPage(ZOTParser::HtmlDocTree& tree, std::string_view page, Marking marking, std::string& marked);

}  // namespace QuillTool

#pragma once

#include <string>
#include <string_view>

namespace html5lib {

// The tree of a UTF-8 page, comments and doctype included, in the notation of the cases: one line per node,
// two blanks per level.
std::string DumpDocument(std::string_view page);

// The tree of a fragment. `context` is the name of the element around it, with "svg " or "math " before that
// of a foreign one.
std::string DumpFragment(std::string_view fragment, std::string_view context);

}  // namespace html5lib

#pragma once

#include <zot/parser.h>

namespace QuillNS {

// The keyword table of every parse: built when the library is loaded, destroyed when it is unloaded. It is
// never changed, so parses on several threads share it without a lock.
ZOTParser::HtmlKeywordTable& SharedKeywordTable();

}  // namespace QuillNS

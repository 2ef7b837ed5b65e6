#include "start_up.h"

#include <zot/messages.h>

namespace QuillNS {
namespace {

const ZOTMessagesInit kMessageRegistrations[3];

// Builds the table at load; a host whose own static objects come first, in the same program, builds it with
// its call.
[[maybe_unused]] const ZOTParser::HtmlKeywordTable& kBuiltAtLoad = SharedKeywordTable();

}  // namespace

ZOTParser::HtmlKeywordTable& SharedKeywordTable() {
    static ZOTParser::HtmlKeywordTable table(ZOTParser::HtmlKeywordTable::kDefaultReading);
    return table;
}

}  // namespace QuillNS

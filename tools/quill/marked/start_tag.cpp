#include "start_tag.h"

#include "page_ending.h"

namespace QuillTool {

std::string_view NameInTag(const Node& node, std::string_view page) {
    if (node.Keyword() == ZOTParser::kKeywordText || node.SourceLength() == 0) return {};
    const std::string_view tag = page.substr(node.SourcePosition() + 1, node.SourceLength() - 1);
    return tag.substr(0, tag.find_first_of("\t\n\f\r />"));
}

bool IsName(std::string_view text, std::string_view lower) {
    return text.size() == lower.size() && Lowered(text) == lower;
}

}  // namespace QuillTool

#include "page_format.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "whole_lines.h"

namespace QuillTool {

namespace {

const char* TypeName(QuillNS::DocumentType type) {
    return type == QuillNS::LinkPage ? "links" : "content";
}

// [offset, length] of each.
nlohmann::ordered_json Spans(const std::vector<ZOTParser::TextSpan>& spans) {
    auto array = nlohmann::ordered_json::array();
    for (const ZOTParser::TextSpan& span : spans) array.push_back({span.position, span.length});
    return array;
}

std::string Json(const std::string& name, PageText page) {
    nlohmann::ordered_json object;
    object["file"] = name;
    object["type"] = TypeName(page.type);
    object["text"] = std::move(page.text);
    object["document_text"] = std::move(page.document_text);
    const char* const charset = ZOT::CharsetName(page.charset);
    object["charset"] = charset != nullptr ? charset : "";  // an empty page may be in none
    object["spans"] = Spans(page.spans);
    constexpr int kOneLine = -1;  // bytes of a file name that are no UTF-8 are replaced by U+FFFD
    return object.dump(kOneLine, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace

std::string FormatPage(const std::string& name, PageText page, Show show) {
    switch (show) {
        case Show::kText: return WholeLines(std::move(page.text));
        case Show::kDocumentText: return WholeLines(std::move(page.document_text));
        case Show::kType: return TypeName(page.type) + (name.empty() ? "" : ' ' + name) + '\n';
        case Show::kJson: return Json(name, std::move(page));
        case Show::kHighlight:
        case Show::kExplain: break;
    }
    return {};
}

}  // namespace QuillTool

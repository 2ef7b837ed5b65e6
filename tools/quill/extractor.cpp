#include "extractor.h"

#include <zot/memory_buffer.h>

#include "utf8.h"

namespace QuillTool {

namespace {

using ZOTParser::HtmlKeywordTable;

std::unique_ptr<HtmlKeywordTable> ReadingOf(Layout layout) {
    switch (layout) {
        case Layout::kAuto: break;
        case Layout::kTables: return std::make_unique<HtmlKeywordTable>(HtmlKeywordTable::kTableReading);
    }
    return nullptr;
}

}  // namespace

Extractor::Extractor(Layout layout, ZOT::CHARSET charset) : charset_(charset), reading_(ReadingOf(layout)) {}

bool Extractor::Extract(std::string_view page, bool want_document_text, PageText& result) const {
    ZOTFile::MemoryBuffer bytes(page.data(), static_cast<unsigned int>(page.size()), 0);
    std::u16string text;
    std::u16string document_text;
    std::u16string* const document_text_or_null = want_document_text ? &document_text : nullptr;
    if (reading_ == nullptr) {
        QuillNS::Beautify(bytes, charset_, text, document_text_or_null, &result.type);
    } else {
        ZOTParser::HtmlDocTree tree(charset_);
        ZOTParser::HtmlDocParser(bytes, *reading_, tree).Parse();
        QuillNS::Beautify(tree, text, document_text_or_null, &result.type);
    }
    return ToUtf8(text, result.text) && ToUtf8(document_text, result.document_text);
}

}  // namespace QuillTool

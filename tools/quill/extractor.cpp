#include "extractor.h"

#include <zot/conv.h>
#include <zot/detect.h>
#include <zot/memory_buffer.h>

#include "choice.h"
#include "chosen_spans.h"
#include "page_limit.h"
#include "page_offsets.h"
#include "utf8.h"

namespace QuillTool {

namespace {

using ZOTParser::HtmlKeywordTable;

HtmlKeywordTable::PrtType ReadingOf(Layout layout) {
    switch (layout) {
        case Layout::kAuto: break;
        case Layout::kTables: return HtmlKeywordTable::kTableReading;
        case Layout::kBlocks: return HtmlKeywordTable::kBlockReading;
    }
    return HtmlKeywordTable::kDefaultReading;
}

const unsigned char* Bytes(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

}  // namespace

Extractor::Extractor(Layout layout, ZOT::CHARSET charset)
    : charset_(charset), reading_(std::make_unique<HtmlKeywordTable>(ReadingOf(layout))) {}

void Extractor::Parse(std::string_view page, ZOTParser::HtmlDocTree& tree) const {
    ZOTFile::MemoryBuffer bytes(page.data(), static_cast<unsigned int>(page.size()), 0);
    ZOTParser::HtmlDocParser(bytes, *reading_, tree).Parse();
}

bool Extractor::Extract(std::string_view page, bool want_document_text, PageText& result) const {
    ZOTParser::HtmlDocTree tree(charset_);
    Parse(page, tree);
    std::u16string text;
    std::u16string document_text;
    QuillNS::Beautify(tree, text, want_document_text ? &document_text : nullptr, &result.type);
    return ToUtf8(text, result.text) && ToUtf8(document_text, result.document_text);
}

bool Extractor::ExtractAll(std::string_view page, PageText& result) const {
    ZOTParser::HtmlDocTree tree(charset_);
    Parse(page, tree);
    Choice choice;
    if (!Choose(tree, choice)) return false;
    std::u16string document_text;
    tree.GetText(document_text, HtmlKeywordTable::kDocumentText);
    result.type = choice.type;
    result.charset = tree.Charset();
    for (const ChosenSpan& span : FindChosenSpans(tree, choice)) result.spans.push_back(span.source);
    ToPageOffsets(page, result.charset, result.spans);
    return ToUtf8(choice.text, result.text) && ToUtf8(document_text, result.document_text);
}

bool Extractor::Mark(std::string_view page, Marking marking, std::string& marked) const {
    const ZOT::CHARSET charset =
        charset_ == ZOT::kCharsetNone ? ZOT::DetectEncoding(Bytes(page), page.size()) : charset_;
    ZOT::PoolBuffer utf8;
    if (charset != ZOT::kCharsetUtf8) {
        if (!ZOTCharset::ToUtf8(charset, Bytes(page), page.size(), utf8, 0)) return false;
        if (utf8.Size() > kMaxPageBytes) return false;
        page = {reinterpret_cast<const char*>(utf8.Data()), utf8.Size()};
    }
    ZOTParser::HtmlDocTree tree(ZOT::kCharsetUtf8);
    Parse(page, tree);
    return MarkPage(tree, page, marking, marked);
}

}  // namespace QuillTool

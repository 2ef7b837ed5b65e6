#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <quill/quill.h>
#include <zot/charset.h>
#include <zot/parser.h>

#include "layout.h"
#include "marked/marked_page.h"

namespace QuillTool {

// What the library says of one page, as UTF-8.
struct PageText {
    std::string text;
    std::string document_text;
    QuillNS::DocumentType type = QuillNS::LinkPage;
    ZOT::CHARSET charset = ZOT::kCharsetNone;  // that the page was read in
    std::vector<ZOTParser::TextSpan> spans;    // bytes of the page that the text comes from, in its order
};

// Calls the library, with the same layout and character set for every page. Any number of threads may use it.
//
// A page has at most kMaxPageBytes bytes. The operations return false when memory runs out.
class Extractor {
public:
    // kCharsetNone lets the library find out each page's character set.
    Extractor(Layout layout, ZOT::CHARSET charset);

    // The text and the type; the document text when it is wanted.
    bool Extract(std::string_view page, bool want_document_text, PageText& result) const;

    // Everything.
    bool ExtractAll(std::string_view page, PageText& result) const;

    // The page as MarkPage makes it, in UTF-8.
    bool Mark(std::string_view page, Marking marking, std::string& marked) const;

private:
    void Parse(std::string_view page, ZOTParser::HtmlDocTree& tree) const;

    ZOT::CHARSET charset_;
    std::unique_ptr<ZOTParser::HtmlKeywordTable> reading_;
};

}  // namespace QuillTool

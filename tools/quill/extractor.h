#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <quill/quill.h>
#include <zot/charset.h>
#include <zot/parser.h>

#include "layout.h"

namespace QuillTool {

// What the library says of one page, as UTF-8.
struct PageText {
    std::string text;
    std::string document_text;
    QuillNS::DocumentType type = QuillNS::LinkPage;
};

// Calls the library, with the same layout and character set for every page. Any number of threads may use it.
class Extractor {
public:
    // kCharsetNone lets the library find out each page's character set.
    Extractor(Layout layout, ZOT::CHARSET charset);

    // `page` has at most kMaxPageBytes bytes. The document text is left empty when it is not wanted. False
    // when memory runs out.
    bool Extract(std::string_view page, bool want_document_text, PageText& result) const;

private:
    ZOT::CHARSET charset_;
    std::unique_ptr<ZOTParser::HtmlKeywordTable> reading_;  // null: the library's own choice
};

}  // namespace QuillTool

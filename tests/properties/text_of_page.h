#pragma once

#include <string>
#include <string_view>
#include <quill/document_type.h>
#include <zot/charset.h>
#include <zot/parser.h>
#include <zot/stream.h>

// What one call gives.
struct PageText {
    std::u16string text;
    std::u16string documentText;
    QuillNS::DocumentType type = QuillNS::LinkPage;

    bool operator==(const PageText&) const = default;
};

// The same page by different ways.
PageText TextOfStream(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset);
PageText TextOfBytes(std::string_view page, ZOT::CHARSET charset);
PageText TextOfTree(
    std::string_view page, ZOT::CHARSET charset,
    ZOTParser::HtmlKeywordTable::PrtType reading = ZOTParser::HtmlKeywordTable::kDefaultReading);
PageText TextOfPartition(std::string_view page, ZOT::CHARSET charset);
// As a string of OLE Automation, which holds the decoded characters. The function gives no type.
PageText TextOfString(std::string_view page, ZOT::CHARSET charset = ZOT::kCharsetUtf8);

// A page before the choice of what is written, and behind it.
struct WholeText {
    std::u16string read;     // the texts of the parser's tree that its roles let anybody read, as they stand
    std::u16string written;  // the text when every table is admitted
    PageText chosen;
};
WholeText WholeTextOf(std::string_view page, ZOT::CHARSET charset,
                      ZOTParser::HtmlKeywordTable::PrtType reading);

// The character set that is found out for the page.
ZOT::CHARSET CharsetOf(std::string_view page);

#pragma once

#include <string>
#include <string_view>
#include <quill/document_type.h>
#include <zot/charset.h>
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
PageText TextOfTree(std::string_view page, ZOT::CHARSET charset);
PageText TextOfPartition(std::string_view page, ZOT::CHARSET charset);
// A UTF-8 page as a string of OLE Automation. The function gives no type.
PageText TextOfString(std::string_view page);

#pragma once

#include <string>
#include <quill/quill.h>

// The stages that are measured, each through the public interface. A page is UTF-8, and whatever a stage
// makes of it is freed before the stage returns.

inline ZOTFile::MemoryBuffer View(const std::string& page) {
    return ZOTFile::MemoryBuffer(page.data(), static_cast<unsigned int>(page.size()), 0);
}

inline ZOTParser::HtmlKeywordTable& Keywords() {
    static ZOTParser::HtmlKeywordTable table(ZOTParser::HtmlKeywordTable::kDefaultReading);
    return table;
}

// Bytes to the parser's tree.
inline bool ParsePage(const std::string& page) {
    ZOTFile::MemoryBuffer bytes = View(page);
    ZOTParser::HtmlDocTree tree(ZOT::kCharsetUtf8);
    return ZOTParser::HtmlDocParser(bytes, Keywords(), tree).Parse();
}

// Bytes to the content tree.
inline ZOT::SmartPtr<QuillNS::KTable> BuildPage(const std::string& page) {
    ZOTFile::MemoryBuffer bytes = View(page);
    return QuillNS::GetDocumentTree(bytes, ZOT::kCharsetUtf8);
}

// Bytes to text: the whole road.
inline bool BeautifyPage(const std::string& page) {
    ZOTFile::MemoryBuffer bytes = View(page);
    std::u16string text;
    return QuillNS::Beautify(bytes, ZOT::kCharsetUtf8, text, nullptr, nullptr);
}

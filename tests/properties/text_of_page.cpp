#include "properties/text_of_page.h"

#include <quill/beautify.h>
#include <quill/exports.h>
#include <quill/partitions.h>
#include <zot/conv.h>
#include <zot/memory_buffer.h>

#include "ole/ole_text.h"

using namespace QuillNS;

namespace {

ZOTFile::MemoryBuffer View(std::string_view page) {
    return {page.data(), static_cast<unsigned int>(page.size()), 0};
}

std::u16string Decoded(std::string_view utf8) {
    std::u16string wide(utf8.size(), u'\0');
    unsigned int used = 0;
    unsigned int written = 0;
    ZOTCharset::ConversionState state;
    ZOTCharset::Conv::MbToWcConversionFunction(ZOT::kCharsetUtf8)(
        state, reinterpret_cast<const unsigned char*>(utf8.data()), static_cast<unsigned int>(utf8.size()),
        used, wide.data(), static_cast<unsigned int>(wide.size()), written, true);
    wide.resize(written);
    return wide;
}

std::u16string Taken(VARIANT& variant) {
    const std::u16string text = variant.vt == VT_BSTR ? TextOf(variant.bstrVal) : std::u16string();
    VariantClear(&variant);
    return text;
}

}  // namespace

PageText TextOfStream(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset) {
    PageText text;
    Beautify(page, charset, text.text, &text.documentText, &text.type);
    return text;
}

PageText TextOfBytes(std::string_view page, ZOT::CHARSET charset) {
    ZOTFile::MemoryBuffer bytes = View(page);
    return TextOfStream(bytes, charset);
}

PageText TextOfTree(std::string_view page, ZOT::CHARSET charset) {
    ZOTFile::MemoryBuffer bytes = View(page);
    ZOTParser::HtmlKeywordTable keywords(ZOTParser::HtmlKeywordTable::kDefaultReading);
    ZOTParser::HtmlDocTree tree(charset);
    ZOTParser::HtmlDocParser(bytes, keywords, tree).Parse();
    PageText text;
    Beautify(tree, text.text, &text.documentText, &text.type);
    return text;
}

PageText TextOfPartition(std::string_view page, ZOT::CHARSET charset) {
    ZOTFile::MemoryBuffer bytes = View(page);
    const HtmlDocPartitions partition(ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(&bytes, false)),
                                      charset, HtmlDocPartitions::HtmlContent);
    PageText text;
    Beautify(partition, text.text, &text.documentText, &text.type);
    return text;
}

PageText TextOfString(std::string_view page) {
    VARIANT input, text, documentText;
    for (VARIANT* const variant : {&input, &text, &documentText}) VariantInit(variant);
    input.vt = VT_BSTR;
    input.bstrVal = NewString(Decoded(page));
    GetBeautifiedTextFromString(&input, &text, &documentText);
    VariantClear(&input);
    PageText result;
    result.text = Taken(text);
    result.documentText = Taken(documentText);
    return result;
}

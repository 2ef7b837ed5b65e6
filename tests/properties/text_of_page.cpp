#include "properties/text_of_page.h"

#include <quill/beautify.h>
#include <quill/exports.h>
#include <quill/partitions.h>
#include <quill/text_extractor.h>
#include <zot/conv.h>
#include <zot/memory_buffer.h>

#include "ole/ole_text.h"

using namespace QuillNS;
using ZOTParser::HtmlDocTree;
using ZOTParser::HtmlKeywordTable;

namespace {

ZOTFile::MemoryBuffer View(std::string_view page) {
    return {page.data(), static_cast<unsigned int>(page.size()), 0};
}

std::u16string Decoded(std::string_view page, ZOT::CHARSET charset) {
    std::u16string wide(page.size(), u'\0');
    unsigned int used = 0;
    unsigned int written = 0;
    ZOTCharset::ConversionState state;
    ZOTCharset::Conv::MbToWcConversionFunction(charset)(
        state, reinterpret_cast<const unsigned char*>(page.data()), static_cast<unsigned int>(page.size()),
        used, wide.data(), static_cast<unsigned int>(wide.size()), written, true);
    wide.resize(written);
    return wide;
}

void Parse(std::string_view page, HtmlKeywordTable::PrtType reading, HtmlDocTree& tree) {
    ZOTFile::MemoryBuffer bytes = View(page);
    HtmlKeywordTable keywords(reading);
    ZOTParser::HtmlDocParser(bytes, keywords, tree).Parse();
}

// Appends the texts that are read. Of a table these are what its cells hold, those of the last foot group
// behind all others.
class ReadTexts {
public:
    explicit ReadTexts(std::u16string& texts) : texts_(texts) {}

    void Append(HtmlDocTree::ChildRange nodes) {
        for (auto node = nodes.begin(); node != nodes.end(); ++node) {
            switch (node->Keyword()) {
                case ZOTParser::kKeywordText:
                    node->GetText(text_);
                    texts_ += text_;
                    break;
                case ZOTParser::kKeywordSkipped:
                case ZOTParser::kKeywordClutter: break;
                case ZOTParser::kKeywordTable: AppendTable(node->Children()); break;
                default: Append(node->Children());
            }
        }
    }

private:
    using Children = HtmlDocTree::ChildRange;

    void AppendTable(Children table) {
        Children foot(nullptr);
        AppendRows(table, &foot);
        AppendRows(foot, nullptr);
    }

    void AppendRows(Children nodes, Children* foot) {
        for (auto node = nodes.begin(); node != nodes.end(); ++node) {
            switch (node->Keyword()) {
                case ZOTParser::kKeywordRow: AppendCells(node->Children()); break;
                case ZOTParser::kKeywordFoot:
                    if (foot != nullptr) {
                        if (node->HasChildren()) *foot = node->Children();
                        break;
                    }
                    [[fallthrough]];
                case ZOTParser::kKeywordHead:
                case ZOTParser::kKeywordBody: AppendRows(node->Children(), foot); break;
                default: break;
            }
        }
    }

    void AppendCells(Children row) {
        for (auto node = row.begin(); node != row.end(); ++node) {
            const bool isCell = node->Keyword() == ZOTParser::kKeywordCell ||
                                node->Keyword() == ZOTParser::kKeywordHeaderCell;
            if (isCell) Append(node->Children());
        }
    }

    std::u16string& texts_;
    std::u16string text_;
};

std::u16string Taken(VARIANT& variant) {
    std::u16string text = variant.vt == VT_BSTR ? TextOf(variant.bstrVal) : std::u16string();
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

PageText TextOfTree(std::string_view page, ZOT::CHARSET charset, HtmlKeywordTable::PrtType reading) {
    HtmlDocTree tree(charset);
    Parse(page, reading, tree);
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

PageText TextOfString(std::string_view page, ZOT::CHARSET charset) {
    VARIANT input, text, documentText;
    for (VARIANT* const variant : {&input, &text, &documentText}) VariantInit(variant);
    input.vt = VT_BSTR;
    input.bstrVal = NewString(Decoded(page, charset));
    GetBeautifiedTextFromString(&input, &text, &documentText);
    VariantClear(&input);
    PageText result;
    result.text = Taken(text);
    result.documentText = Taken(documentText);
    return result;
}

WholeText WholeTextOf(std::string_view page, ZOT::CHARSET charset, HtmlKeywordTable::PrtType reading) {
    HtmlDocTree tree(charset);
    Parse(page, reading, tree);
    WholeText whole;
    ReadTexts(whole.read).Append(tree.Entries());
    ZOTFile::MemoryBuffer out(64);
    QuillTextExtractor(GetDocumentTree(tree), true, nullptr).GetText(&out);
    out.SeekG(0, ZOT::kFromBegin);
    out.Copy(whole.written, ZOT::kWholeStream);
    Beautify(tree, whole.chosen.text, nullptr, &whole.chosen.type);
    return whole;
}

ZOT::CHARSET CharsetOf(std::string_view page) {
    HtmlDocTree tree(ZOT::kCharsetNone);
    Parse(page, HtmlKeywordTable::kTableReading, tree);
    return tree.HasDocument() ? tree.Charset() : ZOT::kCharsetUtf8;
}

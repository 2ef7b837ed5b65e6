// Bytes to text, the way that hosts go: the first two bytes of the input choose the character set, the rest
// is the page.

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <quill/beautify.h>
#include <zot/memory_buffer.h>
#include <zot/parser.h>

#include "fuzz_target.h"
#include "trickling_stream.h"
#include "visible_text.h"

namespace {

using namespace QuillNS;

constexpr int kCharsets[] = {ZOT::kCharsetUtf8,
                             ZOT::kCharsetNone,
                             ZOT::kCharsetUtf16Le,
                             ZOT::kCharsetUtf16Be,
                             ZOT::kCharsetLatin1,
                             ZOT::kCharsetWindows1252,
                             ZOT::kCharsetShiftJis,
                             ZOT::kCharsetGb18030,
                             ZOT::kCharsetEucKr,
                             ZOT::kCharsetBig5,
                             ZOT::kCharsetIso2022Jp,
                             ZOT::kCharsetEucJp,
                             ZOT::kCharsetReplacement,
                             ZOT::kCharsetUserDefined,
                             ZOT::kCharsetWindows1258,
                             ZOT::kCharsetIso8859_8I,
                             0,
                             -2,
                             0x7FFFFFFF};

// One of the known numbers, or any other.
ZOT::CHARSET ChooseCharset(unsigned int choice) {
    if (choice >= 0x8000) return static_cast<ZOT::CHARSET>(choice);
    return static_cast<ZOT::CHARSET>(kCharsets[choice % std::size(kCharsets)]);
}

struct Texts {
    std::u16string text;
    std::u16string documentText;
    DocumentType type = ContentPage;
    bool produced = false;

    bool operator==(const Texts&) const = default;
};

Texts OfStream(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset) {
    Texts texts;
    texts.produced = Beautify(page, charset, texts.text, &texts.documentText, &texts.type);
    return texts;
}

bool HasFoot(ZOTParser::HtmlDocTree::ChildRange nodes) {
    for (auto node = nodes.begin(); node != nodes.end(); ++node) {
        if (node->Keyword() == ZOTParser::kKeywordFoot || HasFoot(node->Children())) return true;
    }
    return false;
}

// Whether there is a text of which nothing shows, and not for white space alone: it parts the words on its
// two sides, which are one word to a reader.
bool HasTextThatOnlyParts(ZOTParser::HtmlDocTree::ChildRange nodes) {
    std::u16string text;
    for (auto node = nodes.begin(); node != nodes.end(); ++node) {
        node->GetText(text);
        const bool shows = !VisibleUnits(text).empty();
        const bool isSpace = std::all_of(text.begin(), text.end(), ZOT::IsWhiteSpace);
        if ((!shows && !isSpace) || HasTextThatOnlyParts(node->Children())) return true;
    }
    return false;
}

// `moves` is whether the page has rows that are read after what stands behind them, `parts` whether it has
// such texts.
Texts OfTree(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset, ZOTParser::HtmlKeywordTable::PrtType reading,
             bool& moves, bool& parts) {
    ZOTParser::HtmlKeywordTable keywords(reading);
    ZOTParser::HtmlDocTree tree(charset);
    ZOTParser::HtmlDocParser(page, keywords, tree).Parse();
    moves = HasFoot(tree.Entries());
    parts = HasTextThatOnlyParts(tree.Entries());
    Texts texts;
    texts.produced = Beautify(tree, texts.text, &texts.documentText, &texts.type);
    return texts;
}

ZOTFile::MemoryBuffer View(std::string_view page) {
    return {page.data(), static_cast<unsigned int>(page.size()), 0};
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const ZOT::CHARSET charset = ChooseCharset(data[0] | static_cast<unsigned int>(data[1]) << 8);
    const std::string_view page(reinterpret_cast<const char*>(data) + 2, size - 2);

    ZOTFile::MemoryBuffer whole = View(page);
    const Texts texts = OfStream(whole, charset);
    Require(texts.produced == !texts.text.empty(), "the result tells whether there is text");

    bool moves = false;
    bool parts = false;
    ZOTFile::MemoryBuffer again = View(page);
    Require(OfTree(again, charset, ZOTParser::HtmlKeywordTable::kDefaultReading, moves, parts) == texts,
            "a parsed tree has the text of its page");
    if (!moves) {
        Require(HoldsInOrder(VisibleUnits(texts.documentText), VisibleUnits(texts.text)),
                "the document text holds the text, in the same order");
    }

    ZOTFile::MemoryBuffer blocks = View(page);
    const Texts ofBlocks = OfTree(blocks, charset, ZOTParser::HtmlKeywordTable::kBlockReading, moves, parts);
    if (!moves && !parts) {
        Require(HoldsInOrder(VisibleWords(ofBlocks.documentText), VisibleWords(ofBlocks.text)),
                "words stay whole and apart in the block reading");
    }

    TricklingStream trickle(page, 1 + static_cast<unsigned int>(size % 7));
    Require(OfStream(trickle, charset) == texts, "the stream's pieces do not matter");
    return 0;
}

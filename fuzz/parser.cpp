// The whole parse: bytes in, the delivered tree and the document text out.

#include <string>
#include <string_view>

#include "fuzz_target.h"
#include "trickling_stream.h"
#include "zot/parsed_page.h"

namespace {

constexpr unsigned kMaxDepth = 512;  // elements; a text or a break may stand in the last one

// Everything that can be read from the tree.
std::u16string Describe(const ParsedPage& page) {
    std::u16string description;
    std::u16string text;
    const auto add = [&description](unsigned int number) {
        description += static_cast<char16_t>(number >> 16);
        description += static_cast<char16_t>(number & 0xFFFF);
    };
    VisitNodes(page.Tree().Entries(), [&](const ParsedPage::Node& node, unsigned depth) {
        add(depth);
        add(node.KeywordWord());
        add(node.SourcePosition());
        add(node.SourceLength());
        node.GetText(text);
        description += text;
    });
    return description;
}

void RequireBounds(const ParsedPage& page) {
    const std::size_t size = page.Tree().SourceSize();
    std::size_t nodes = 0;
    VisitNodes(page.Tree().Entries(), [&](const ParsedPage::Node& node, unsigned depth) {
        ++nodes;
        const bool leaf =
            node.Keyword() == ZOTParser::kKeywordText || node.Keyword() == ZOTParser::kKeywordBreak;
        Require(depth <= kMaxDepth + (leaf ? 1 : 0), "the depth is bounded");
        Require(std::size_t{node.SourcePosition()} + node.SourceLength() <= size,
                "spans lie inside the page");
    });
    Require(nodes <= 2 * size + 8, "nodes stay in proportion to the page");
}

void RequireCleanText(const ParsedPage& page) {
    const std::u16string text = page.DocumentText();
    if (text.empty()) return;
    Require(text.front() > u' ' && text.back() > u' ', "no white space at an end of the document text");
    for (std::size_t i = 1; i < text.size(); ++i) {
        Require(text[i - 1] > u' ' || text[i] > u' ', "one blank or line feed at a time");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const ParsedPage page(bytes);
    RequireBounds(page);
    RequireCleanText(page);
    const std::u16string description = Describe(page);
    Require(Describe(ParsedPage(bytes)) == description, "parsing twice gives the same tree");
    TricklingStream trickle(bytes, 1 + static_cast<unsigned int>(size % 7));
    Require(Describe(ParsedPage(trickle, ZOT::kCharsetUtf8)) == description,
            "the stream's pieces do not matter");

    const ParsedPage detected(bytes, ZOT::kCharsetNone);
    RequireBounds(detected);
    RequireCleanText(detected);
    return 0;
}

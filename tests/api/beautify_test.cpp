#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <quill/beautify.h>
#include <zot/memory_buffer.h>

namespace QuillNS {
namespace {

constexpr char kArticle[] = "<p>Some words that make up the whole of a page.";
constexpr char16_t kArticleText[] = u"Some words that make up the whole of a page.";

ZOTFile::MemoryBuffer Bytes(const char* html) {
    return {html, static_cast<unsigned int>(std::strlen(html)), 0};
}

std::u16string Written(ZOTFile::MemoryBuffer& out) {
    std::u16string text;
    out.SeekG(0, ZOT::kFromBegin);
    out.Copy(text, ZOT::kWholeStream);
    return text;
}

std::u16string Trimmed(std::u16string text) {
    while (!text.empty() && text.back() == u'\n') text.pop_back();
    while (!text.empty() && text.front() == u'\n') text.erase(0, 1);
    return text;
}

// The four ways into one page, behind one call.
enum class Way { kBytesToText, kTreeToText, kTreeToStream, kBytesToStream };
constexpr Way kAllWays[] = {Way::kBytesToText, Way::kTreeToText, Way::kTreeToStream, Way::kBytesToStream};

// What `text` holds stands in the output, string or stream, before the call.
bool Through(Way way, const char* html, std::u16string& text, std::u16string* documentText,
             DocumentType* type) {
    auto bytes = Bytes(html);
    ZOTFile::MemoryBuffer out(16);
    ZOT::Copy(out, text, ZOT::kWholeStream);
    ZOTParser::HtmlKeywordTable keywords(ZOTParser::HtmlKeywordTable::kDefaultReading);
    ZOTParser::HtmlDocTree tree(ZOT::kCharsetUtf8);
    if (way == Way::kTreeToText || way == Way::kTreeToStream) {
        ZOTParser::HtmlDocParser(bytes, keywords, tree).Parse();
    }
    bool result = false;
    switch (way) {
        case Way::kBytesToText: return Beautify(bytes, ZOT::kCharsetUtf8, text, documentText, type);
        case Way::kTreeToText: return Beautify(tree, text, documentText, type);
        case Way::kTreeToStream: result = Beautify(tree, out, documentText, type); break;
        case Way::kBytesToStream: result = Beautify(bytes, ZOT::kCharsetUtf8, out, documentText, type); break;
    }
    text = Written(out);
    return result;
}

TEST(Beautify, GivesTextDocumentTextAndType) {
    for (const Way way : kAllWays) {
        std::u16string text;
        std::u16string documentText;
        DocumentType type = LinkPage;
        EXPECT_TRUE(Through(way, kArticle, text, &documentText, &type));
        EXPECT_EQ(Trimmed(text), kArticleText);
        EXPECT_EQ(documentText, kArticleText);
        EXPECT_EQ(type, ContentPage);

        std::u16string again;
        EXPECT_TRUE(Through(way, kArticle, again, nullptr, nullptr));
        EXPECT_EQ(again, text);
    }
}

TEST(Beautify, APageWithoutContentHasNoTextAndIsALinkPage) {
    for (const Way way : kAllWays) {
        std::u16string text;
        std::u16string documentText = u"before";
        DocumentType type = ContentPage;
        EXPECT_FALSE(Through(way, "", text, &documentText, &type));
        EXPECT_EQ(text, u"");
        EXPECT_EQ(documentText, u"before");
        EXPECT_EQ(type, LinkPage);
    }
}

TEST(Beautify, StringsAreReplacedAndStreamsAppendedTo) {
    struct Case {
        Way way;
        const char* html;
        std::u16string text;
        bool result;
    };
    const Case cases[] = {
        {Way::kBytesToText, "", u"", false},
        {Way::kTreeToText, "", u"", false},
        {Way::kTreeToStream, "", u"before", false},
        {Way::kBytesToStream, "", u"before", true},  // what stood there before makes the result true
        {Way::kBytesToText, kArticle, kArticleText, true},
        {Way::kTreeToText, kArticle, kArticleText, true},
        {Way::kTreeToStream, kArticle, std::u16string(u"before") + kArticleText, true},
        {Way::kBytesToStream, kArticle, std::u16string(u"before\n") + kArticleText, true},
    };
    for (const Case& c : cases) {
        std::u16string text = u"before";
        EXPECT_EQ(Through(c.way, c.html, text, nullptr, nullptr), c.result) << static_cast<int>(c.way);
        EXPECT_EQ(Trimmed(text), c.text) << static_cast<int>(c.way);
    }
}

TEST(GetDocumentTree, GivesTheWholeTreeUnranked) {
    auto bytes = Bytes("<p><a href=x>one</a></p><table><tr><td>two</table>");
    const ZOT::SmartPtr<KTable> root = GetDocumentTree(bytes, ZOT::kCharsetUtf8);
    ASSERT_TRUE(root);
    EXPECT_EQ(root->NbRef(), 1);
    EXPECT_EQ(root->GetCell(0, 1)->Links(), 1u);
    EXPECT_EQ(root->GetCell(0, 1)->Tables(), 1u);
}

TEST(GetDocumentTree, TakesTheReadingOfATreeThatTheHostParsed) {
    for (const auto reading :
         {ZOTParser::HtmlKeywordTable::kTableReading, ZOTParser::HtmlKeywordTable::kBlockReading}) {
        auto bytes = Bytes("<div>one</div><div>two</div>");
        ZOTParser::HtmlKeywordTable keywords(reading);
        ZOTParser::HtmlDocTree tree(ZOT::kCharsetUtf8);
        ZOTParser::HtmlDocParser(bytes, keywords, tree).Parse();
        const ZOT::SmartPtr<KTable> root = GetDocumentTree(tree);
        ASSERT_TRUE(root);
        const bool blocks = reading == ZOTParser::HtmlKeywordTable::kBlockReading;
        EXPECT_EQ(root->GetCell(0, 1)->Tables(), blocks ? 2u : 0u);
    }
}

TEST(GetDocumentTree, APageWithoutContentHasThreeEmptyRows) {
    auto bytes = Bytes("");
    const ZOT::SmartPtr<KTable> root = GetDocumentTree(bytes, ZOT::kCharsetUtf8);
    ASSERT_TRUE(root);
    EXPECT_EQ(root->Cols(), 1u);
    EXPECT_EQ(root->Rows(), 3u);
    for (const auto& cell : *root) EXPECT_FALSE(cell);
}

}  // namespace
}  // namespace QuillNS

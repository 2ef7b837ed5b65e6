#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <quill/beautify.h>
#include <quill/partitions.h>
#include <zot/memory_buffer.h>

#include "failing_pool.h"

namespace QuillNS {
namespace {

constexpr std::string_view kPage =
    "<ul><li><a href=a>One</a><li><a href=b>Two</a></ul><h1>A heading</h1><pre>some\n text</pre>"
    "<table><tr><td rowspan=2>left<td>Many words in a table, more than elsewhere.<tr><td><table><tr><td>and "
    "in a "
    "table inside it</table></table><p>The end.";

ZOTFile::MemoryBuffer Bytes() {
    return {kPage.data(), static_cast<unsigned int>(kPage.size()), 0};
}

// Runs `beautify` with its first allocation failing, then its second, and so on until it goes through.
template <class Beautifier>
void ExpectTextOrNothing(Beautifier beautify) {
    std::u16string whole;
    ASSERT_TRUE(beautify(whole));
    for (unsigned int n = 1;; ++n) {
        const unsigned int live = LiveAllocations();
        std::u16string text = u"before";
        bool result = false;
        bool happened = false;
        {
            FailFromNthAllocation failing(n);
            result = beautify(text);
            happened = failing.Happened();
        }
        EXPECT_EQ(LiveAllocations(), live) << "left behind when allocation " << n << " fails";
        EXPECT_EQ(result, !text.empty()) << n;
        if (!happened) {
            EXPECT_EQ(text, whole);
            break;
        }
    }
}

TEST(OutOfMemory, APageGivesNothingAndLeavesNothingBehind) {
    ExpectTextOrNothing([](std::u16string& text) {
        auto bytes = Bytes();
        return Beautify(bytes, ZOT::kCharsetUtf8, text, nullptr, nullptr);
    });
}

TEST(OutOfMemory, SoDoPartitions) {
    ExpectTextOrNothing([](std::u16string& text) {
        text.clear();
        auto bytes = Bytes();
        auto frame = Bytes();
        auto* const child =
            new HtmlDocPartitions(ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(&frame, false)),
                                  ZOT::kCharsetUtf8, HtmlDocPartitions::HtmlContent);
        HtmlDocPartitions page(ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(&bytes, false)),
                               ZOT::kCharsetUtf8, HtmlDocPartitions::HtmlContent);
        page.children.Append(ZOT::RefCount<HtmlDocPartitions>(child));
        return Beautify(page, text, nullptr, nullptr);
    });
}

TEST(OutOfMemory, WithoutATreeThePageIsALinkPage) {
    auto bytes = Bytes();
    std::u16string text;
    DocumentType type = ContentPage;
    const FailFromNthAllocation failing(1);
    EXPECT_FALSE(Beautify(bytes, ZOT::kCharsetUtf8, text, nullptr, &type));
    EXPECT_EQ(type, LinkPage);
}

// With each size of the page the nodes run out in another stage of the parse, that of the roles included.
TEST(OutOfMemory, APageOfBlocksEndsWhereverItsNodesRunOut) {
    for (int fillers = 0; fillers < 80; ++fillers) {
        std::string page =
            "<div><ul><li><p>one</ul><div><pre>two</pre><table><tr><td>three<td>four<tr><td>"
            "five<td>six</table></div></div>";
        for (int i = 0; i < fillers; ++i) page += "<i></i>";
        ExpectTextOrNothing([&page](std::u16string& text) {
            ZOTFile::MemoryBuffer bytes(page.data(), static_cast<unsigned int>(page.size()), 0);
            return Beautify(bytes, ZOT::kCharsetUtf8, text, nullptr, nullptr);
        });
    }
}

TEST(OutOfMemory, TheContentTreeIsWholeOrNull) {
    const auto words = [](KTable& root) {
        unsigned int sum = 0;
        for (const auto& item : *root.GetCell(0, 1)) sum += item->IsText() ? 1 : item->Table()->Cols() * 100;
        return sum;
    };
    auto bytes = Bytes();
    const unsigned int whole = words(*GetDocumentTree(bytes, ZOT::kCharsetUtf8));
    for (unsigned int n = 1;; ++n) {
        auto again = Bytes();
        FailFromNthAllocation failing(n);
        const ZOT::SmartPtr<KTable> root = GetDocumentTree(again, ZOT::kCharsetUtf8);
        if (root && root->GetCell(0, 1)) {
            EXPECT_EQ(words(*root), whole) << n;
        }
        if (!failing.Happened()) break;
    }
}

}  // namespace
}  // namespace QuillNS

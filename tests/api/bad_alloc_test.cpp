// The class interface when the process runs out of memory for standard strings and sets: std::bad_alloc
// passes through, and nothing else happens. The pages come with their character sets: who finds out what
// nobody says may keep memory when a `new` of its own fails.

#include <gtest/gtest.h>

#include <new>
#include <vector>
#include <quill/quill.h>

#include "api/failing_new.h"
#include "api/sample_pages.h"
#include "failing_pool.h"

namespace QuillNS {
namespace {

using ZOTParser::HtmlDocTree;
using ZOTParser::HtmlKeywordTable;

ZOTFile::MemoryBuffer Bytes(const std::string& page) {
    return {page.data(), static_cast<unsigned int>(page.size()), 0};
}

// Calls `call(text)` with its first `new` failing, then its second, and so on until it goes through. Each
// call gives all of the text, none, or std::bad_alloc, and leaves nothing behind.
template <class Call>
void ExpectAllOrNothing(const char* name, const Call& call) {
    SCOPED_TRACE(name);
    std::u16string whole;
    call(whole);
    unsigned int thrown = 0;
    for (int n = 1;; ++n) {
        const unsigned int pool = LiveAllocations();
        const int news = LiveNews();
        bool happened = false;
        {
            std::u16string text;
            {
                const FailNthNew failing(n);
                try {
                    call(text);
                } catch (const std::bad_alloc&) {
                    ++thrown;
                    text.clear();
                }
                happened = failing.Happened();
            }
            ASSERT_TRUE(text == whole || (happened && text.empty())) << n;
        }
        ASSERT_EQ(LiveAllocations(), pool) << "left in the pool when new " << n << " fails";
        ASSERT_EQ(LiveNews(), news) << "left behind when new " << n << " fails";
        if (!happened) break;
        ASSERT_LT(n, 100000);
    }
    EXPECT_GT(thrown, 0u);
}

class BadAlloc : public ::testing::TestWithParam<std::string> {
protected:
    void Parse(HtmlDocTree& tree) const {
        ZOTFile::MemoryBuffer bytes = Bytes(GetParam());
        HtmlKeywordTable keywords(HtmlKeywordTable::kDefaultReading);
        ZOTParser::HtmlDocParser(bytes, keywords, tree).Parse();
    }
};
std::string NameOf(const ::testing::TestParamInfo<std::string>& page) {
    return "OnPage" + std::to_string(page.index);
}
INSTANTIATE_TEST_SUITE_P(Sample, BadAlloc, ::testing::ValuesIn(SamplePages()), NameOf);

TEST_P(BadAlloc, PassesThroughBeautify) {
    std::u16string documentText;
    DocumentType type = LinkPage;
    for (const ZOT::CHARSET charset : {ZOT::kCharsetUtf8, ZOT::kCharsetWindows1251}) {
        ExpectAllOrNothing("bytes to a string", [&](std::u16string& text) {
            ZOTFile::MemoryBuffer bytes = Bytes(GetParam());
            Beautify(bytes, charset, text, &documentText, &type);
        });
    }
    ExpectAllOrNothing("bytes to a stream", [&](std::u16string& text) {
        ZOTFile::MemoryBuffer bytes = Bytes(GetParam());
        ZOTFile::MemoryBuffer out(16);
        Beautify(bytes, ZOT::kCharsetUtf8, out, nullptr, nullptr);
        out.SeekG(0, ZOT::kFromBegin);
        out.Copy(text, ZOT::kWholeStream);
    });
    HtmlDocTree tree(ZOT::kCharsetUtf8);
    Parse(tree);
    ExpectAllOrNothing("a parsed page to a string",
                       [&](std::u16string& text) { Beautify(tree, text, nullptr, nullptr); });
}

TEST_P(BadAlloc, PassesThroughPartitions) {
    ExpectAllOrNothing("a page and its frame", [&](std::u16string& text) {
        ZOTFile::MemoryBuffer bytes = Bytes(GetParam());
        ZOTFile::MemoryBuffer frame = Bytes(GetParam());
        const auto partition = [](ZOTFile::MemoryBuffer& buffer) {
            return HtmlDocPartitions(ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(&buffer, false)),
                                     ZOT::kCharsetUtf8, HtmlDocPartitions::HtmlContent);
        };
        HtmlDocPartitions page = partition(bytes);
        page.children.Append(ZOT::RefCount<HtmlDocPartitions>(new HtmlDocPartitions(partition(frame))));
        Beautify(page, text, nullptr, nullptr);
    });
}

TEST_P(BadAlloc, PassesThroughTheContentTree) {
    ExpectAllOrNothing("a tree from bytes, then its text", [&](std::u16string& text) {
        ZOTFile::MemoryBuffer bytes = Bytes(GetParam());
        const ZOT::SmartPtr<KTable> root = GetDocumentTree(bytes, ZOT::kCharsetUtf8);
        ZOTFile::MemoryBuffer out(16);
        DocumentType type = LinkPage;
        ExtractText(root, &out, &type);
        out.SeekG(0, ZOT::kFromBegin);
        out.Copy(text, ZOT::kWholeStream);
    });
    ZOTFile::MemoryBuffer bytes = Bytes(GetParam());
    const ZOT::SmartPtr<KTable> root = GetDocumentTree(bytes, ZOT::kCharsetUtf8);
    ExpectAllOrNothing("the dump of a cell",
                       [&](std::u16string& text) { text = root->GetCell(0, 1)->Dump(); });
}

TEST_P(BadAlloc, PassesThroughTheParsersTree) {
    HtmlDocTree tree(ZOT::kCharsetUtf8);
    Parse(tree);
    ExpectAllOrNothing("the document text",
                       [&](std::u16string& text) { tree.GetText(text, HtmlKeywordTable::kDocumentText); });
}

// Whatever failed, the next call and those on other pages give what they always give.
TEST_P(BadAlloc, DoesNotReachOtherCalls) {
    const auto textOf = [](const std::string& page) {
        ZOTFile::MemoryBuffer bytes = Bytes(page);
        std::u16string text;
        Beautify(bytes, ZOT::kCharsetUtf8, text, nullptr, nullptr);
        return text;
    };
    std::vector<std::u16string> texts;
    for (const std::string& page : SamplePages()) texts.push_back(textOf(page));
    for (int n = 1; n < 40; n += 3) {
        try {
            const FailNthNew failing(n);
            textOf(GetParam());
        } catch (const std::bad_alloc&) {
        }
        for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_EQ(textOf(SamplePages()[i]), texts[i]) << n;
    }
}

}  // namespace
}  // namespace QuillNS

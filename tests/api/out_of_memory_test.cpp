#include <gtest/gtest.h>

#include <string>
#include <quill/beautify.h>
#include <quill/partitions.h>
#include <zot/memory_buffer.h>

#include "api/sample_pages.h"
#include "failing_pool.h"

namespace QuillNS {
namespace {

ZOTFile::MemoryBuffer Bytes(const std::string& page = SamplePages()[0]) {
    return {page.data(), static_cast<unsigned int>(page.size()), 0};
}

// Runs `beautify` with its first allocation failing, then its second, and so on until it goes through.
template <class Beautifier>
void ExpectTextOrNothing(Failing failing, Beautifier beautify) {
    std::u16string whole;
    ASSERT_TRUE(beautify(whole));
    for (unsigned int n = 1;; ++n) {
        const unsigned int live = LiveAllocations();
        std::u16string text = u"before";
        bool result = false;
        bool happened = false;
        {
            FailFromNthAllocation failure(n, failing);
            result = beautify(text);
            happened = failure.Happened();
        }
        ASSERT_EQ(LiveAllocations(), live) << "left behind when allocation " << n << " fails";
        ASSERT_EQ(result, !text.empty()) << n;
        // When only one allocation fails, a frame or a finer reading may be missing.
        const bool mayDiffer = failing == Failing::kOnce;
        ASSERT_TRUE(mayDiffer || text.empty() || text == whole)
            << "another text when allocation " << n << " fails";
        if (!happened) {
            ASSERT_EQ(text, whole);
            break;
        }
    }
}

class OutOfMemory : public ::testing::TestWithParam<Failing> {};
INSTANTIATE_TEST_SUITE_P(Pool, OutOfMemory, ::testing::Values(Failing::kFromThenOn, Failing::kOnce));

TEST_P(OutOfMemory, APageGivesNothingAndLeavesNothingBehind) {
    for (std::size_t number = 0; number < SamplePages().size(); ++number) {
        for (const ZOT::CHARSET charset : {ZOT::kCharsetUtf8, ZOT::kCharsetNone, ZOT::kCharsetWindows1251}) {
            SCOPED_TRACE("page " + std::to_string(number) + " in " + std::to_string(charset));
            ExpectTextOrNothing(GetParam(), [&](std::u16string& text) {
                auto bytes = Bytes(SamplePages()[number]);
                return Beautify(bytes, charset, text, nullptr, nullptr);
            });
        }
    }
}

TEST_P(OutOfMemory, SoDoPartitions) {
    auto bytes = Bytes();
    auto frame = Bytes(SamplePages()[1]);
    const HtmlDocPartitions child(ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(&frame, false)),
                                  ZOT::kCharsetUtf8, HtmlDocPartitions::HtmlContent);
    HtmlDocPartitions page(ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(&bytes, false)),
                           ZOT::kCharsetUtf8, HtmlDocPartitions::HtmlContent);
    page.children.Append(ZOT::RefCount<HtmlDocPartitions>(new HtmlDocPartitions(child)));
    ExpectTextOrNothing(GetParam(), [&](std::u16string& text) {
        bytes.SeekG(0, ZOT::kFromBegin);
        frame.SeekG(0, ZOT::kFromBegin);
        return Beautify(page, text, nullptr, nullptr);
    });
}

TEST_P(OutOfMemory, WithoutATreeThePageIsALinkPage) {
    auto bytes = Bytes();
    std::u16string text;
    DocumentType type = ContentPage;
    const FailFromNthAllocation failing(1, GetParam());
    EXPECT_FALSE(Beautify(bytes, ZOT::kCharsetUtf8, text, nullptr, &type));
    EXPECT_EQ(type, LinkPage);
}

// With each size of the page the nodes run out in another stage of the parse, that of the roles included.
TEST_P(OutOfMemory, APageOfBlocksEndsWhereverItsNodesRunOut) {
    for (int fillers = 0; fillers < 80; ++fillers) {
        std::string page =
            "<div><ul><li><p>one</ul><div><pre>two</pre><table><tr><td>three<td>four<tr><td>"
            "five<td>six</table></div></div>";
        for (int i = 0; i < fillers; ++i) page += "<i></i>";
        ExpectTextOrNothing(GetParam(), [&page](std::u16string& text) {
            ZOTFile::MemoryBuffer bytes(page.data(), static_cast<unsigned int>(page.size()), 0);
            return Beautify(bytes, ZOT::kCharsetUtf8, text, nullptr, nullptr);
        });
    }
}

TEST_P(OutOfMemory, TheContentTreeIsWholeOrNull) {
    const auto words = [](KTable& root) {
        unsigned int sum = 0;
        for (const auto& item : *root.GetCell(0, 1)) sum += item->IsText() ? 1 : item->Table()->Cols() * 100;
        return sum;
    };
    auto bytes = Bytes();
    const unsigned int whole = words(*GetDocumentTree(bytes, ZOT::kCharsetUtf8));
    for (unsigned int n = 1;; ++n) {
        auto again = Bytes();
        FailFromNthAllocation failing(n, GetParam());
        const ZOT::SmartPtr<KTable> root = GetDocumentTree(again, ZOT::kCharsetUtf8);
        if (root && root->GetCell(0, 1)) {
            EXPECT_EQ(words(*root), whole) << n;
        }
        if (!failing.Happened()) break;
    }
}

}  // namespace
}  // namespace QuillNS

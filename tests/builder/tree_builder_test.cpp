#include "tree_builder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <zot/memory_buffer.h>

#include "page.h"

namespace QuillNS {
namespace {

ZOTFile::MemoryBuffer Bytes(std::string_view bytes) {
    return {bytes.data(), static_cast<unsigned int>(bytes.size()), 0};
}

std::string CellsOf(KTable& root) {
    std::string rows;
    for (unsigned int row = 0; row != root.Rows(); ++row) rows += root.GetCell(0, row) ? 'x' : '.';
    return rows;
}

TEST(BuildTree, FillsTheBodyRowOfAPageWithContent) {
    struct Case {
        const char* html;
        const char* cells;
    };
    const Case cases[] = {
        {"<p>one", ".x."},
        {"<table><tr><td>one</table>", ".x."},
        {"<script>x</script>", ".x."},
        {"", "..."},
        {" <!-- x --> ", "..."},
    };
    for (const Case& c : cases) {
        auto bytes = Bytes(c.html);
        ZOT::SmartPtr<KTable> root = MakeRoot();
        BuildTree(bytes, ZOT::kCharsetUtf8, root, nullptr);
        EXPECT_EQ(CellsOf(*root), c.cells) << c.html;
    }
}

TEST(BuildTree, ReadsTheStreamInItsCharset) {
    auto bytes = Bytes(std::string_view("<\0p\0>\0o\0n\0e\0", 12));
    ZOT::SmartPtr<KTable> root = MakeRoot();
    BuildTree(bytes, ZOT::kCharsetUtf16Le, root, nullptr);
    EXPECT_EQ(Dump(*root->GetCell(0, 1)), "'one/'");
}

// A page without document text leaves the string alone.
TEST(BuildTree, NeverEmptiesTheDocumentText) {
    std::u16string text = u"before";
    for (const char* html : {"", "<script>x</script>"}) {
        ZOT::SmartPtr<KTable> root = MakeRoot();
        Page page(html);
        BuildTree(page.Tree(), root, &text);
        EXPECT_EQ(text, u"before") << html;
    }
    ZOT::SmartPtr<KTable> root = MakeRoot();
    Page page("<nav>one</nav><p>two");
    BuildTree(page.Tree(), root, &text);
    EXPECT_EQ(text, u"one\ntwo");
}

HtmlDocPartitions Partition(std::string_view html, ZOT::CHARSET charset = ZOT::kCharsetUtf8,
                            HtmlDocPartitions::ContentType type = HtmlDocPartitions::HtmlContent) {
    auto* const buffer = new ZOTFile::MemoryBuffer(html.data(), static_cast<unsigned int>(html.size()), 0);
    return {ZOT::RefCount<ZOT::BinaryStream>(new ZOT::BinaryStream(buffer, true)), charset, type};
}

void AddChild(HtmlDocPartitions& parent, const HtmlDocPartitions& child) {
    parent.children.Append(ZOT::RefCount<HtmlDocPartitions>(new HtmlDocPartitions(child)));
}

TEST(BuildPartitionTree, ReadsOwnContentOfTheKnownKinds) {
    const auto unknown = static_cast<HtmlDocPartitions::ContentType>(2);
    EXPECT_EQ(CellsOf(*BuildPartitionTree(Partition("<p>one"), nullptr)), ".xx");
    EXPECT_EQ(CellsOf(*BuildPartitionTree(
                  Partition("<p>one", ZOT::kCharsetUtf8, HtmlDocPartitions::TextContent), nullptr)),
              ".xx");
    EXPECT_EQ(CellsOf(*BuildPartitionTree(Partition("<p>one", ZOT::kCharsetUtf8, unknown), nullptr)), "..x");
    EXPECT_EQ(CellsOf(*BuildPartitionTree(Partition("<p>one", ZOT::kCharsetNone), nullptr)), "..x");
    EXPECT_EQ(CellsOf(*BuildPartitionTree(HtmlDocPartitions(), nullptr)), "..x");
}

TEST(BuildPartitionTree, HangsChildrenIntoThePartitionCellAsRoots) {
    HtmlDocPartitions top = Partition("<p>top", ZOT::kCharsetNone);
    HtmlDocPartitions middle = Partition("<p>middle");
    AddChild(middle, Partition("<p>leaf"));
    AddChild(top, middle);
    AddChild(top, HtmlDocPartitions());

    const ZOT::SmartPtr<KTable> root = BuildPartitionTree(top, nullptr);
    const ZOT::SmartPtr<KCell> cell = root->GetCell(0, 2);
    EXPECT_EQ(Dump(*cell), "{. ; ('middle/') ; ({. ; ('leaf/') ; ()})} {. ; . ; ()}");
    EXPECT_EQ(cell->Tables(), 2u);
    const ZOT::SmartPtr<KTable> child = (*cell->Begin())->Table();
    EXPECT_EQ(child->ParentTable(), nullptr);
    EXPECT_EQ(child->Level(), 0u);
}

TEST(BuildPartitionTree, GivesTheDocumentTextOfTheOutermostPartition) {
    HtmlDocPartitions top = Partition("<p>top");
    AddChild(top, Partition("<p>child"));
    std::u16string text;
    BuildPartitionTree(top, &text);
    EXPECT_EQ(text, u"top");

    HtmlDocPartitions empty;
    AddChild(empty, Partition("<p>child"));
    BuildPartitionTree(empty, &text);
    EXPECT_EQ(text, u"top");
}

}  // namespace
}  // namespace QuillNS

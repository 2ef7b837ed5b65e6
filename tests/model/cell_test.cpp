#include <gtest/gtest.h>
#include <vector>
#include <quill/cell.h>
#include <quill/table.h>

#include "content_tree.h"

namespace QuillNS {
namespace {

const ZOT::SmartPtr<KCell>& FirstCell(const ContentTree& tree) {
    return *tree.Root()->Begin();
}

TEST(Cell, StartsEmpty) {
    KTable table(nullptr, 3, 4, 0);
    const ZOT::SmartPtr<KCell> cell = table.CreateCell(2, 3);
    EXPECT_TRUE(cell->IsEmpty());
    EXPECT_EQ(cell->Back(), cell->End());
    EXPECT_EQ(cell->Col(), 2u);
    EXPECT_EQ(cell->Row(), 3u);
    EXPECT_EQ(cell->ParentTable(), &table);
    EXPECT_EQ(cell->Dump(), u"\n");
    cell->MakeParagraph();
    EXPECT_TRUE(cell->IsEmpty());
    EXPECT_EQ(cell->Words() + cell->Links() + cell->Images() + cell->Tables() + cell->WordsInLinksAndImages(),
              0u);
}

TEST(Cell, KeepsItemsInOrderWhileTheListGrows) {
    KCell cell(nullptr, 0, 0);
    std::vector<ZOT::SmartPtr<KCellItem>> items;
    const ZOT::SmartPtr<KCellItem>* first = nullptr;
    for (int i = 0; i < 40; ++i) {
        items.push_back(cell.AddCellItem());
        EXPECT_EQ(*cell.Back(), items.back());
        // Room for 16 from the start, then for 32.
        if (i == 0) first = cell.Begin();
        EXPECT_TRUE(i > 15 || cell.Begin() == first);
    }
    ASSERT_EQ(cell.End() - cell.Begin(), 40);
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(cell.Begin()[i], items[static_cast<std::size_t>(i)]);
        EXPECT_EQ(cell.Begin()[i]->NbRef(), 2);
        EXPECT_EQ(cell.Begin()[i]->ParentCell(), &cell);
    }
}

TEST(Cell, CountersWrap) {
    struct Counter {
        void (KCell::*add)(unsigned int) noexcept;
        unsigned int (KCell::*get)() const noexcept;
    };
    const Counter counters[] = {
        {&KCell::AddWords, &KCell::Words},
        {&KCell::AddLinks, &KCell::Links},
        {&KCell::AddImages, &KCell::Images},
        {&KCell::AddTables, &KCell::Tables},
        {&KCell::AddWordsInLinksAndImages, &KCell::WordsInLinksAndImages},
    };
    KCell cell(nullptr, 0, 0);
    unsigned int value = 0;
    for (const Counter& counter : counters) (cell.*counter.add)(++value);
    value = 0;
    for (const Counter& counter : counters) EXPECT_EQ((cell.*counter.get)(), ++value);
    cell.AddWords(4294967295u);
    EXPECT_EQ(cell.Words(), 0u);
}

TEST(Cell, ParagraphAndDump) {
    struct Case {
        const char *tree, *dump, *last;  // the last item's text after MakeParagraph, null when it has none
    };
    const Case cases[] = {
        {"{ ('one ' 'two ') }", "one two \n", "two\n\n"},
        {"{ ('one ' {} ) }", "one \n", nullptr},
        {"{ ('one' _) }", "one\n", nullptr},
        {"{ ({ 1('nested') } 'a \n b' '' 'c\n\n') }", "a bc \n", "c\n\n"},
        // What shows nothing is left out of the dump alone.
        {"{ ('a\037b') }", "ab\n", "a\037b\n\n"},
    };
    for (const Case& c : cases) {
        const ContentTree tree(c.tree);
        KCell& cell = *FirstCell(tree);
        EXPECT_EQ(Narrow(cell.Dump()), c.dump) << c.tree;
        cell.MakeParagraph();
        ASSERT_EQ((*cell.Back())->IsText(), c.last != nullptr) << c.tree;
        if (c.last != nullptr) {
            EXPECT_EQ(Narrow((*cell.Back())->Text()), c.last) << c.tree;
        } else {
            EXPECT_EQ(Narrow(cell.Dump()), c.dump) << c.tree;
        }
    }
}

TEST(Cell, ListsItsOwnTablesAfterWhatIsThere) {
    const ContentTree tree("R{ ('text' A{ (X{}) } _ B{}) }");
    ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>> tables;
    tables.Append(tree.Root());
    FirstCell(tree)->ChildTables(tables);
    EXPECT_EQ(tree.Names(tables), "R A B");
}

}  // namespace
}  // namespace QuillNS

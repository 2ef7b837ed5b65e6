#include <gtest/gtest.h>
#include <quill/table.h>

#include "content_tree.h"

namespace QuillNS {
namespace {

using Tables = ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>;

std::string Children(const ContentTree& tree) {
    Tables tables;
    tree.Root()->ChildTables(tables);
    return tree.Names(tables);
}

std::string AllBelow(const ContentTree& tree) {
    Tables tables;
    tree.Root()->FindAllTables(tables);
    return tree.Names(tables);
}

TEST(Table, StartsWithNullSlots) {
    struct Case {
        unsigned int cols, rows;
    };
    for (const Case& c : {Case{1, 3}, Case{0, 5}, Case{5, 0}, Case{0, 0}, Case{7, 2}}) {
        KTable table(nullptr, c.cols, c.rows, 4);
        EXPECT_EQ(table.End() - table.Begin(), static_cast<std::ptrdiff_t>(c.cols) * c.rows);
        for (const ZOT::SmartPtr<KCell>& cell : table) EXPECT_FALSE(cell);
        EXPECT_EQ(table.Cols(), c.cols);
        EXPECT_EQ(table.Rows(), c.rows);
        EXPECT_EQ(table.Level(), 4u);
        EXPECT_FALSE(table.Caption());
        EXPECT_FALSE(table.Summary());
        Tables tables;
        table.ChildTables(tables);
        table.FindAllTables(tables);
        EXPECT_EQ(tables.Size(), 0u);
    }
}

TEST(Table, HasNoSlotsWhereNoMemoryHoldsThem) {
    for (const unsigned int rows : {0x20000000u, 0xFFFFFFFFu}) {
        KTable table(nullptr, 0xFFFFFFFFu, rows, 0);
        EXPECT_EQ(table.Begin(), table.End());
        EXPECT_FALSE(table.GetCell(0, 0));
        EXPECT_FALSE(table.CreateCell(0, 0));
    }
}

TEST(Table, KeepsItsGridRowByRow) {
    KTable table(nullptr, 3, 2, 0);
    const ZOT::SmartPtr<KCell> cell = table.CreateCell(1, 1);
    EXPECT_EQ(table.GetCell(1, 1), cell);
    EXPECT_EQ(table.Begin()[4], cell);
    EXPECT_EQ(cell->NbRef(), 2);
    table.SetCell(2, 0, cell);
    EXPECT_EQ(table.Begin()[2], cell);
    table.SetCell(2, 0, cell);
    EXPECT_EQ(cell->NbRef(), 3);
    EXPECT_NE(table.CreateCell(1, 1), cell);
    EXPECT_EQ(cell->NbRef(), 2);
    table.SetCell(2, 0, ZOT::SmartPtr<KCell>());
    EXPECT_EQ(cell->NbRef(), 1);
}

TEST(Table, ReplacesCaptionAndSummary) {
    KTable table(nullptr, 1, 1, 0);
    const ZOT::SmartPtr<KCell> first = table.CreateCaption();
    EXPECT_EQ(first->NbRef(), 2);
    EXPECT_EQ(first->ParentTable(), &table);
    EXPECT_NE(table.CreateCaption(), first);
    EXPECT_EQ(first->NbRef(), 1);
    EXPECT_FALSE(table.Summary());
    EXPECT_EQ(&table.CreateSummary(), &table.Summary());
    EXPECT_NE(table.Summary(), table.Caption());
}

TEST(Table, ListsChildrenColumnByColumn) {
    struct Case {
        const char *tree, *children;
    };
    const Case cases[] = {
        {"{ (A{}) (B{}) ; (C{}) (D{}) }", "A C B D"},
        {"{ (A{} B{}) . (C{}) ; . (D{}) (E{}) }", "A B D C E"},
        {"{ ('x' A{ (X{}) } _ B{}) }", "A B"},
        {"{ ^(A{}) $(B{}) (C{}) }", "C"},
        {"{}", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(Children(ContentTree(c.tree)), c.children) << c.tree;
}

TEST(Table, ListsTheTablesOfASharedCellOncePerSlot) {
    const ContentTree tree("{ (A{}) . }");
    tree.Root()->SetCell(1, 0, tree.Root()->GetCell(0, 0));
    EXPECT_EQ(Children(tree), "A A");
}

TEST(Table, FindsTheTablesBelowOneChildBeforeThoseBelowTheNext) {
    struct Case {
        const char *tree, *all;
    };
    const Case cases[] = {
        {"{ (A{ (A1{ (X{}) } A2{}) } B{ (B1{}) }) }", "A B A1 A2 X B1"},
        {"{ (A{ (B{ (C{ (D{}) }) }) }) }", "A B C D"},
        {"{ (A{ ^(Z{}) (B{}) }) }", "A B"},
        {"{ 3 }", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(AllBelow(ContentTree(c.tree)), c.all) << c.tree;
}

TEST(Table, ListsKeepWhatTheyHeld) {
    const ContentTree tree("R{ (A{ (B{}) }) }");
    Tables tables;
    tables.Append(tree.Root());
    tree.Root()->FindAllTables(tables);
    tree.Root()->ChildTables(tables);
    EXPECT_EQ(tree.Names(tables), "R A B A");
}

TEST(Table, OwnsItsSubtreeAndNotItsParent) {
    ZOT::SmartPtr<KTable> inner;
    ZOT::SmartPtr<KCell> cell;
    {
        const ContentTree tree("R{ (A{ 5 }) }");
        inner = tree.Table("A");
        cell = *inner->Begin();
        EXPECT_EQ(inner->ParentTable(), tree.Root().Get());
        EXPECT_EQ(inner->Level(), 1u);
        EXPECT_EQ(tree.Root()->NbRef(), 2);  // the tree's root and its name
        EXPECT_EQ(inner->NbRef(), 3);        // its item, its name, and ours
    }
    EXPECT_EQ(inner->NbRef(), 1);
    EXPECT_EQ(cell->NbRef(), 2);
}

}  // namespace
}  // namespace QuillNS

#include <gtest/gtest.h>
#include <quill/table.h>

#include "failing_pool.h"

namespace QuillNS {
namespace {

using Tables = ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>;

// Every operation that asks for memory, as a builder uses them. False when something was missing.
bool BuildAndList() {
    const ZOT::SmartPtr<KTable> root(new KTable(nullptr, 2, 2, 0), true);
    if (!root) return false;
    bool complete = static_cast<bool>(root->CreateCaption());
    complete &= static_cast<bool>(root->CreateSummary());
    root->SetCell(0, 0, root->Caption());
    EXPECT_EQ(root->GetCell(1, 0), nullptr);
    const ZOT::SmartPtr<KCell> cell = root->CreateCell(1, 1);
    if (!cell) return false;
    EXPECT_EQ(root->GetCell(1, 1), cell);
    for (int i = 0; i < 40; ++i) {
        const ZOT::SmartPtr<KCellItem> item = cell->AddCellItem();
        if (!item) return false;
        item->AppendText(u"text", 1, 4);
        complete &= item->IsText();
        const ZOT::SmartPtr<KTable> nested(new KTable(root.Get(), 3, 1, 1), true);
        item->Table(nested);
        complete &= nested && nested->CreateCell(2, 0);
    }
    Tables tables;
    root->FindAllTables(tables);
    return complete && tables.Size() == 40;
}

TEST(Model, SurvivesAFailedAllocationAnywhere) {
    const unsigned int before = LiveAllocations();
    for (unsigned int n = 1;; ++n) {
        const FailFromNthAllocation failing(n);
        const bool complete = BuildAndList();
        EXPECT_EQ(complete, !failing.Happened()) << n;
        ASSERT_EQ(LiveAllocations(), before) << "left behind when allocation " << n << " fails";
        if (!failing.Happened()) break;
    }
}

}  // namespace
}  // namespace QuillNS

#include <quill/visitor.h>

namespace QuillNS {

QuillVisitor::~QuillVisitor() = default;

void QuillVisitor::ParseTree(const ZOT::SmartPtr<KTable>& root) {
    if (strategy_) ParseTable(root);
}

void QuillVisitor::ParseTree(const ZOT::SmartPtr<KTable>& root,
                             const ZOT::SmartPtr<QuillVisitorStrategy>& strategy) {
    Strategy(strategy);
    ParseTree(root);
}

// Cells and nested tables are held while they are walked: a hook may put others in their place.
void QuillVisitor::ParseTable(const ZOT::SmartPtr<KTable>& table) {
    const bool tableGood = strategy_->IsGoodTable(table);
    if (tableGood) VisitTableInfix(table);
    for (const ZOT::SmartPtr<KCell>& cell : *table) {
        if (cell) ParseCell(ZOT::SmartPtr<KCell>(cell), tableGood);
    }
    if (table->Caption()) ParseCell(ZOT::SmartPtr<KCell>(table->Caption()), tableGood);
    if (table->Summary()) ParseCell(ZOT::SmartPtr<KCell>(table->Summary()), tableGood);
    if (tableGood) VisitTablePostfix(table);
}

void QuillVisitor::ParseCell(const ZOT::SmartPtr<KCell>& cell, bool tableGood) {
    // Asked about in any table.
    const bool good = strategy_->IsGoodCell(cell) && tableGood;
    if (good) VisitCellInfix(cell);
    for (const ZOT::SmartPtr<KCellItem>& item : *cell) {  // a held cell never lets go of an item
        if (good && item->IsText()) {
            if (strategy_->IsGoodCellItem(item)) VisitCellText(item);
        } else if (item->IsTable()) {
            ParseTable(ZOT::SmartPtr<KTable>(item->Table()));
        }
    }
    if (good) VisitCellPostfix(cell);
}

}  // namespace QuillNS

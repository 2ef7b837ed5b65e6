#pragma once

#include <quill/table.h>
#include <quill/visitor_strategy.h>
#include <zot/counted.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

// A depth-first walk over a content tree that calls hooks for what its strategy admits.
//
// A table's grid cells come row by row, then its caption, then its summary; a cell's items come in order. For
// an admitted table T with an admitted cell C the hooks run like this:
//
//   VisitTableInfix(T)
//     VisitCellInfix(C)
//       VisitCellText(item)      for each admitted text item; whole nested walks between them, where
//                                tables stand
//     VisitCellPostfix(C)
//   VisitTablePostfix(T)
//
// Nested tables are walked in any case: one that is admitted is visited though the table or the cell around
// it is not. Every cell that is not null is asked about, also in tables that are not admitted.
//
// One visitor runs one walk at a time; nothing is locked.
class QUILL_API QuillVisitor : public ZOT::PoolObject {
public:
    // Without a strategy.
    QuillVisitor() noexcept = default;
    // Shares the strategy.
    explicit QuillVisitor(const ZOT::SmartPtr<QuillVisitorStrategy>& strategy) : strategy_(strategy) {}
    // Shares the source's strategy; a copy starts without holders, assignment keeps the target's.
    QuillVisitor(const QuillVisitor&) = default;
    QuillVisitor& operator=(const QuillVisitor&) = default;

    // Holders; one more; one fewer, and the last one destroys the object. The new count is returned.
    long NbRef() const noexcept { return holders_.Get(); }
    long AddRef() const noexcept { return holders_.Add(); }
    long Release() const noexcept {
        const long left = holders_.Sub();
        if (left == 0) delete this;
        return left;
    }

    virtual ~QuillVisitor();

protected:
    // Each argument is held for the length of the call and is not null.
    virtual void VisitTableInfix(const ZOT::SmartPtr<KTable>& table) = 0;
    virtual void VisitTablePostfix(const ZOT::SmartPtr<KTable>& table) = 0;
    virtual void VisitCellInfix(const ZOT::SmartPtr<KCell>& cell) = 0;
    virtual void VisitCellText(const ZOT::SmartPtr<KCellItem>& item) = 0;
    virtual void VisitCellPostfix(const ZOT::SmartPtr<KCell>& cell) = 0;

    // Walks the tree below `root`, which is not null. Without a strategy nothing is visited.
    void ParseTree(const ZOT::SmartPtr<KTable>& root);
    // The same after making `strategy` the visitor's strategy, which it stays.
    void ParseTree(const ZOT::SmartPtr<KTable>& root, const ZOT::SmartPtr<QuillVisitorStrategy>& strategy);

    ZOT::SmartPtr<QuillVisitorStrategy> Strategy() { return strategy_; }
    void Strategy(const ZOT::SmartPtr<QuillVisitorStrategy>& strategy) { strategy_ = strategy; }

private:
    void ParseTable(const ZOT::SmartPtr<KTable>& table);
    void ParseCell(const ZOT::SmartPtr<KCell>& cell, bool tableGood);

    mutable ZOT::SPRefCounter holders_;
    ZOT::SmartPtr<QuillVisitorStrategy> strategy_;
};

}  // namespace QuillNS

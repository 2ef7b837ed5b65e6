#pragma once

#include <quill/table.h>
#include <zot/counted.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

// The filter of a walk (QuillVisitor): answers for each table, cell and text item whether it is admitted.
// This one admits everything; derive from it to choose. Several visitors may share one strategy, from several
// threads when its answers change nothing.
class QUILL_API QuillVisitorStrategy : public ZOT::PoolObject {
public:
    QuillVisitorStrategy() noexcept = default;
    // A copy starts without holders; assignment keeps the target's.
    QuillVisitorStrategy(const QuillVisitorStrategy&) noexcept = default;
    QuillVisitorStrategy& operator=(const QuillVisitorStrategy&) noexcept = default;

    // Holders; one more; one fewer, and the last one destroys the object. The new count is returned.
    long NbRef() const noexcept { return holders_.Get(); }
    long AddRef() const noexcept { return holders_.Add(); }
    long Release() const noexcept {
        const long left = holders_.Sub();
        if (left == 0) delete this;
        return left;
    }

    virtual ~QuillVisitorStrategy();

    // None of the arguments is null. A table's answer does not pass down to the tables nested in it.
    virtual bool IsGoodTable(const ZOT::SmartPtr<KTable>& table);
    virtual bool IsGoodCell(const ZOT::SmartPtr<KCell>& cell);
    // Asked only about text items of admitted cells of admitted tables.
    virtual bool IsGoodCellItem(const ZOT::SmartPtr<KCellItem>& item);

private:
    mutable ZOT::SPRefCounter holders_;
};

}  // namespace QuillNS

#include <quill/table.h>

#include "child_tables.h"

namespace QuillNS {

namespace {

// Null when there is no memory, or no number for its bytes.
ZOT::SmartPtr<KCell>* NewGrid(std::size_t slots) {
    constexpr std::size_t kMostSlots = static_cast<std::size_t>(-1) / sizeof(ZOT::SmartPtr<KCell>) / 2;
    return slots <= kMostSlots ? new ZOT::SmartPtr<KCell>[slots] : nullptr;
}

}  // namespace

KTable::KTable(KTable* parent, unsigned int cols, unsigned int rows, unsigned int level)
    : level_(level),
      parent_(parent),
      cols_(cols),
      rows_(rows),
      slots_(std::size_t{cols} * rows),
      grid_(slots_ == 1 ? &only_ : NewGrid(slots_)) {
    if (grid_ == nullptr) slots_ = 0;
}

KTable::~KTable() {
    if (grid_ != &only_) delete[] grid_;
}

// Null for a table whose grid found no memory.
ZOT::SmartPtr<KCell>* KTable::Slot(unsigned int col, unsigned int row) noexcept {
    const std::size_t index = std::size_t{row} * cols_ + col;
    return index < slots_ ? grid_ + index : nullptr;
}

const ZOT::SmartPtr<KCell>& KTable::GetCell(unsigned int col, unsigned int row) {
    if (const ZOT::SmartPtr<KCell>* const slot = Slot(col, row)) return *slot;
    static const ZOT::SmartPtr<KCell> kNoCell;
    return kNoCell;
}

ZOT::SmartPtr<KCell> KTable::CreateCell(unsigned int col, unsigned int row) {
    ZOT::SmartPtr<KCell>* const slot = Slot(col, row);
    if (slot == nullptr) return {};
    ZOT::SmartPtr<KCell> cell(new KCell(this, col, row), true);
    if (cell) *slot = cell;
    return cell;
}

void KTable::SetCell(unsigned int col, unsigned int row, const ZOT::SmartPtr<KCell>& cell) {
    if (ZOT::SmartPtr<KCell>* const slot = Slot(col, row)) *slot = cell;
}

const ZOT::SmartPtr<KCell>& KTable::CreateCaption() {
    if (KCell* const cell = new KCell(this, 0, 0)) caption_ = cell;
    return caption_;
}

const ZOT::SmartPtr<KCell>& KTable::CreateSummary() {
    if (KCell* const cell = new KCell(this, 0, 0)) summary_ = cell;
    return summary_;
}

void KTable::ChildTables(ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>& out) {
    VisitChildTables(*this, [&out](const ZOT::SmartPtr<KTable>& table) { out.Append(table); });
}

void KTable::FindAllTables(ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>& out) {
    const std::size_t first = out.Size();
    ChildTables(out);
    const std::size_t last = out.Size();
    for (std::size_t child = first; child < last; ++child) {
        KTable* const table = out[child].Get();  // `out` moves its handles while it grows
        table->FindAllTables(out);
    }
}

}  // namespace QuillNS

#include <quill/cell.h>
#include <quill/table.h>
#include <zot/text.h>

#include "child_tables.h"

namespace QuillNS {

namespace {

constexpr std::size_t kFirstItems = 16;  // most cells never outgrow it
constexpr std::size_t kDumpRoom = 1024;  // units

}  // namespace

KCell::KCell(KTable* table, unsigned int col, unsigned int row) noexcept
    : col_(col), table_(table), row_(row) {}

// In the order in which they were made, and so stand in memory.
KCell::~KCell() {
    for (const ZOT::SmartPtr<KCellItem>& item : items_) {
        if (item->NbRef() != 1) item->parent_ = nullptr;
    }
    items_.Clear();
}

// The room for the first items comes with the first one: many cells hold none.
ZOT::SmartPtr<KCellItem> KCell::AddCellItem() {
    if (items_.Capacity() == 0 && !items_.Reserve(kFirstItems)) return {};
    ZOT::SmartPtr<KCellItem> item(new KCellItem(this), true);
    if (item && !items_.Append(item)) item = nullptr;
    return item;
}

void KCell::MakeParagraph() {
    if (!IsEmpty() && (*Back())->IsText()) (*Back())->MakeParagraph();
}

void KCell::ChildTables(ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>& out) {
    VisitChildTables(*this, [&out](const ZOT::SmartPtr<KTable>& table) { out.Append(table); });
}

std::u16string KCell::Dump() {
    std::u16string dump;
    dump.reserve(kDumpRoom);
    for (const ZOT::SmartPtr<KCellItem>& item : *this) {
        if (!item->IsText()) continue;
        const std::size_t before = dump.size();
        dump += item->TextView();
        dump.resize(before + ZOT::BeautifyInPlace(&dump[before], dump.size() - before, false, true));
    }
    dump += u'\n';
    return dump;
}

}  // namespace QuillNS

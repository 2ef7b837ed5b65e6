#include <quill/cell.h>
#include <quill/table.h>
#include <zot/text.h>

#include "child_tables.h"

namespace QuillNS {

namespace {

constexpr std::size_t kFirstItems = 16;  // most cells never outgrow it
constexpr std::size_t kDumpRoom = 1024;  // units

}  // namespace

KCell::KCell(KTable* table, unsigned int col, unsigned int row) : table_(table), col_(col), row_(row) {
    items_.Reserve(kFirstItems);  // without that memory the first item asks again
}

KCell::~KCell() = default;

ZOT::SmartPtr<KCellItem> KCell::AddCellItem() {
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
    std::u16string clean;
    for (const ZOT::SmartPtr<KCellItem>& item : *this) {
        if (!item->IsText() || item->Text().empty()) continue;
        ZOT::BeautifyString(item->Text(), clean, false, true);
        dump += clean;
    }
    dump += u'\n';
    return dump;
}

}  // namespace QuillNS

#include <algorithm>
#include <quill/cell_item.h>
#include <quill/table.h>

#include "trim.h"

namespace QuillNS {

namespace {

constexpr std::size_t kFirstRoom = 32;  // units of a new text record, at least
constexpr std::size_t kSpareRoom =
    5;  // units beyond the first run, for the blanks and line feeds that join runs

}  // namespace

void KCellText::Append(const std::u16string& text, unsigned int position, unsigned int length) {
    text_ += text;
    if (text.empty() || length == 0) return;
    if (sourceLength_ == 0) sourcePosition_ = position;
    sourceLength_ = position - sourcePosition_ + length;
}

KCellItem::KCellItem(KCell* parent) noexcept : parent_(parent) {}

KCellItem::~KCellItem() = default;

void KCellItem::AppendText(const std::u16string& text, unsigned int position, unsigned int length) {
    if (!text_) {
        text_ = new KCellText;
        if (!text_) return;
        text_->Text().reserve(std::max(kFirstRoom, text.size() + kSpareRoom));
    }
    text_->Append(text, position, length);
}

void KCellItem::MakeParagraph() {
    std::u16string& text = Text();
    TrimEnd(text);
    if (!text.empty()) text += u"\n\n";
}

void KCellItem::Table(const ZOT::SmartPtr<KTable>& table) {
    table_ = table;
}

}  // namespace QuillNS

#include <algorithm>
#include <cstring>
#include <memory>
#include <quill/cell.h>
#include <quill/table.h>
#include <zot/text.h>

namespace QuillNS {

namespace {

constexpr std::size_t kLeastRoom = 32;  // units of a string, at least
constexpr std::size_t kSpareRoom =
    5;  // units beyond the first run, for the blanks and line feeds that join runs
constexpr std::size_t kMostRoom = (0xFFFFFFFFu - sizeof(KCellText)) / sizeof(char16_t);  // units, of the pool

std::size_t SizeWithoutWhiteSpaceBehind(std::u16string_view text) {
    std::size_t size = text.size();
    while (size > 0 && ZOT::IsWhiteSpace(text[size - 1])) --size;
    return size;
}

}  // namespace

// A text that is too long for the pool gets no room here: the string takes it.
KCellText* KCellText::New(std::size_t size) {
    const std::size_t room = size <= kMostRoom - kSpareRoom ? size + kSpareRoom : 0;
    void* const memory = operator new(sizeof(KCellText) + room * sizeof(char16_t));
    if (memory == nullptr) return nullptr;
    auto* const text = new (memory) KCellText;
    text->room_ = static_cast<unsigned int>(room);
    return text;
}

// Of several threads that come here at once the first one's string counts.
std::u16string& KCellText::String() const {
    std::u16string* string = string_.load(std::memory_order_acquire);
    if (string != nullptr) return *string;
    auto own = std::make_unique<std::u16string>();
    own->reserve(std::max(kLeastRoom, std::max<std::size_t>(room_, size_ + kSpareRoom)));
    own->append(Units(), size_);
    if (string_.compare_exchange_strong(string, own.get(), std::memory_order_acq_rel)) return *own.release();
    return *string;
}

void KCellText::Append(std::u16string_view text, unsigned int position, unsigned int length) {
    if (text.empty()) return;
    if (string_.load(std::memory_order_relaxed) == nullptr && text.size() <= room_ - size_) {
        std::memcpy(const_cast<char16_t*>(Units()) + size_, text.data(), text.size() * sizeof(char16_t));
        size_ += static_cast<unsigned int>(text.size());
    } else {
        String().append(text);
    }
    if (length == 0) return;
    if (sourceLength_ == 0) sourcePosition_ = position;
    sourceLength_ = position - sourcePosition_ + length;
}

void KCellText::TrimEnd() {
    const std::size_t size = SizeWithoutWhiteSpaceBehind(View());
    if (std::u16string* const string = string_.load(std::memory_order_relaxed)) {
        string->resize(size);
    } else {
        size_ = static_cast<unsigned int>(size);
    }
}

KCellItem::KCellItem(KCell* parent) noexcept : parent_(parent) {}

KCellItem::~KCellItem() = default;

void KCellItem::AppendText(std::u16string_view text, unsigned int position, unsigned int length) {
    if (!text_) text_ = KCellText::New(text.size());
    if (text_) text_->Append(text, position, length);
}

void KCellItem::MakeParagraph() {
    text_->TrimEnd();
    if (!text_->View().empty()) text_->Append(u"\n\n", 0, 0);
}

void KCellItem::Table(const ZOT::SmartPtr<KTable>& table) {
    table_ = table;
    if (table && parent_ != nullptr) parent_->mayHoldTables_ = true;
}

}  // namespace QuillNS

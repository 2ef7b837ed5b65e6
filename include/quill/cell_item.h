#pragma once

#include <atomic>
#include <string>
#include <string_view>
#include <utility>
#include <zot/counted.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

class KCell;
class KTable;

// The text record of a cell item: joined runs of UTF-16 text and the span of the source that they come from.
//
// The text stands behind the record, in the same piece of memory, until it outgrows the room there or
// somebody asks for it as a string; from then on the string is the text. Most texts are never asked for.
class QUILL_API KCellText : public ZOT::PoolObject {
public:
    // A record whose first run has `size` units. Null when memory runs out.
    static KCellText* New(std::size_t size);

    KCellText() = default;
    KCellText(const KCellText&) = delete;  // a run of text belongs to one item
    KCellText& operator=(const KCellText&) = delete;
    ~KCellText() { delete string_.load(std::memory_order_relaxed); }

    // The text as a string, made by the first call; any number of threads may make it at once. What the
    // string throws when memory runs out passes through.
    const std::u16string& Text() const { return String(); }
    std::u16string& Text() { return String(); }

    // The text, for as long as nothing changes it and Text is not called for the first time.
    std::u16string_view View() const noexcept {
        const std::u16string* const string = string_.load(std::memory_order_acquire);
        return string != nullptr ? std::u16string_view(*string) : std::u16string_view(Units(), size_);
    }

    unsigned int SourcePosition() const noexcept { return sourcePosition_; }
    unsigned int SourceLength() const noexcept { return sourceLength_; }

    // Appends `text` unchanged. The span, which starts where the first run with a length started, then ends
    // where this run ends; an empty run and a run of length 0 leave it alone. `text` is not this text.
    void Append(std::u16string_view text, unsigned int position, unsigned int length);

    // Takes the white space off the end.
    void TrimEnd();

    long NbRef() const noexcept { return holders_.Get(); }
    long AddRef() const noexcept { return holders_.Add(); }
    long Release() const noexcept {
        const long left = holders_.Sub();
        if (left == 0) delete this;
        return left;
    }

private:
    std::u16string& String() const;
    const char16_t* Units() const noexcept { return reinterpret_cast<const char16_t*>(this + 1); }

    mutable ZOT::SPRefCounter holders_;
    unsigned int size_ = 0;  // units behind the record
    unsigned int room_ = 0;
    unsigned int sourcePosition_ = 0;
    unsigned int sourceLength_ = 0;
    mutable std::atomic<std::u16string*> string_{nullptr};
};

// One entry of a cell: a run of text with its place in the source, or a nested table, or (freshly made)
// nothing.
//
//   text    table     IsEmpty   IsText   IsTable
//   none    none      yes       no       no
//   some    none      no        yes      no
//   none    some      no        no       yes
//   some    some      no        yes      yes       possible, but nothing in the library makes such an item
//
// The item owns its text and its nested table; the cell that it stands in owns the item. One thread builds an
// item, after that any number may read it.
class QUILL_API KCellItem : public ZOT::PoolObject {
public:
    // An empty item of `parent`, which is not owned. KCell::AddCellItem makes the items of a cell.
    explicit KCellItem(KCell* parent) noexcept;
    KCellItem(const KCellItem&) = delete;  // an item stands in one cell
    KCellItem& operator=(const KCellItem&) = delete;
    // Lets go of the nested table, and with the last holder of its whole subtree.
    ~KCellItem();

    bool IsEmpty() const noexcept { return !text_ && !table_; }
    bool IsText() const noexcept { return static_cast<bool>(text_); }
    bool IsTable() const noexcept { return static_cast<bool>(table_); }

    // Text items only: ask IsText first. TextView costs nothing, where Text makes a string that the item
    // keeps; see KCellText.
    const std::u16string& Text() const { return std::as_const(*text_).Text(); }
    std::u16string& Text() { return text_->Text(); }
    std::u16string_view TextView() const noexcept { return text_->View(); }

    // Where the text comes from, in the units that AppendText was given (bytes of the page's UTF-8 text for a
    // parsed page). Both are 0 until a run with a length was appended. Text items only.
    unsigned int SourcePosition() const noexcept { return text_->SourcePosition(); }
    unsigned int SourceLength() const noexcept { return text_->SourceLength(); }

    // Appends a run of text without any separator and stretches the source span to the end of this run:
    // `position` and `length` are its place in the source, wrapping modulo 2^32. An empty `text`, or a
    // `length` of 0, leaves the span alone. Afterwards the item is a text item, also when `text` is empty;
    // one that is not ran out of memory.
    void AppendText(std::u16string_view text, unsigned int position, unsigned int length);

    // Takes the white space off the end of the text. Text items only.
    void TrimText() { text_->TrimEnd(); }

    // Ends the text with a paragraph break: trailing white space goes, and two line feeds follow when text is
    // left. Calling it again changes nothing; the source span stays. Text items only.
    void MakeParagraph();

    // The nested table; null for other items.
    const ZOT::SmartPtr<KTable>& Table() const noexcept { return table_; }
    void Table(const ZOT::SmartPtr<KTable>& table);

    // Null once the cell is gone.
    KCell* ParentCell() noexcept { return parent_; }

    // Holders; one more; one fewer, and the last one destroys the item. The new count is returned.
    long NbRef() const noexcept { return holders_.Get(); }
    long AddRef() const noexcept { return holders_.Add(); }
    long Release() const noexcept {
        const long left = holders_.Sub();
        if (left == 0) delete this;
        return left;
    }

private:
    friend class KCell;  // says when it goes

    mutable ZOT::SPRefCounter holders_;
    KCell* parent_;
    ZOT::SmartPtr<KCellText> text_;
    ZOT::SmartPtr<KTable> table_;
};

}  // namespace QuillNS

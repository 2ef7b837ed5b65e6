#pragma once

#include <string>
#include <quill/cell_item.h>
#include <zot/counted.h>
#include <zot/ref_count_vector.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

class KStatistics;

// A cell of a layout table: runs of text and nested tables in document order, with the counts that the
// ranking reads.
//
// The table owns its cells and a cell its items; the way back to the table owns nothing, so keep the table
// while you use it. One thread builds a cell, after that any number may read it. Counters wrap modulo 2^32.
class QUILL_API KCell : public ZOT::PoolObject {
public:
    // A cell without items, with all counters 0; the first 16 items do not move. KTable::CreateCell makes the
    // cells of a table.
    KCell(KTable* table, unsigned int col, unsigned int row) noexcept;
    KCell(const KCell&) = delete;  // a cell stands in one table
    KCell& operator=(const KCell&) = delete;
    ~KCell();

    // The place in the table's grid, from 0.
    unsigned int Col() const noexcept { return col_; }
    unsigned int Row() const noexcept { return row_; }
    KTable* ParentTable() noexcept { return table_; }

    // Whether the cell has no items at all; an item that holds nothing counts.
    bool IsEmpty() const noexcept { return items_.Begin() == items_.End(); }

    // Appends an empty item of this cell and returns it; null when memory runs out (the cell is then as it
    // was).
    ZOT::SmartPtr<KCellItem> AddCellItem();

    // The items in order, none of them null. Adding an item may move them.
    const ZOT::SmartPtr<KCellItem>* Begin() const noexcept { return items_.Begin(); }
    const ZOT::SmartPtr<KCellItem>* End() const noexcept { return items_.End(); }
    const ZOT::SmartPtr<KCellItem>* begin() const noexcept { return Begin(); }
    const ZOT::SmartPtr<KCellItem>* end() const noexcept { return End(); }
    // The last item; End() when there is none.
    const ZOT::SmartPtr<KCellItem>* Back() const noexcept { return IsEmpty() ? End() : End() - 1; }

    // Words of the cell's own text; nested tables count in their own cells.
    unsigned int Words() const noexcept { return words_; }
    // Link elements met in the cell.
    unsigned int Links() const noexcept { return links_; }
    unsigned int Images() const noexcept { return images_; }
    // The part of Words that lies in links and images.
    unsigned int WordsInLinksAndImages() const noexcept { return wordsInLinksAndImages_; }
    // Tables that stand in the cell as items.
    unsigned int Tables() const noexcept { return tables_; }

    void AddWords(unsigned int count) noexcept { words_ += count; }
    void AddLinks(unsigned int count) noexcept { links_ += count; }
    void AddImages(unsigned int count) noexcept { images_ += count; }
    void AddWordsInLinksAndImages(unsigned int count) noexcept { wordsInLinksAndImages_ += count; }
    void AddTables(unsigned int count) noexcept { tables_ += count; }

    // Ends the text of the last item with a paragraph break (KCellItem::MakeParagraph). Nothing happens when
    // the last item holds no text, whatever stands before it.
    void MakeParagraph();

    // Appends the tables held by this cell's items to `out`, in item order; keeps what `out` already holds.
    // Tables nested inside those are not listed.
    void ChildTables(ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>& out);

    // The cell's own text for inspection: every text item, cleaned by ZOT::BeautifyString, and one line feed
    // at the end.
    std::u16string Dump();

    // False when no item of the cell has ever held a table: a look at the cell alone, where most items are
    // texts.
    bool MayHoldTables() const noexcept { return mayHoldTables_; }

    // Adds this cell's counters, and 1 to Cells, to `statistics`, and then those of the tables nested in it
    // down to `depth` levels: 0 none, 1 the tables that stand in the cell, kAllLevels all.
    void Statistics(KStatistics& statistics, unsigned int depth) const;

    // Share of the cell's words that lie outside links and images, in [0, 1]. 0.0 for a cell without words.
    double Rank() const;

    // Holders; one more; one fewer, and the last one destroys the cell. The new count is returned.
    long NbRef() const noexcept { return holders_.Get(); }
    long AddRef() const noexcept { return holders_.Add(); }
    long Release() const noexcept {
        const long left = holders_.Sub();
        if (left == 0) delete this;
        return left;
    }

private:
    friend class KCellItem;  // says when it is given a table

    mutable ZOT::SPRefCounter holders_;
    unsigned int col_;
    KTable* table_;
    ZOT::RefCountVector<KCellItem, ZOT::SmartPtr<KCellItem>> items_;
    unsigned int row_;
    unsigned int words_ = 0;
    unsigned int links_ = 0;
    unsigned int images_ = 0;
    unsigned int wordsInLinksAndImages_ = 0;
    unsigned int tables_ = 0;
    bool mayHoldTables_ = false;
};

}  // namespace QuillNS

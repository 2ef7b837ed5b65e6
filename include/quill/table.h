#pragma once

#include <quill/cell.h>
#include <zot/counted.h>
#include <zot/ref_count_vector.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

class KRankParameters;
class KStatistics;

// A layout table of the content tree: a grid of cell slots, and perhaps a caption and a summary. Every
// content tree has a table as its root; other tables stand as items in the cells of their parent.
//
// A position is a column and a row, in that order, both from 0. The grid is kept row by row:
//
//            column 0   column 1
//   row 0    [0]        [1]           a slot without a cell is null
//   row 1    [2]        [3]
//
// The table owns its cells, not its parent. One thread builds a table, after that any number may read it.
class QUILL_API KTable : public ZOT::PoolObject {
public:
    // A table of `cols` times `rows` null slots, which are allocated here and never move. `parent` is the
    // table in one of whose cells this one is nested, or null, and is not owned; `level` is 0 for a root and
    // the parent's level plus 1 for a nested table. When memory runs out the table has no slots: GetCell and
    // CreateCell give null.
    KTable(KTable* parent, unsigned int cols, unsigned int rows, unsigned int level);
    KTable(const KTable&) = delete;  // cells point back to the one table that they stand in
    KTable& operator=(const KTable&) = delete;
    ~KTable();

    unsigned int Cols() const noexcept { return cols_; }
    unsigned int Rows() const noexcept { return rows_; }
    unsigned int Level() const noexcept { return level_; }
    KTable* ParentTable() noexcept { return parent_; }

    // The slot at a position inside the grid (`col` below Cols, `row` below Rows; not checked).
    const ZOT::SmartPtr<KCell>& GetCell(unsigned int col, unsigned int row);

    // Puts a new cell without items into the slot, whose old cell is released, and returns it. Null when
    // memory runs out (the slot is then as it was). The position is not checked.
    ZOT::SmartPtr<KCell> CreateCell(unsigned int col, unsigned int row);

    // Puts `cell`, or null, into the slot. The position is not checked.
    void SetCell(unsigned int col, unsigned int row, const ZOT::SmartPtr<KCell>& cell);

    // Make a new cell (column 0, row 0) the caption or the summary, in place of the old one. When memory runs
    // out the old one stays, null if there was none. They count and are written like grid cells; tables
    // nested in them are neither listed by ChildTables nor ranked.
    const ZOT::SmartPtr<KCell>& CreateCaption();
    const ZOT::SmartPtr<KCell>& CreateSummary();
    // Null until made.
    const ZOT::SmartPtr<KCell>& Caption() const noexcept { return caption_; }
    const ZOT::SmartPtr<KCell>& Summary() const noexcept { return summary_; }

    // All slots of the grid row by row, null ones included.
    const ZOT::SmartPtr<KCell>* Begin() const noexcept { return grid_; }
    const ZOT::SmartPtr<KCell>* End() const noexcept { return grid_ + slots_; }
    const ZOT::SmartPtr<KCell>* begin() const noexcept { return Begin(); }
    const ZOT::SmartPtr<KCell>* end() const noexcept { return End(); }

    // Appends the tables nested directly in the grid's cells to `out`: column by column, each from top to
    // bottom, and within a cell in item order. Keeps what `out` already holds. A cell that stands in several
    // slots gives its tables once for each.
    void ChildTables(ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>& out);

    // Appends all tables nested in this one at any depth: its children, then all below the first child (that
    // one's children first), then all below the second, and so on.
    void FindAllTables(ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>& out);

    // Adds the counters of the cells that have items (caption, summary, grid) to `statistics`, with those of
    // the tables nested in them down to `depth` levels: 0 none, kAllLevels all. Raises its MaxWordsPerCell to
    // the largest ratio of the tables met.
    void Statistics(KStatistics& statistics, unsigned int depth) const;

    // Words outside links and images per cell that has items, of this table alone. 0.0 when no cell has
    // items.
    double WordsPerCell() const;

    // How much the table looks like the main content of its page, from 0.0 to twice the sum of the weights:
    // its share of words outside links, its words per cell against the best table of the page, and its share
    // of the page's words, averaged over each level of nested tables and added up with halving weight.
    // `totals` is gathered from the root of the tree with kAllLevels, `parameters` is not null. Changes
    // nothing. When memory runs out the rank is 0.0.
    double Rank(const KStatistics& totals, const ZOT::SmartPtr<KRankParameters>& parameters);

    // Holders; one more; one fewer, and the last one destroys the table. The new count is returned.
    long NbRef() const noexcept { return holders_.Get(); }
    long AddRef() const noexcept { return holders_.Add(); }
    long Release() const noexcept {
        const long left = holders_.Sub();
        if (left == 0) delete this;
        return left;
    }

private:
    ZOT::SmartPtr<KCell>* Slot(unsigned int col, unsigned int row) noexcept;

    mutable ZOT::SPRefCounter holders_;
    unsigned int level_;
    KTable* parent_;
    unsigned int cols_;
    unsigned int rows_;
    std::size_t slots_;
    ZOT::SmartPtr<KCell>* grid_;
    ZOT::SmartPtr<KCell> only_;  // the grid of a table of one slot
    ZOT::SmartPtr<KCell> caption_;
    ZOT::SmartPtr<KCell> summary_;
};

}  // namespace QuillNS

#pragma once

#include <quill/rank_parameters.h>
#include <quill/statistics.h>
#include <quill/table.h>
#include <zot/fast_vector.h>

namespace QuillNS {

// Share of a cell's words that lie outside links and images; 0.0 without words.
inline double TextShare(unsigned int words, unsigned int wordsInLinksAndImages) {
    if (words == 0) return 0.0;
    return 1.0 - static_cast<double>(wordsInLinksAndImages) / static_cast<double>(words);
}

// A table and all tables nested in it, with what their ranks need, listed level by level. The tables nested
// in one table stand next to each other, and so do all tables of one level below it:
//
//   R                    R | A B | A1 A2 B1 | X        below A: A1 A2, then X
//   ├ A ─ A1 ─ X
//   │   └ A2             A stands before B where KTable::ChildTables lists it first
//   └ B ─ B1
//
// The tree is walked once, in its order, and its cells are counted on the way: a rank then costs one step for
// each table below the ranked one. The tables must stay as they are meanwhile; they are not owned.
class RankedTree {
public:
    explicit RankedTree(KTable& root);

    // Tables listed; 0 when memory ran out.
    std::size_t Size() const noexcept { return tables_.Size(); }
    KTable* Table(std::size_t index) const noexcept { return tables_[index].table; }

    // Where the table comes in a walk that goes into each table's children before the next one, from 0.
    unsigned int WalkOrder(std::size_t index) const noexcept { return tables_[index].order; }

    // The words of the cells of a table's grid with ranks above `cellLowScore`.
    unsigned int AdmittedWords(std::size_t index, double cellLowScore) const;

    // The indices of the tables nested directly in a table: from the first one up to, but not including, the
    // second.
    std::size_t FirstChild(std::size_t index) const noexcept { return tables_[index].firstChild; }
    std::size_t LastChild(std::size_t index) const noexcept {
        return FirstChild(index) + tables_[index].children;
    }

    // What KTable::Statistics gathers from the root with kAllLevels, also when memory ran out.
    const KStatistics& Totals() const noexcept { return totals_; }

    // Whether a walk over the whole tree meets the grids of the listed tables, each as often as it is listed,
    // and nothing else: no table has a caption or a summary, or stands in several places, and no item is text
    // and table at once.
    bool IsPlain() const noexcept { return plain_; }

    // KTable::Rank of the table at `index`, where the totals are those of the whole tree that holds it. 0.0
    // without weights (KRankParameters::MaxDepth is 0).
    double Rank(std::size_t index, const KStatistics& totals, const KRankParameters& parameters) const;

private:
    struct Entry {
        KTable* table;
        std::size_t firstChild;
        unsigned int children;
        unsigned int level;  // below the root
        unsigned int order;
        // The counts of the table's own cells.
        unsigned int words;
        unsigned int wordsInLinksAndImages;
        bool isOneCell;  // which has items: the counts are those of the cell
        double wordsPerCell;
    };

    bool Add(KTable& table, unsigned int level);
    void AddToTotals(const KTable& table, const KStatistics& own);
    bool SortByLevel();

    ZOT::FastVector<Entry> tables_;
    KStatistics totals_;
    bool plain_ = true;
};

}  // namespace QuillNS

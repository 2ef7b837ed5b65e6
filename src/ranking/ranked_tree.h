#pragma once

#include <quill/rank_parameters.h>
#include <quill/statistics.h>
#include <quill/table.h>
#include <zot/fast_vector.h>

namespace QuillNS {

// A table and all tables nested in it, with what their ranks need, listed level by level. The tables nested
// in one table stand next to each other, and so do all tables of one level below it:
//
//   R                    R | A B | A1 A2 B1 | X        below A: A1 A2, then X
//   ├ A ─ A1 ─ X
//   │   └ A2             A stands before B where KTable::ChildTables lists it first
//   └ B ─ B1
//
// Each table's cells are counted once, however many ranks are asked for: a rank then costs one step for each
// table below the ranked one. The tables must stay as they are meanwhile; they are not owned.
class RankedTree {
public:
    // The totals are those of the whole tree that holds `root`. Totals and parameters outlive this object.
    RankedTree(KTable& root, const KStatistics& totals, const KRankParameters& parameters);

    // Tables listed; 0 when memory ran out.
    std::size_t Size() const noexcept { return tables_.Size(); }
    KTable* Table(std::size_t index) const noexcept { return tables_[index].table; }

    // The indices of the tables nested directly in a table: from the first one up to, but not including, the
    // second.
    std::size_t FirstChild(std::size_t index) const noexcept { return tables_[index].firstChild; }
    std::size_t LastChild(std::size_t index) const noexcept { return tables_[index].lastChild; }

    // KTable::Rank of the table at `index`. 0.0 without weights (KRankParameters::MaxDepth is 0).
    double Rank(std::size_t index) const;

private:
    struct Entry {
        KTable* table;
        std::size_t firstChild;
        std::size_t lastChild;
        // The counts of the table's own cells.
        unsigned int words;
        unsigned int wordsInLinksAndImages;
        unsigned int cells;
        double wordsPerCell;
    };

    bool Add(KTable& table);
    bool AddChildren(std::size_t index);
    double LevelSum(std::size_t first, std::size_t last, unsigned int depth) const;

    const KStatistics& totals_;
    const KRankParameters& parameters_;
    ZOT::FastVector<Entry> tables_;
};

}  // namespace QuillNS

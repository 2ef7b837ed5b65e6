#pragma once

#include <algorithm>
#include <functional>
#include <set>
#include <utility>
#include <quill/table.h>
#include <zot/fast_vector.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

// A set of tables by identity, which it holds.
using TableSet = std::set<ZOT::SmartPtr<KTable>>;

// The tables of a tree in the order of a walk, and which of them win; not owned. A table that stands in
// several places wins when one of them does, which only the set tells. One thread at a time.
class Winners {
public:
    // That many tables, each of which is to be set; false when memory runs out.
    bool Resize(std::size_t tables) { return tables_.Resize(tables); }
    void Set(std::size_t order, KTable* table, bool wins) { tables_[order] = {table, wins}; }

    void InsertInto(TableSet& set) const {
        for (const Entry& entry : tables_) {
            if (entry.wins) set.emplace_hint(set.end(), entry.table, true);
        }
    }

    void Swap(Winners& other) noexcept {
        tables_.Swap(other.tables_);
        std::swap(next_, other.next_);
        std::swap(sorted_, other.sorted_);
    }

    // Whether a table wins. Most walks ask for the tables in their order; with the first question out of it
    // they are sorted, and searched.
    bool Has(const KTable* table) noexcept {
        if (next_ == tables_.Size() || tables_[next_].table != table) {
            next_ = Find(table);
            if (next_ == tables_.Size() || tables_[next_].table != table) return false;
        }
        return tables_[next_++].wins;
    }

private:
    struct Entry {
        KTable* table;
        bool wins;
    };

    // The place of a table, or where it would be.
    std::size_t Find(const KTable* table) noexcept {
        const std::less<const KTable*> less;
        if (!sorted_) {
            std::sort(tables_.begin(), tables_.end(),
                      [less](const Entry& a, const Entry& b) { return less(a.table, b.table); });
            sorted_ = true;
        }
        const Entry* const found = std::lower_bound(
            tables_.begin(), tables_.end(), table,
            [less](const Entry& entry, const KTable* other) { return less(entry.table, other); });
        return static_cast<std::size_t>(found - tables_.begin());
    }

    ZOT::FastVector<Entry> tables_;
    std::size_t next_ = 0;  // behind the table that was asked for last
    bool sorted_ = false;   // by where they stand in memory
};

}  // namespace QuillNS

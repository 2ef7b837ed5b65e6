#include "ranked_tree.h"

#include <algorithm>

#include "child_tables.h"

namespace QuillNS {

namespace {

// Somebody else who holds a cell or a table may be another cell: the answer is then no as well.
bool IsPlainCell(const KCell& cell) {
    if (!cell.MayHoldTables()) return true;
    const auto isPlain = [](const ZOT::SmartPtr<KCellItem>& item) {
        return !item->IsTable() || (!item->IsText() && item->Table()->NbRef() == 1);
    };
    return cell.NbRef() == 1 && std::all_of(cell.Begin(), cell.End(), isPlain);
}

// Whether the table is a cell with items, which `own` counts, and nothing else.
bool IsOneCell(const KTable& table, const KStatistics& own) {
    return table.End() - table.Begin() == 1 && own.Cells() == 1 && *table.Begin() &&
           !(*table.Begin())->IsEmpty();
}

bool IsPlainTable(const KTable& table) {
    const auto isPlain = [](const ZOT::SmartPtr<KCell>& cell) { return !cell || IsPlainCell(*cell); };
    return !table.Caption() && !table.Summary() && std::all_of(table.Begin(), table.End(), isPlain);
}

}  // namespace

RankedTree::RankedTree(KTable& root) {
    if (Add(root, 0) && SortByLevel()) return;
    tables_.Free();
    totals_.Clear();
    root.Statistics(totals_, kAllLevels);
}

// Lists a table in front of all that are nested in it.
bool RankedTree::Add(KTable& table, unsigned int level) {
    KStatistics own;
    table.Statistics(own, 0);
    AddToTotals(table, own);
    plain_ = plain_ && IsPlainTable(table);
    const std::size_t index = Size();
    // The largest ratio of one table is that table's own.
    bool complete =
        tables_.Append({&table, 0, 0, level, static_cast<unsigned int>(index), own.Words(),
                        own.WordsInLinksAndImages(), IsOneCell(table, own), own.MaxWordsPerCell()});
    unsigned int children = 0;
    VisitChildTables(table, [&](const ZOT::SmartPtr<KTable>& child) {
        complete = complete && Add(*child, level + 1);
        ++children;
    });
    if (complete) tables_[index].children = children;
    return complete;
}

void RankedTree::AddToTotals(const KTable& table, const KStatistics& own) {
    totals_.AddWords(own.Words());
    totals_.AddWordsInLinksAndImages(own.WordsInLinksAndImages());
    totals_.AddLinks(own.Links());
    totals_.AddImages(own.Images());
    totals_.AddTables(own.Tables());
    totals_.AddCells(own.Cells());
    totals_.MaxWordsPerCell(std::max(totals_.MaxWordsPerCell(), own.MaxWordsPerCell()));
    for (const ZOT::SmartPtr<KCell>* const cell : {&table.Caption(), &table.Summary()}) {
        if (!*cell) continue;
        VisitChildTables(
            **cell, [this](const ZOT::SmartPtr<KTable>& nested) { nested->Statistics(totals_, kAllLevels); });
    }
}

// Within a level the order stays. Then the children of each table follow those of the table before it.
bool RankedTree::SortByLevel() {
    ZOT::FastVector<std::size_t> begins;  // of the levels
    for (const Entry& table : tables_) {
        while (begins.Size() < table.level + std::size_t{2}) {
            if (!begins.Append(0)) return false;
        }
        ++begins[table.level + 1];
    }
    for (std::size_t level = 1; level < begins.Size(); ++level) begins[level] += begins[level - 1];

    ZOT::FastVector<Entry> sorted(Size());
    if (sorted.Size() != Size()) return false;
    for (const Entry& table : tables_) sorted[begins[table.level]++] = table;
    std::size_t next = 1;
    for (Entry& table : sorted) {
        table.firstChild = next;
        next += table.children;
    }
    tables_.Swap(sorted);
    return true;
}

unsigned int RankedTree::AdmittedWords(std::size_t index, double cellLowScore) const {
    const Entry& table = tables_[index];
    if (table.isOneCell) {
        return TextShare(table.words, table.wordsInLinksAndImages) > cellLowScore ? table.words : 0;
    }
    unsigned int words = 0;
    for (const ZOT::SmartPtr<KCell>& cell : *table.table) {
        if (cell && cell->Rank() > cellLowScore) words += cell->Words();
    }
    return words;
}

namespace {

// What the ranks of all tables of a level share.
struct LevelWeights {
    LevelWeights(const KStatistics& totals, const KRankParameters& parameters, unsigned int depth)
        : factor(parameters.DepthFactor(depth)),
          linkDensity(parameters.LinkDensity(depth % parameters.MaxDepth())),
          wordsPerCell(parameters.WordsPerCell(depth % parameters.MaxDepth())),
          wordCount(parameters.WordCount(depth % parameters.MaxDepth())),
          mostWordsPerCell(totals.MaxWordsPerCell()),
          text(totals.Words() - totals.WordsInLinksAndImages()) {}

    double factor;
    double linkDensity;
    double wordsPerCell;
    double wordCount;
    double mostWordsPerCell;
    unsigned int text;
};

// The order of the floating-point operations decides about the last bits of a rank: keep it.
template <class Entry>
double LevelSum(const Entry* first, const Entry* last, const LevelWeights& weights) {
    // They live through the whole level on purpose: a later table is judged together with those before it.
    unsigned int words = 0;
    unsigned int linked = 0;
    bool anyWordsPerCell = false;

    double sum = 0.0;
    for (const Entry* table = first; table != last; ++table) {
        words += table->words;
        linked += table->wordsInLinksAndImages;
        anyWordsPerCell |= table->wordsPerCell > 0.0;

        if (words > 0) {
            const double share = static_cast<double>(linked) / static_cast<double>(words);
            sum += (1.0 - share) * weights.linkDensity * weights.factor;
        }
        if (anyWordsPerCell) {
            sum += table->wordsPerCell * weights.wordsPerCell * weights.factor / weights.mostWordsPerCell;
        }
        if (weights.text != 0) {
            const double share = static_cast<double>(words - linked) / static_cast<double>(weights.text);
            sum += share * weights.wordCount * weights.factor;
        }
    }
    return sum;
}

}  // namespace

double RankedTree::Rank(std::size_t index, const KStatistics& totals,
                        const KRankParameters& parameters) const {
    double rank = 0.0;
    if (parameters.MaxDepth() == 0) return rank;
    std::size_t first = index;
    std::size_t last = index + 1;
    for (unsigned int depth = 0; first != last; ++depth) {
        const LevelWeights weights(totals, parameters, depth);
        const double sum = LevelSum(&tables_[first], &tables_[first] + (last - first), weights);
        rank += sum / static_cast<double>(last - first);
        const std::size_t below = FirstChild(first);
        last = LastChild(last - 1);
        first = below;
    }
    return rank;
}

}  // namespace QuillNS

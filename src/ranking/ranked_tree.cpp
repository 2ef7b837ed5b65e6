#include "ranked_tree.h"

#include "child_tables.h"

namespace QuillNS {

RankedTree::RankedTree(KTable& root, const KStatistics& totals, const KRankParameters& parameters)
    : totals_(totals), parameters_(parameters) {
    bool complete = Add(root);
    for (std::size_t index = 0; complete && index < Size(); ++index) complete = AddChildren(index);
    if (!complete) tables_.Free();
}

bool RankedTree::Add(KTable& table) {
    KStatistics own;
    table.Statistics(own, 0);
    // The largest ratio of one table is that table's own.
    return tables_.Append(
        {&table, 0, 0, own.Words(), own.WordsInLinksAndImages(), own.Cells(), own.MaxWordsPerCell()});
}

// Also a table without children gets its place in the level below, so that the levels of its parent stay in
// one piece.
bool RankedTree::AddChildren(std::size_t index) {
    const std::size_t first = Size();
    bool complete = true;
    VisitChildTables(*Table(index), [this, &complete](const ZOT::SmartPtr<KTable>& child) {
        complete = complete && Add(*child);
    });
    tables_[index].firstChild = first;
    tables_[index].lastChild = Size();
    return complete;
}

double RankedTree::Rank(std::size_t index) const {
    double rank = 0.0;
    if (parameters_.MaxDepth() == 0) return rank;
    std::size_t first = index;
    std::size_t last = index + 1;
    for (unsigned int depth = 0; first != last; ++depth) {
        rank += LevelSum(first, last, depth) / static_cast<double>(last - first);
        const std::size_t below = FirstChild(first);
        last = LastChild(last - 1);
        first = below;
    }
    return rank;
}

// The order of the floating-point operations decides about the last bits of a rank: keep it.
double RankedTree::LevelSum(std::size_t first, std::size_t last, unsigned int depth) const {
    const double factor = parameters_.DepthFactor(depth);
    const unsigned int weight = depth % parameters_.MaxDepth();
    const double linkDensity = parameters_.LinkDensity(weight);
    const double wordsPerCell = parameters_.WordsPerCell(weight);
    const double wordCount = parameters_.WordCount(weight);
    const double mostWordsPerCell = totals_.MaxWordsPerCell();
    const unsigned int totalText = totals_.Words() - totals_.WordsInLinksAndImages();

    // They live through the whole level on purpose: a later table is judged together with those before it.
    unsigned int words = 0;
    unsigned int linked = 0;
    unsigned int cells = 0;
    bool anyWordsPerCell = false;

    double sum = 0.0;
    for (const Entry *table = &tables_[first], *const end = table + (last - first); table != end; ++table) {
        words += table->words;
        linked += table->wordsInLinksAndImages;
        cells += table->cells;
        anyWordsPerCell |= table->wordsPerCell > 0.0;

        if (words > 0) {
            const double share = static_cast<double>(linked) / static_cast<double>(words);
            sum += (1.0 - share) * linkDensity * factor;
        }
        if (cells > 0 && anyWordsPerCell) {
            sum += table->wordsPerCell * wordsPerCell * factor / mostWordsPerCell;
        }
        if (totalText != 0) {
            const unsigned int text = words - linked;
            sum += static_cast<double>(text) / static_cast<double>(totalText) * wordCount * factor;
        }
    }
    return sum;
}

}  // namespace QuillNS

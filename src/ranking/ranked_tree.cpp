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
    const unsigned int totalText = totals_.Words() - totals_.WordsInLinksAndImages();

    // Lives through the whole level on purpose: a later table is judged together with those before it.
    KStatistics level;
    double sum = 0.0;
    for (std::size_t index = first; index != last; ++index) {
        const Entry& table = tables_[index];
        level.AddWords(table.words);
        level.AddWordsInLinksAndImages(table.wordsInLinksAndImages);
        level.AddCells(table.cells);
        if (table.wordsPerCell > level.MaxWordsPerCell()) level.MaxWordsPerCell(table.wordsPerCell);

        if (level.Words() > 0) {
            const double linked =
                static_cast<double>(level.WordsInLinksAndImages()) / static_cast<double>(level.Words());
            sum += (1.0 - linked) * linkDensity * factor;
        }
        if (level.Cells() > 0 && level.MaxWordsPerCell() > 0.0) {
            sum += table.wordsPerCell * wordsPerCell * factor / totals_.MaxWordsPerCell();
        }
        if (totalText != 0) {
            const unsigned int text = level.Words() - level.WordsInLinksAndImages();
            sum += static_cast<double>(text) / static_cast<double>(totalText) * wordCount * factor;
        }
    }
    return sum;
}

}  // namespace QuillNS

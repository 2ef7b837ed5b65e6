// Gathering over the content tree. A table asks its cells and a cell the tables in its items; the depth
// counts tables.

#include <quill/cell.h>
#include <quill/statistics.h>
#include <quill/table.h>

#include "child_tables.h"

namespace QuillNS {

namespace {

// Words outside links and images per cell. The sum and the count wrap like all counters.
class WordsPerCellRatio {
public:
    void Add(const KCell& cell) {
        words_ += cell.Words() - cell.WordsInLinksAndImages();
        ++cells_;
    }
    double Value() const {
        return cells_ == 0 ? 0.0 : static_cast<double>(words_) / static_cast<double>(cells_);
    }

private:
    unsigned int words_ = 0;
    unsigned int cells_ = 0;
};

// The cells that count, in the order in which they do.
template <class Visit>
void VisitFilledCells(const KTable& table, Visit visit) {
    const auto visitFilled = [&visit](const ZOT::SmartPtr<KCell>& cell) {
        if (cell && !cell->IsEmpty()) visit(*cell);
    };
    visitFilled(table.Caption());
    visitFilled(table.Summary());
    for (const ZOT::SmartPtr<KCell>& cell : table) visitFilled(cell);
}

}  // namespace

void KTable::Statistics(KStatistics& statistics, unsigned int depth) const {
    WordsPerCellRatio ratio;
    VisitFilledCells(*this, [&](const KCell& cell) {
        ratio.Add(cell);
        cell.Statistics(statistics, depth);
    });
    if (ratio.Value() > statistics.MaxWordsPerCell()) statistics.MaxWordsPerCell(ratio.Value());
}

double KTable::WordsPerCell() const {
    WordsPerCellRatio ratio;
    VisitFilledCells(*this, [&ratio](const KCell& cell) { ratio.Add(cell); });
    return ratio.Value();
}

void KCell::Statistics(KStatistics& statistics, unsigned int depth) const {
    statistics.AddWords(words_);
    statistics.AddWordsInLinksAndImages(wordsInLinksAndImages_);
    statistics.AddLinks(links_);
    statistics.AddImages(images_);
    statistics.AddTables(tables_);
    statistics.AddCells(1);
    if (depth == 0) return;
    VisitChildTables(*this, [&statistics, depth](const ZOT::SmartPtr<KTable>& table) {
        table->Statistics(statistics, depth - 1);
    });
}

}  // namespace QuillNS

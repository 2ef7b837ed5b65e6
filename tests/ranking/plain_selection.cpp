#include "plain_selection.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace QuillNS::Plain {

namespace {

using Tables = ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>>;
using TableVector = std::vector<ZOT::SmartPtr<KTable>>;

TableVector Listed(KTable& table, void (KTable::*list)(Tables&)) {
    Tables tables;
    (table.*list)(tables);
    return TableVector(tables.Begin(), tables.End());
}

double AsDouble(unsigned int count) {
    return static_cast<double>(count);
}

// One selection: what of a tree is admitted.
struct Admitted {
    TableSet tables;
    double cellLowScore;

    bool Has(const KCell& cell) const {
        if (cell.Words() == 0) return 0.0 > cellLowScore;
        return 1.0 - AsDouble(cell.WordsInLinksAndImages()) / AsDouble(cell.Words()) > cellLowScore;
    }
};

class Writer {
public:
    explicit Writer(const Admitted& admitted) : admitted_(admitted) {}

    void Table(const ZOT::SmartPtr<KTable>& table) {
        const bool good = admitted_.tables.count(table) != 0;
        if (good) Break();
        for (const ZOT::SmartPtr<KCell>& cell : *table) Cell(cell, good);
        Cell(table->Caption(), good);
        Cell(table->Summary(), good);
        if (good) Break();
    }

    std::u16string text;
    unsigned int words = 0;

private:
    void Cell(const ZOT::SmartPtr<KCell>& cell, bool tableGood) {
        if (!cell) return;
        const bool good = tableGood && admitted_.Has(*cell);
        if (good) words += cell->Words();
        if (good && cell->IsEmpty()) Break();
        for (const ZOT::SmartPtr<KCellItem>& item : *cell) {
            if (good && item->IsText()) text += item->Text();
            if (item->IsTable()) Table(item->Table());
        }
    }

    void Break() {
        if (!text.empty() && text.back() != u'\n') text += u'\n';
    }

    const Admitted& admitted_;
};

Admitted Admit(const ZOT::SmartPtr<KTable>& root, const KStatistics& totals, const double* tuning) {
    KRankParameters parameters;
    parameters.Init(tuning[0], tuning[1], tuning[2], tuning[3]);
    return {SelectWinners(root, totals, parameters), parameters.CellLowScore()};
}

}  // namespace

double Rank(KTable& table, const KStatistics& totals, const KRankParameters& parameters) {
    double rank = 0.0;
    std::vector<KTable*> level = {&table};
    for (unsigned int d = 0; !level.empty(); ++d) {
        const double f = 1.0 / std::pow(2.0, AsDouble(d));
        const unsigned int i = d % parameters.MaxDepth();
        KStatistics gathered;
        double sum = 0.0;
        std::vector<KTable*> next;
        for (KTable* const t : level) {
            for (const ZOT::SmartPtr<KTable>& child : Listed(*t, &KTable::ChildTables))
                next.push_back(child.Get());
            t->Statistics(gathered, 0);
            const unsigned int outside = gathered.Words() - gathered.WordsInLinksAndImages();
            const unsigned int allOutside = totals.Words() - totals.WordsInLinksAndImages();
            if (gathered.Words() > 0) {
                sum += (1.0 - AsDouble(gathered.WordsInLinksAndImages()) / AsDouble(gathered.Words())) *
                       parameters.LinkDensity(i) * f;
            }
            if (gathered.Cells() > 0 && gathered.MaxWordsPerCell() > 0.0) {
                sum += t->WordsPerCell() * parameters.WordsPerCell(i) * f / totals.MaxWordsPerCell();
            }
            if (totals.Words() != totals.WordsInLinksAndImages()) {
                sum += AsDouble(outside) / AsDouble(allOutside) * parameters.WordCount(i) * f;
            }
        }
        rank += sum / static_cast<double>(level.size());
        level = std::move(next);
    }
    return rank;
}

TableSet SelectWinners(const ZOT::SmartPtr<KTable>& root, const KStatistics& totals,
                       const KRankParameters& parameters) {
    TableVector candidates = {root};
    const TableVector children = Listed(*root, &KTable::ChildTables);
    candidates.insert(candidates.end(), children.begin(), children.end());
    for (const ZOT::SmartPtr<KTable>& child : children) {
        const TableVector below = Listed(*child, &KTable::FindAllTables);
        candidates.insert(candidates.end(), below.begin(), below.end());
    }

    std::vector<std::pair<double, KTable*>> ranked;
    for (const ZOT::SmartPtr<KTable>& candidate : candidates) {
        const double rank = Rank(*candidate, totals, parameters);
        if (!(rank < parameters.LowThreshold())) ranked.emplace_back(rank, candidate.Get());
    }
    TableSet winners;
    if (ranked.empty()) return winners;
    std::sort(ranked.begin(), ranked.end());
    const double best = ranked.back().first;
    const double cutoff = best - parameters.HiThreshold() * best;
    for (auto top = ranked.rbegin(); top != ranked.rend() && top->first >= cutoff; ++top) {
        winners.insert(ZOT::SmartPtr<KTable>(top->second, true));
        for (const ZOT::SmartPtr<KTable>& below : Listed(*top->second, &KTable::FindAllTables)) {
            if (Rank(*below, totals, parameters) >= parameters.WinnerLowThreshold()) winners.insert(below);
        }
    }
    return winners;
}

std::u16string Text(const ZOT::SmartPtr<KTable>& root, const std::vector<double>& tuning) {
    KStatistics totals;
    root->Statistics(totals, kAllLevels);
    const Admitted first = Admit(root, totals, tuning.data());
    Writer writer(first);
    writer.Table(root);
    if (AsDouble(totals.Words()) * tuning[8] > AsDouble(writer.words)) {
        const Admitted second = Admit(root, totals, tuning.data() + 4);
        Writer again(second);
        again.Table(root);
        return again.text;
    }
    return writer.text;
}

}  // namespace QuillNS::Plain

#include "select_winners.h"

#include <algorithm>

namespace QuillNS {

void SelectWinners(const ZOT::SmartPtr<KTable>& root, const KStatistics& totals,
                   const ZOT::SmartPtr<KRankParameters>& parameters, ZOT::RefCount<TableSet>& winners) {
    WinnerSelection(RankedTree(*root), totals, *parameters).Select(*parameters, *winners);
}

namespace {

unsigned int AdmittedWords(const KTable& table, const KRankParameters& thresholds) {
    unsigned int words = 0;
    for (const ZOT::SmartPtr<KCell>& cell : table) {
        if (cell && cell->Rank() > thresholds.CellLowScore()) words += cell->Words();
    }
    return words;
}

}  // namespace

WinnerSelection::WinnerSelection(const RankedTree& tree, const KStatistics& totals,
                                 const KRankParameters& parameters)
    : tree_(tree), ranks_(tree.Size()) {
    for (std::size_t index = 0; index < ranks_.Size(); ++index)
        ranks_[index] = tree_.Rank(index, totals, parameters);
}

// Tables are listed after those that they are nested in, so one pass hands down what a top table gives to all
// below it.
unsigned int WinnerSelection::Select(const KRankParameters& thresholds, TableSet& winners) const {
    ZOT::FastVector<bool> belowTop(ranks_.Size());
    unsigned int words = 0;
    if (belowTop.Size() == 0) return words;
    belowTop[0] = false;
    const double cutoff = Cutoff(thresholds);
    for (std::size_t index = 0; index < ranks_.Size(); ++index) {
        const double rank = ranks_[index];
        const bool top = rank >= thresholds.LowThreshold() && rank >= cutoff;
        const bool wins = top || (belowTop[index] && rank >= thresholds.WinnerLowThreshold());
        if (wins) {
            winners.insert(ZOT::SmartPtr<KTable>(tree_.Table(index), true));
            words += AdmittedWords(*tree_.Table(index), thresholds);
        }
        for (std::size_t child = tree_.FirstChild(index); child != tree_.LastChild(index); ++child) {
            belowTop[child] = top || belowTop[index];
        }
    }
    return words;
}

// The least rank of a top table. The best of all tables is the best candidate, or there is no candidate.
double WinnerSelection::Cutoff(const KRankParameters& thresholds) const {
    const double best = *std::max_element(ranks_.Begin(), ranks_.End());
    return best - thresholds.HiThreshold() * best;
}

}  // namespace QuillNS

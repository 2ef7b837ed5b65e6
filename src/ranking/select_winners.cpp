#include "select_winners.h"

#include <algorithm>

namespace QuillNS {

void SelectWinners(const ZOT::SmartPtr<KTable>& root, const KStatistics& totals,
                   const ZOT::SmartPtr<KRankParameters>& parameters, ZOT::RefCount<TableSet>& winners) {
    Winners tables;
    WinnerSelection(RankedTree(*root), totals, *parameters).Select(*parameters, tables);
    tables.InsertInto(*winners);
}

WinnerSelection::WinnerSelection(const RankedTree& tree, const KStatistics& totals,
                                 const KRankParameters& parameters)
    : tree_(tree), ranks_(tree.Size()) {
    for (std::size_t index = 0; index < ranks_.Size(); ++index)
        ranks_[index] = tree_.Rank(index, totals, parameters);
}

// Tables are listed after those that they are nested in, so one pass hands down what a top table gives to all
// below it.
unsigned int WinnerSelection::Select(const KRankParameters& thresholds, Winners& winners) const {
    ZOT::FastVector<bool> belowTop(ranks_.Size());
    unsigned int words = 0;
    if (belowTop.Size() == 0 || !winners.Resize(ranks_.Size())) return words;
    belowTop[0] = false;
    const double cutoff = Cutoff(thresholds);
    for (std::size_t index = 0; index < ranks_.Size(); ++index) {
        const double rank = ranks_[index];
        const bool top = rank >= thresholds.LowThreshold() && rank >= cutoff;
        const bool wins = top || (belowTop[index] && rank >= thresholds.WinnerLowThreshold());
        winners.Set(tree_.WalkOrder(index), tree_.Table(index), wins);
        if (wins) words += tree_.AdmittedWords(index, thresholds.CellLowScore());
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

#pragma once

#include <quill/rank_parameters.h>
#include <quill/statistics.h>
#include <quill/table.h>
#include <zot/fast_vector.h>
#include <zot/ref_count.h>
#include <zot/smart_ptr.h>

#include "ranked_tree.h"
#include "winners.h"

namespace QuillNS {

// Inserts the tables that carry the main content of the tree below `root` into `winners`, which holds a set
// and keeps what is in it:
//   - the top tables: ranks of at least LowThreshold that are at most HiThreshold (a fraction of the best
//     rank) below the best,
//   - of the tables nested in a top table, at any depth, those with ranks of at least WinnerLowThreshold.
// `totals` is gathered from `root` with kAllLevels. When memory runs out nothing wins.
void SelectWinners(const ZOT::SmartPtr<KTable>& root, const KStatistics& totals,
                   const ZOT::SmartPtr<KRankParameters>& parameters, ZOT::RefCount<TableSet>& winners);

// The ranks of all tables of a tree, from which winners may be selected several times: with thresholds that
// differ, as long as the weights are those of `parameters`. What it is given outlives it, and the tree must
// not change meanwhile.
class WinnerSelection {
public:
    WinnerSelection(const RankedTree& tree, const KStatistics& totals, const KRankParameters& parameters);

    // Says in `winners` which tables win by these thresholds. Returns the words of their grid cells that the
    // thresholds admit. Without memory there are none.
    unsigned int Select(const KRankParameters& thresholds, Winners& winners) const;

private:
    double Cutoff(const KRankParameters& thresholds) const;

    const RankedTree& tree_;
    ZOT::FastVector<double> ranks_;  // one for each table of the tree, or none when memory ran out
};

}  // namespace QuillNS

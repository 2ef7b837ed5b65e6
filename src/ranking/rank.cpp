#include <quill/cell.h>
#include <quill/table.h>

#include "ranked_tree.h"

namespace QuillNS {

double KCell::Rank() const {
    return TextShare(words_, wordsInLinksAndImages_);
}

double KTable::Rank(const KStatistics& totals, const ZOT::SmartPtr<KRankParameters>& parameters) {
    const RankedTree tree(*this);
    return tree.Size() == 0 ? 0.0 : tree.Rank(0, totals, *parameters);
}

}  // namespace QuillNS

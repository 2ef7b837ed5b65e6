#pragma once

#include <set>
#include <string>
#include <vector>
#include <quill/rank_parameters.h>
#include <quill/statistics.h>
#include <quill/table.h>

// The ranking, the selection and the writing, written down a second time as plainly as can be: every rank
// walks its tables by itself, every list is a list. What the library does must come to the same, to the last
// bit.
namespace QuillNS::Plain {

using TableSet = std::set<ZOT::SmartPtr<KTable>>;

double Rank(KTable& table, const KStatistics& totals, const KRankParameters& parameters);

TableSet SelectWinners(const ZOT::SmartPtr<KTable>& root, const KStatistics& totals,
                       const KRankParameters& parameters);

// What QuillTextExtractor writes into an empty stream for a page that is not a link page. `tuning` has nine
// values.
std::u16string Text(const ZOT::SmartPtr<KTable>& root, const std::vector<double>& tuning);

}  // namespace QuillNS::Plain

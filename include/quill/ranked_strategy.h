#pragma once

#include <set>
#include <quill/rank_parameters.h>
#include <quill/visitor_strategy.h>
#include <zot/ref_count.h>
#include <zot/smart_ptr.h>

namespace QuillNS {

// Admits the tables of a set of winners, and of all tables' cells those with few enough link words. A cell's
// answer depends on the cell alone and a table's on the set alone. The parameters and the winners are shared
// and not changed.
class QUILL_API QuillRankedStrategy : public QuillVisitorStrategy {
public:
    // `parameters` is not null. An empty `winners` (a holder of no set) admits every table, a holder of an
    // empty set none.
    QuillRankedStrategy(const ZOT::SmartPtr<KRankParameters>& parameters,
                        const ZOT::RefCount<std::set<ZOT::SmartPtr<KTable>>>& winners);
    // Share the source's parameters and winners.
    QuillRankedStrategy(const QuillRankedStrategy&) = default;
    QuillRankedStrategy& operator=(const QuillRankedStrategy&) = default;
    ~QuillRankedStrategy() override;

    const ZOT::SmartPtr<KRankParameters>& Parameters() const noexcept { return parameters_; }

    // Whether the table is one of the winners.
    bool IsGoodTable(const ZOT::SmartPtr<KTable>& table) override;
    // Whether KCell::Rank lies strictly above KRankParameters::CellLowScore.
    bool IsGoodCell(const ZOT::SmartPtr<KCell>& cell) override;

private:
    ZOT::SmartPtr<KRankParameters> parameters_;
    ZOT::RefCount<std::set<ZOT::SmartPtr<KTable>>> winners_;
};

}  // namespace QuillNS

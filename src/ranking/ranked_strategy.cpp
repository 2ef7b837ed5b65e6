#include <quill/ranked_strategy.h>

namespace QuillNS {

QuillRankedStrategy::QuillRankedStrategy(const ZOT::SmartPtr<KRankParameters>& parameters,
                                         const ZOT::RefCount<std::set<ZOT::SmartPtr<KTable>>>& winners)
    : parameters_(parameters), winners_(winners) {}

QuillRankedStrategy::~QuillRankedStrategy() = default;

bool QuillRankedStrategy::IsGoodTable(const ZOT::SmartPtr<KTable>& table) {
    return !winners_ || winners_->count(table) != 0;
}

bool QuillRankedStrategy::IsGoodCell(const ZOT::SmartPtr<KCell>& cell) {
    return cell->Rank() > parameters_->CellLowScore();
}

}  // namespace QuillNS

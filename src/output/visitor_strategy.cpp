#include <quill/visitor_strategy.h>

namespace QuillNS {

QuillVisitorStrategy::~QuillVisitorStrategy() = default;

bool QuillVisitorStrategy::IsGoodTable(const ZOT::SmartPtr<KTable>&) {
    return true;
}
bool QuillVisitorStrategy::IsGoodCell(const ZOT::SmartPtr<KCell>&) {
    return true;
}
bool QuillVisitorStrategy::IsGoodCellItem(const ZOT::SmartPtr<KCellItem>&) {
    return true;
}

}  // namespace QuillNS

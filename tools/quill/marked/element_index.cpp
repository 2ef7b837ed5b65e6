#include "element_index.h"

namespace QuillTool {

namespace {

// Visits a whole content tree, whatever the library chooses of it.
class Survey : public QuillNS::QuillVisitor {
public:
    explicit Survey(const ZOT::SmartPtr<QuillNS::KTable>& root) {
        ParseTree(root,
                  ZOT::SmartPtr<QuillNS::QuillVisitorStrategy>(new QuillNS::QuillVisitorStrategy, true));
    }

    std::vector<ZOT::SmartPtr<QuillNS::KTable>> tables;
    std::unordered_map<const QuillNS::KTable*, QuillNS::KCell*> holders;  // the cell in which a table stands
    std::unordered_map<unsigned int, QuillNS::KCell*> cells;              // of texts by their positions

private:
    void VisitTableInfix(const ZOT::SmartPtr<QuillNS::KTable>& table) override {
        tables.push_back(table);
        if (!open_.empty()) holders[&*table] = open_.back();
    }
    void VisitTablePostfix(const ZOT::SmartPtr<QuillNS::KTable>&) override {}
    void VisitCellInfix(const ZOT::SmartPtr<QuillNS::KCell>& cell) override { open_.push_back(&*cell); }
    void VisitCellPostfix(const ZOT::SmartPtr<QuillNS::KCell>&) override { open_.pop_back(); }
    void VisitCellText(const ZOT::SmartPtr<QuillNS::KCellItem>& item) override {
        if (item->SourceLength() != 0) cells[item->SourcePosition()] = open_.back();
    }

    std::vector<QuillNS::KCell*> open_;
};

bool IsCell(const Node& node) {
    return node.Keyword() == ZOTParser::kKeywordCell || node.Keyword() == ZOTParser::kKeywordHeaderCell;
}

bool IsTable(const Node& node) {
    return node.Keyword() == ZOTParser::kKeywordTable;
}

// The innermost of the elements around `node` that `is`, or null.
template <class Parents>
const Node* Around(const Node* node, const Parents& parents, bool (*is)(const Node&)) {
    do {
        node = parents.at(node);
    } while (node != nullptr && !is(*node));
    return node;
}

}  // namespace

ElementIndex::ElementIndex(const ZOTParser::HtmlDocTree& tree, const Choice& choice) {
    Survey survey(choice.root);
    Parents parents;
    WalkNodes(tree.Entries(), nullptr, [&](const Node& node, const Node* parent) {
        parents[&node] = parent;
        if (node.Keyword() != ZOTParser::kKeywordText || node.SourceLength() == 0) return;
        const auto cell = survey.cells.find(node.SourcePosition());
        if (cell != survey.cells.end()) PlaceCell(cell->second, &node, parents, survey.holders);
    });
    tables_ = std::move(survey.tables);
}

// The cell, its table, the cell that holds the table, and on, until one that is known.
void ElementIndex::PlaceCell(QuillNS::KCell* cell, const Node* text, const Parents& parents,
                             const Holders& holders) {
    const Node* node = text;
    while (cell != nullptr && elements_.count(cell) == 0) {
        node = Around(node, parents, IsCell);
        if (node == nullptr) return;
        elements_[cell] = node;
        node = Around(node, parents, IsTable);
        if (node == nullptr) return;
        elements_[cell->ParentTable()] = node;
        const auto holder = holders.find(cell->ParentTable());
        cell = holder == holders.end() ? nullptr : holder->second;
    }
}

const Node* ElementIndex::Find(const void* object) const {
    const auto found = elements_.find(object);
    return found == elements_.end() ? nullptr : found->second;
}

}  // namespace QuillTool

#pragma once

#include <unordered_map>
#include <vector>
#include <zot/parser.h>

#include "choice.h"
#include "node_walk.h"

namespace QuillTool {

// The tables of a content tree with the elements of the page that they and their cells are. A content tree
// does not know its elements, but where its texts stand: the innermost cell element around a text is the cell
// that the text is in, and so on outwards.
class ElementIndex {
public:
    // `choice` was made from `tree`; both outlive the index.
    ElementIndex(const ZOTParser::HtmlDocTree& tree, const Choice& choice);

    // All tables in the order of the page, the root first.
    const std::vector<ZOT::SmartPtr<QuillNS::KTable>>& Tables() const { return tables_; }

    // Null for the root and its cells, and where there is no text.
    const Node* ElementOf(const QuillNS::KTable& table) const { return Find(&table); }
    const Node* ElementOf(const QuillNS::KCell& cell) const { return Find(&cell); }

private:
    using Parents = std::unordered_map<const Node*, const Node*>;
    using Holders = std::unordered_map<const QuillNS::KTable*, QuillNS::KCell*>;

    void PlaceCell(QuillNS::KCell* cell, const Node* text, const Parents& parents, const Holders& holders);
    const Node* Find(const void* object) const;

    std::vector<ZOT::SmartPtr<QuillNS::KTable>> tables_;
    std::unordered_map<const void*, const Node*> elements_;
};

}  // namespace QuillTool

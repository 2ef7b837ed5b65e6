#pragma once

#include <span>

#include <quill/cell.h>
#include <quill/table.h>
#include <zot/fast_vector.h>
#include <zot/parser.h>
#include <zot/smart_ptr.h>

#include "cell_text.h"
#include "grid_layout.h"

namespace QuillNS {

// Reads the parser's tree of one page into cells. Its room for texts and its budget for grids serve the whole
// page.
class NodeWalker {
public:
    explicit NodeWalker(unsigned int sourceSize) : gridBudget_(sourceSize) {}

    // Fills `cell` with the nodes [first, last) and what is below them. `inAnchor`: they lie inside an
    // anchor. `preformatted`: texts among them are taken as they stand. The depth of the parser's tree bounds
    // the recursion.
    void ParseNodes(ZOTParser::HtmlDocTree::ChildIterator first, ZOTParser::HtmlDocTree::ChildIterator last,
                    ZOT::SmartPtr<KCell>& cell, bool inAnchor, bool preformatted);

    // Whether memory ran out on the way; the cells are then incomplete.
    bool OutOfMemory() const { return outOfMemory_ || text_.OutOfMemory(); }

private:
    using Node = ZOTParser::HtmlDocTree::HtmlTreeNode;

    void ParseNode(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor, bool preformatted);
    void ParseChildren(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor, bool preformatted);
    void ParseText(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor, bool preformatted);
    void ParseLink(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor, bool preformatted);
    void ParseElement(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor);
    void ParseTable(const Node& node, ZOT::SmartPtr<KCell>& cell);
    void ParseOneCell(const Node& node, KCell& cell);
    void ParseGrid(ZOTParser::HtmlDocTree::ChildRange children, LayoutGrid& grid, KCell& cell);
    void FillGrid(const LayoutGrid& grid, KTable& table);
    std::span<char16_t> Decode(const Node& text);
    ZOT::SmartPtr<KTable> AddTable(KCell& cell, unsigned int cols, unsigned int rows);
    ZOT::SmartPtr<KCell> ParseCell(const Node& node, KTable& table, unsigned int col, unsigned int row);

    CellText text_;
    GridBudget gridBudget_;
    LayoutGrid gridRoom_;
    ZOT::FastVector<char16_t> raw_;  // room for the text node at hand
    bool outOfMemory_ = false;
};

}  // namespace QuillNS

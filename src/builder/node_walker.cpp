#include "node_walker.h"

#include <algorithm>
#include <array>

namespace QuillNS {
namespace {

// What an element that is no table, link, text or preformatted block does to the text around it.
struct Handling {
    bool paragraphBefore = false;
    bool breakBefore = false;
    bool skipped = false;  // nothing below it is read
    bool breakAfter = false;
};

constexpr unsigned int kKeywords = 256;

constexpr std::size_t kLeastTextRoom = 2048;  // units

constexpr std::array<Handling, kKeywords> MakeHandlings() {
    std::array<Handling, kKeywords> handlings{};
    for (const unsigned int keyword : {22u, 5u, 49u, 11u, 17u}) handlings[keyword].paragraphBefore = true;
    for (const unsigned int keyword : {12u, 18u, 40u, 42u, 44u, 46u}) {
        handlings[keyword].breakBefore = true;
        handlings[keyword].breakAfter = true;
    }
    handlings[ZOTParser::kKeywordRule].breakBefore = true;
    handlings[ZOTParser::kKeywordLegend].breakAfter = true;
    for (const unsigned int keyword : {0u, 4u, 10u, 14u, 16u, 20u, 26u, 32u})
        handlings[keyword].skipped = true;
    return handlings;
}

constexpr std::array<Handling, kKeywords> kHandlings = MakeHandlings();

bool EndsInText(const KCell& cell) {
    return !cell.IsEmpty() && (*cell.Back())->IsText();
}

}  // namespace

void NodeWalker::ParseNodes(ZOTParser::HtmlDocTree::ChildIterator first,
                            ZOTParser::HtmlDocTree::ChildIterator last, ZOT::SmartPtr<KCell>& cell,
                            bool inAnchor, bool preformatted) {
    for (auto node = first; node != last; ++node) ParseNode(*node.operator->(), cell, inAnchor, preformatted);
}

// The first case that fits decides: a link that is a text or a break counts as no link.
void NodeWalker::ParseNode(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor, bool preformatted) {
    switch (node.Keyword()) {
        case ZOTParser::kKeywordPreformatted: return ParseChildren(node, cell, inAnchor, true);
        case ZOTParser::kKeywordText: return ParseText(node, cell, inAnchor, preformatted);
        case ZOTParser::kKeywordBreak: return BreakLine(cell);
        default: break;
    }
    if (node.IsLink()) return ParseLink(node, cell, inAnchor, preformatted);
    if (node.Keyword() == ZOTParser::kKeywordTable) return ParseTable(node, cell);
    ParseElement(node, cell, inAnchor);
}

void NodeWalker::ParseChildren(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor,
                               bool preformatted) {
    const auto children = node.Children();
    ParseNodes(children.Begin(), children.End(), cell, inAnchor, preformatted);
}

void NodeWalker::ParseText(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor, bool preformatted) {
    if (!preformatted && node.IsSpace()) return SeparateWords(cell);
    const std::span<char16_t> raw = Decode(node);
    if (raw.empty()) return;
    if (preformatted) {
        text_.AddPreformattedText(raw, node.SourcePosition(), node.SourceLength(), cell, inAnchor);
    } else {
        text_.AddText(raw, node.SourcePosition(), node.SourceLength(), cell, inAnchor);
    }
}

// Empty when memory runs out, too.
std::span<char16_t> NodeWalker::Decode(const Node& text) {
    const std::size_t room = text.DecodeRoom();
    if (room > raw_.Capacity()) {
        raw_.Free();
        if (!raw_.Reserve(std::max(kLeastTextRoom, room))) {
            outOfMemory_ = true;
            return {};
        }
    }
    return {raw_.Begin(), text.Decode(raw_.Begin())};
}

// An anchor inside an anchor is the same link. A link of another kind ends the anchor that it stands in.
void NodeWalker::ParseLink(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor, bool preformatted) {
    const bool anchor = node.Keyword() == ZOTParser::kKeywordAnchor;
    if (!inAnchor || !anchor) cell->AddLinks(1);
    ParseChildren(node, cell, anchor, preformatted);
}

void NodeWalker::ParseElement(const Node& node, ZOT::SmartPtr<KCell>& cell, bool inAnchor) {
    const Handling handling = kHandlings[node.Keyword()];
    if (handling.paragraphBefore) cell->MakeParagraph();
    if (handling.breakBefore) BreakLine(cell);
    if (handling.skipped || !node.HasChildren()) return;
    ParseChildren(node, cell, inAnchor, false);
    if (handling.breakAfter) BreakLine(cell);
}

// What stands in the table outside its cells (a caption, text between rows) is not read.
void NodeWalker::ParseTable(const Node& node, ZOT::SmartPtr<KCell>& cell) {
    if (const Node* const only = OnlyCell(node.Children())) return ParseOneCell(*only, *cell);
    // The room of a grid goes from table to table. A nested table finds it in use and makes its own.
    LayoutGrid grid;
    grid.Swap(gridRoom_);
    ParseGrid(node.Children(), grid, *cell);
    grid.Swap(gridRoom_);
}

void NodeWalker::ParseGrid(ZOTParser::HtmlDocTree::ChildRange children, LayoutGrid& grid, KCell& cell) {
    unsigned int cols = 0;
    unsigned int rows = 0;
    if (!LayoutTable(children.Begin(), children.End(), cols, rows, grid, gridBudget_)) {
        outOfMemory_ |= rows != 0;
        return;
    }
    if (cols == 0) return;
    const ZOT::SmartPtr<KTable> table = AddTable(cell, cols, rows);
    if (table) FillGrid(grid, *table);
}

void NodeWalker::ParseOneCell(const Node& node, KCell& cell) {
    gridBudget_.Spend(1);
    const ZOT::SmartPtr<KTable> table = AddTable(cell, 1, 1);
    if (!table || !node.HasChildren()) return;
    ZOT::SmartPtr<KCell> only = ParseCell(node, *table, 0, 0);
    if (!only || only->IsEmpty()) return;
    BreakLine(only);  // behind its row
    BreakLine(only);  // behind the table
}

// Null when memory runs out.
ZOT::SmartPtr<KTable> NodeWalker::AddTable(KCell& cell, unsigned int cols, unsigned int rows) {
    KTable* const parent = cell.ParentTable();
    const unsigned int level = parent == nullptr ? 0 : parent->Level() + 1;
    const ZOT::SmartPtr<KTable> table(new KTable(parent, cols, rows, level), true);
    const ZOT::SmartPtr<KCellItem> item = cell.AddCellItem();
    if (!table || !item) {
        outOfMemory_ = true;
        return {};
    }
    item->Table(table);
    cell.AddTables(1);
    return table;
}

// Every row ends its line; a row that fills no cell does so behind the last cell of an earlier row.
void NodeWalker::FillGrid(const LayoutGrid& grid, KTable& table) {
    ZOT::SmartPtr<KCell> lastFilled;
    for (unsigned int row = 0; row != grid.Rows(); ++row) {
        const LayoutRow slots = grid[row];
        for (unsigned int col = 0; col != slots.Size(); ++col) {
            const auto node = slots[col].cell;
            if (node == ZOTParser::HtmlDocTree::ChildIterator() || !node->HasChildren()) continue;
            const ZOT::SmartPtr<KCell> cell = ParseCell(*node.operator->(), table, col, row);
            if (cell && !cell->IsEmpty()) lastFilled = cell;
        }
        if (lastFilled) BreakLine(lastFilled);
    }
    if (lastFilled) BreakLine(lastFilled);
}

// Null when memory runs out.
ZOT::SmartPtr<KCell> NodeWalker::ParseCell(const Node& node, KTable& table, unsigned int col,
                                           unsigned int row) {
    ZOT::SmartPtr<KCell> cell = table.CreateCell(col, row);
    if (!cell) {
        outOfMemory_ = true;
        return cell;
    }
    ParseChildren(node, cell, false, false);
    if (EndsInText(*cell)) (*cell->Back())->AppendText(u"\n", 0, 0);
    return cell;
}

}  // namespace QuillNS

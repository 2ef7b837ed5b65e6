#include "text_structure.h"

#include "open_elements.h"
#include "tree_walk.h"

// A data table is one whose cells hold inline content alone, and less of it in links than outside them. What
// lays out a page has blocks in its cells; what leads through a site has links. Its parts get these roles:
//
//   <table>          a block
//     <tr>           a line: a break behind it
//       <td> <td>    inline, with a blank between two of them

namespace ZOTParser {
namespace {

// Whether the role puts its text on lines of its own, so that a cell with such content is no cell of data.
bool IsBlock(unsigned int keyword) noexcept {
    switch (keyword) {
        case kKeywordInline:
        case kKeywordAnchor:
        case kKeywordText:
        case kKeywordBreak:
        case kKeywordSkipped:
        case kKeywordClutter: return false;
        default: return true;
    }
}

bool IsLeftOut(const NodeStore& nodes, NodeIndex node) noexcept {
    const unsigned int keyword = nodes[node].Keyword();
    return keyword == kKeywordSkipped || keyword == kKeywordClutter;
}

bool IsTablePart(Tag tag) noexcept {
    return tag == Tag::kTr || tag == Tag::kTd || tag == Tag::kTh || tag == Tag::kTbody ||
           tag == Tag::kThead || tag == Tag::kTfoot;
}

class DataTables {
public:
    explicit DataTables(NodeStore& nodes) noexcept : nodes_(nodes) {}

    // In document order; `Leave` behind the node's children.
    void Enter(NodeIndex node) noexcept {
        const unsigned int keyword = nodes_[node].Keyword();
        if (keyword == kKeywordText) {
            CountText(node);
            return;
        }
        links_ += nodes_[node].IsLink();
        if (!IsBlock(keyword)) return;
        if (open_ != 0) CountPart(nodes_.TagOf(node));
        if (open_ != 0 && !IsTablePart(nodes_.TagOf(node))) tables_[open_ - 1].holdsBlocks = true;
        if (IsTable(node)) tables_[open_++] = Table{};
    }

    void Leave(NodeIndex node) noexcept {
        links_ -= nodes_[node].IsLink();
        if (open_ == 0 || !IsTable(node)) return;
        const Table& table = tables_[--open_];
        if (IsData(table)) MakeLines(node);
    }

private:
    struct Table {
        bool holdsBlocks = false;
        unsigned int rows = 0;
        unsigned int cells = 0;
        unsigned int bytes = 0;  // of text
        unsigned int linkedBytes = 0;
    };

    static bool IsData(const Table& table) noexcept {
        return !table.holdsBlocks && table.rows >= 2 && table.cells >= 2 * table.rows &&
               2 * table.linkedBytes < table.bytes;
    }

    void CountPart(Tag tag) noexcept {
        tables_[open_ - 1].rows += tag == Tag::kTr;
        tables_[open_ - 1].cells += tag == Tag::kTd || tag == Tag::kTh;
    }

    bool IsTable(NodeIndex node) const noexcept {
        return nodes_.TagOf(node) == Tag::kTable && nodes_[node].Keyword() == kKeywordTable;
    }

    void CountText(NodeIndex text) noexcept {
        if (open_ == 0 || nodes_[text].IsSpace()) return;
        tables_[open_ - 1].bytes += nodes_[text].SourceLength();
        if (links_ != 0) tables_[open_ - 1].linkedBytes += nodes_[text].SourceLength();
    }

    void MakeLines(NodeIndex table) noexcept {
        nodes_.ChangeRole(table, kKeywordBlock);
        for (NodeIndex child = nodes_.FirstChild(table); child != kNoNode;
             child = nodes_.NextSibling(child)) {
            if (!IsTablePart(nodes_.TagOf(child)) || IsLeftOut(nodes_, child)) continue;
            if (nodes_.TagOf(child) == Tag::kTr) {
                MakeLine(child);
                continue;
            }
            nodes_.ChangeRole(child, kKeywordInline);
            for (NodeIndex row = nodes_.FirstChild(child); row != kNoNode; row = nodes_.NextSibling(row)) {
                if (nodes_.TagOf(row) == Tag::kTr && !IsLeftOut(nodes_, row)) MakeLine(row);
            }
        }
    }

    // White space between the cells goes, so that none stands at the end of the line.
    void MakeLine(NodeIndex row) noexcept {
        nodes_.ChangeRole(row, kKeywordLegend);
        bool first = true;
        NodeIndex next = kNoNode;
        for (NodeIndex child = nodes_.FirstChild(row); child != kNoNode; child = next) {
            next = nodes_.NextSibling(child);
            if (nodes_[child].IsSpace()) {
                nodes_.Remove(child);
                continue;
            }
            if (!IsTablePart(nodes_.TagOf(child)) || IsLeftOut(nodes_, child)) continue;
            nodes_.ChangeRole(child, kKeywordInline);
            if (!first) nodes_.InsertBefore(child, nodes_.NewSpace());
            first = false;
        }
    }

    NodeStore& nodes_;
    unsigned int open_ = 0;    // tables around the current node
    unsigned int links_ = 0;   // links around it
    Table tables_[kMaxDepth];  // the depth of the tree bounds them
};

void MakePreformatted(NodeStore& nodes, NodeIndex element) noexcept {
    if (nodes[element].Keyword() == kKeywordInline) nodes.ChangeRole(element, kKeywordPreformatted);
}

// Removes the texts of white space alone that the element ends with: a paragraph behind it would take the
// line break of such a text away. Returns whether nothing is left. Calls itself once per level of nesting.
bool DropLastSpace(NodeStore& nodes, NodeIndex element) noexcept {
    NodeIndex before = kNoNode;
    for (NodeIndex node = nodes.LastChild(element); node != kNoNode; node = before) {
        before = nodes.PreviousSibling(node);
        const unsigned int keyword = nodes[node].Keyword();
        const bool isWithinLine = keyword == kKeywordPreformatted || keyword == kKeywordAnchor;
        if (nodes[node].IsSpace()) {
            nodes.Remove(node);
        } else if (!isWithinLine || !DropLastSpace(nodes, node)) {
            return false;
        }
    }
    return true;
}

void BreakAround(NodeStore& nodes, NodeIndex element) noexcept {
    if (nodes.FirstChild(element) == kNoNode) return;
    if (!DropLastSpace(nodes, element)) nodes.InsertBefore(nodes.FirstChild(element), nodes.NewBreak());
    nodes.Append(element, nodes.NewBreak());
}

}  // namespace

void KeepLines(NodeStore& nodes) noexcept {
    DataTables tables(nodes);
    unsigned int preformatted = 0;  // such elements around the current node
    WalkTree(
        nodes,
        [&](NodeIndex node) {
            if (IsLeftOut(nodes, node)) return false;
            tables.Enter(node);
            if (preformatted != 0) MakePreformatted(nodes, node);
            preformatted += nodes[node].Keyword() == kKeywordPreformatted;
            return true;
        },
        [&](NodeIndex node) {
            if (IsLeftOut(nodes, node)) return;
            if (nodes[node].Keyword() == kKeywordPreformatted && --preformatted == 0)
                BreakAround(nodes, node);
            tables.Leave(node);
        });
}

}  // namespace ZOTParser

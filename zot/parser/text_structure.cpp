#include "text_structure.h"

#include <algorithm>
#include <zot/text.h>

#include "table_roles.h"
#include "tree_walk.h"

// A data table is one whose cells hold inline content alone, and less of it in links than outside them. What
// lays out a page has blocks in its cells; what leads through a site has links. Its parts get these roles:
//
//   <table>          a block
//     <tr>           a line: a break behind it
//       <td> <td>    inline, with a blank between two of them

namespace ZOTParser {
namespace {

bool IsTablePart(Tag tag) noexcept {
    return tag == Tag::kTr || tag == Tag::kTd || tag == Tag::kTh || tag == Tag::kTbody ||
           tag == Tag::kThead || tag == Tag::kTfoot;
}

// White space between the cells goes, so that none stands at the end of the line.
void MakeLine(NodeStore& nodes, NodeIndex row) noexcept {
    nodes.ChangeRole(row, kKeywordLegend);
    bool first = true;
    NodeIndex next = kNoNode;
    for (NodeIndex child = nodes.FirstChild(row); child != kNoNode; child = next) {
        next = nodes.NextSibling(child);
        if (nodes[child].IsSpace()) {
            nodes.Remove(child);
            continue;
        }
        if (!IsTablePart(nodes.TagOf(child)) || nodes.IsLeftOut(child)) continue;
        nodes.ChangeRole(child, kKeywordInline);
        if (!first) nodes.InsertSpace(child);
        first = false;
    }
}

// Whether a paragraph behind the text would trim all of it away. Most texts begin with a letter and are not
// looked at any further.
bool IsWhiteSpaceAlone(const NodeStore& nodes, NodeIndex text) noexcept {
    if (nodes[text].IsSpace()) return true;
    const auto first = static_cast<unsigned char>(nodes.Source()[nodes[text].SourcePosition()]);
    if (first > ' ' && first < 0x80 && first != '&') return false;
    ZOT::FastVector<char16_t> units;
    if (!units.Reserve(nodes.DecodeRoom(nodes[text]))) return false;
    const char16_t* const end = nodes.Decode(nodes[text], units.Begin());
    return std::all_of(static_cast<const char16_t*>(units.Begin()), end, ZOT::IsWhiteSpace);
}

// A paragraph trims the text before it, so that one of white space alone would take its line break away with
// it: removes those that stand between a paragraph and the last text before it. `followed` is whether a
// paragraph may follow the element; returns whether one follows what stands before the element's content. A
// table is gone through like any other element, as it may become a block in the same text.
// Calls itself once per level of nesting.
bool DropSpaceBeforeParagraphs(NodeStore& nodes, NodeIndex element, bool followed) noexcept {
    NodeIndex before = kNoNode;
    for (NodeIndex node = nodes.LastChild(element); node != kNoNode; node = before) {
        before = nodes.PreviousSibling(node);
        const unsigned int keyword = nodes[node].Keyword();
        if (keyword == kKeywordText) {
            followed = followed && IsWhiteSpaceAlone(nodes, node);
            if (followed) nodes.Remove(node);
        } else if (!nodes.IsLeftOut(node)) {
            followed = DropSpaceBeforeParagraphs(nodes, node, followed) || TableRoles::EndsItsLine(keyword);
        }
    }
    return followed;
}

// Whether an element of that role goes on with the line that it stands in.
bool IsWithinLine(unsigned int keyword) noexcept {
    return keyword == kKeywordInline || keyword == kKeywordAnchor || keyword == kKeywordPreformatted;
}

// Whether there is text before the node on its line. Goes back from node to node, and no further than to the
// last one that ends a line, so that all calls together take a step or two for each node of the page.
bool HasTextBefore(const NodeStore& nodes, NodeIndex node) noexcept {
    for (;;) {
        const NodeIndex previous = nodes.PreviousSibling(node);
        if (previous == kNoNode) {
            node = nodes.Parent(node);
            if (node <= kDocumentNode || !IsWithinLine(nodes[node].Keyword())) return false;
            continue;
        }
        node = previous;
        while (IsWithinLine(nodes[node].Keyword()) && nodes.LastChild(node) != kNoNode) {
            node = nodes.LastChild(node);
        }
        const unsigned int keyword = nodes[node].Keyword();
        if (keyword == kKeywordText && !nodes[node].IsSpace()) return true;
        if (keyword != kKeywordText && keyword != kKeywordSkipped && !IsWithinLine(keyword)) return false;
    }
}

}  // namespace

void KeepPreformatted(NodeStore& nodes, NodeIndex element) noexcept {
    DropSpaceBeforeParagraphs(nodes, element, true);
    WalkTree(
        nodes, element,
        [&](NodeIndex node) {
            if (nodes.IsLeftOut(node)) return false;
            if (nodes[node].Keyword() == kKeywordInline) nodes.ChangeRole(node, kKeywordPreformatted);
            return true;
        },
        [](NodeIndex) {});
    if (nodes.FirstChild(element) != kNoNode) nodes.InsertBreak(nodes.FirstChild(element));
    nodes.AppendBreak(element);
}

void MakeLines(NodeStore& nodes, NodeIndex table) noexcept {
    nodes.ChangeRole(table, kKeywordBlock);
    for (NodeIndex child = nodes.FirstChild(table); child != kNoNode; child = nodes.NextSibling(child)) {
        if (!IsTablePart(nodes.TagOf(child)) || nodes.IsLeftOut(child)) continue;
        if (nodes.TagOf(child) == Tag::kTr) {
            MakeLine(nodes, child);
            continue;
        }
        nodes.ChangeRole(child, kKeywordInline);
        for (NodeIndex row = nodes.FirstChild(child); row != kNoNode; row = nodes.NextSibling(row)) {
            if (nodes.TagOf(row) == Tag::kTr && !nodes.IsLeftOut(row)) MakeLine(nodes, row);
        }
    }
}

void EndLineBefore(NodeStore& nodes, NodeIndex element) noexcept {
    if (HasTextBefore(nodes, element)) nodes.InsertBreak(element);
}

}  // namespace ZOTParser

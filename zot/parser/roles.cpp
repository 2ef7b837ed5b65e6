#include "roles.h"

#include "block_reading.h"
#include "line_ends.h"
#include "reading_choice.h"
#include "text_structure.h"

namespace ZOTParser {
namespace {

// The tag by which the table knows an element: foreign elements have none, but for the svg element itself.
Tag TagForRole(const NodeStore& nodes, NodeIndex node) noexcept {
    const Tag tag = nodes.TagOf(node);
    const Namespace ns = nodes.NamespaceOf(node);
    return ns == Namespace::kHtml || (ns == Namespace::kSvg && tag == Tag::kSvg) ? tag : Tag::kUnknown;
}

bool EndsItsLine(unsigned int keyword) noexcept {
    return keyword == kKeywordParagraph || keyword == kKeywordHeading || keyword == kKeywordQuote ||
           keyword == kKeywordList;
}

// What there is on a page, so that no pass looks for what there is not.
struct Found {
    bool blocks = false;
    bool tables = false;
    bool preformatted = false;
};

Found AssignTableRoles(NodeStore& nodes, const HtmlKeywordTable& keywords) noexcept {
    Found found;
    const NodeIndex end = nodes.End();
    for (NodeIndex node = kFirstNode; node < end; ++node) {
        if (nodes.TypeOf(node) != NodeType::kElement) continue;
        const unsigned int word = keywords.Word(static_cast<unsigned int>(TagForRole(nodes, node)));
        const unsigned int keyword = word & 0xFF;
        nodes.SetRole(node, keyword, (word & kLinkFlag) != 0 && nodes.HasAttributeBit(node, kHasHref));
        if (EndsItsLine(keyword) && nodes.FirstChild(node) != kNoNode) nodes.Append(node, nodes.NewBreak());
        found.blocks |= keyword == kKeywordBlock;
        found.tables |= keyword == kKeywordTable;
        found.preformatted |= keyword == kKeywordPreformatted;
    }
    return found;
}

}  // namespace

void AssignRoles(NodeStore& nodes, const HtmlKeywordTable& keywords) noexcept {
    const Found found = AssignTableRoles(nodes, keywords);
    const bool chooses = keywords.Type() == HtmlKeywordTable::kDefaultReading;
    if (keywords.Type() == HtmlKeywordTable::kTableReading || (chooses && !found.blocks)) return;
    if (nodes.Failed()) return;
    const PageOutline page(nodes);
    if (chooses && IsLaidOutWithTables(page)) return;
    ReadBlocks(nodes, page);
    if (!nodes.Failed() && (found.tables || found.preformatted)) KeepLines(nodes);
    if (!nodes.Failed()) EndLines(nodes);
}

}  // namespace ZOTParser

#pragma once

#include "node_store.h"

namespace ZOTParser {

// The roles of the table reading, in which the tag alone says what an element plays.
class TableRoles {
public:
    explicit TableRoles(const HtmlKeywordTable& keywords) noexcept : keywords_(keywords) {}

    // Gives an element that has none yet its role, and returns it.
    unsigned int Give(NodeStore& nodes, NodeIndex element) const noexcept {
        const unsigned int word = keywords_.Word(static_cast<unsigned int>(TagForRole(nodes, element)));
        const unsigned int keyword = word & 0xFF;
        nodes.SetRole(element, keyword, (word & kLinkFlag) != 0 && nodes.HasAttributeBit(element, kHasHref));
        return keyword;
    }

    // Whether an element of that role does not share its last line with what follows.
    static bool EndsItsLine(unsigned int keyword) noexcept {
        return keyword == kKeywordParagraph || keyword == kKeywordHeading || keyword == kKeywordQuote ||
               keyword == kKeywordList;
    }

    // Ends the line of such an element, which has its role, when it has content.
    static void EndLine(NodeStore& nodes, NodeIndex element) noexcept {
        if (EndsItsLine(nodes[element].Keyword()) && nodes.FirstChild(element) != kNoNode)
            nodes.AppendBreak(element);
    }

    // Whether there is an element of that role.
    bool Has(const NodeStore& nodes, unsigned int keyword) const noexcept {
        for (unsigned int tag = 0; tag < kTagCount; ++tag) {
            if ((keywords_.Word(tag) & 0xFF) == keyword && nodes.Has(static_cast<Tag>(tag))) return true;
        }
        return false;
    }

private:
    // The tag by which the table knows an element: foreign elements have none, but for the svg element
    // itself.
    static Tag TagForRole(const NodeStore& nodes, NodeIndex node) noexcept {
        const Tag tag = nodes.TagOf(node);
        const Namespace ns = nodes.NamespaceOf(node);
        return ns == Namespace::kHtml || (ns == Namespace::kSvg && tag == Tag::kSvg) ? tag : Tag::kUnknown;
    }

    const HtmlKeywordTable& keywords_;
};

}  // namespace ZOTParser

#include "block_reading.h"

#include <cstdint>

#include "tree_walk.h"

namespace ZOTParser {
namespace {

// Of a hundred bytes that the page shows, those that its main element must hold to be read alone: an empty
// one waits for a script, or is a landing place for the keyboard.
constexpr std::uint64_t kLeastMainShare = 30;

// Bytes locked away for each byte shown, from which on the page waits for a script.
constexpr std::uint64_t kLockedPage = 4;

// A page has no prose when it has less of it than either says.
constexpr unsigned int kLeastProse = 350;       // bytes: some sixty words
constexpr std::uint64_t kLeastProseShare = 10;  // of a hundred bytes shown

// A page of links alone has no more outside them, of a hundred bytes shown. It stays one: all of it is
// written.
constexpr std::uint64_t kMostBesideLinks = 2;

// Bytes from which on an anchor's own text is a teaser, some fifteen words. Names of pages are shorter.
constexpr unsigned int kTeaser = 90;

bool IsMainReadAlone(const PageOutline& page) noexcept {
    return page.main != kNoNode && std::uint64_t{page.mainShown} * 100 >= page.shown * kLeastMainShare;
}

bool IsLocked(const PageOutline& page) noexcept {
    return page.locked > page.shown * kLockedPage;
}

bool HasProse(const PageOutline& page) noexcept {
    return page.prose >= kLeastProse && std::uint64_t{page.prose} * 100 >= page.shown * kLeastProseShare;
}

bool IsLinksAlone(const PageOutline& page) noexcept {
    return std::uint64_t{page.shown - page.linked} * 100 <= page.shown * kMostBesideLinks;
}

void ApplyMarks(NodeStore& nodes, const PageOutline& page) noexcept {
    const bool hasProse = HasProse(page);
    for (const PageOutline::Mark& mark : page.marks) {
        switch (mark.standing) {
            case PageOutline::Standing::kHidden: nodes.LeaveOut(mark.element, kKeywordSkipped); break;
            case PageOutline::Standing::kClutter: nodes.LeaveOut(mark.element, kKeywordClutter); break;
            case PageOutline::Standing::kForm:
                if (hasProse) nodes.LeaveOut(mark.element, kKeywordClutter);
                break;
        }
    }
}

// Everything beside the element, and beside what it stands in, is clutter.
void ReadAlone(NodeStore& nodes, NodeIndex element) noexcept {
    for (NodeIndex node = element; nodes.TagOf(node) != Tag::kBody && nodes.Parent(node) != kDocumentNode;
         node = nodes.Parent(node)) {
        for (NodeIndex other = nodes.FirstChild(nodes.Parent(node)); other != kNoNode;
             other = nodes.NextSibling(other)) {
            const bool isRead =
                nodes.TypeOf(other) == NodeType::kElement && nodes[other].Keyword() != kKeywordSkipped;
            if (other != node && isRead) nodes.LeaveOut(other, kKeywordClutter);
        }
    }
}

bool IsLayoutBlock(Tag tag) noexcept {
    switch (tag) {
        case Tag::kDiv:
        case Tag::kSection:
        case Tag::kArticle:
        case Tag::kMain:
        case Tag::kHeader:
        case Tag::kFooter:
        case Tag::kNav:
        case Tag::kAside: return true;
        default: return false;
    }
}

// Gives the blocks their tables, and takes the links from what is no link.
class BlockWalk {
public:
    BlockWalk(NodeStore& nodes, bool opensNoscript, bool cardsAreContent) noexcept
        : nodes_(nodes), opensNoscript_(opensNoscript), cardsAreContent_(cardsAreContent) {}

    bool Enter(NodeIndex node) noexcept {
        if (nodes_.TypeOf(node) == NodeType::kText) {
            if (card_ != kNoNode && !nodes_.IsSpace(nodes_[node])) cardText_ += nodes_[node].SourceLength();
            return false;
        }
        const Tag tag = nodes_.TagOf(node);
        unsigned int keyword = nodes_[node].Keyword();
        if (opensNoscript_ && tag == Tag::kNoscript && keyword == kKeywordSkipped) keyword = kKeywordBlock;
        if (keyword == kKeywordBlock && IsLayoutBlock(tag)) keyword = kKeywordTable;
        nodes_.ChangeRole(node, keyword);
        if (keyword == kKeywordSkipped || keyword == kKeywordClutter) return false;
        if (cardsAreContent_) LookForCard(node, keyword);
        return true;
    }

    void Leave(NodeIndex node) noexcept {
        if (nodes_.TypeOf(node) != NodeType::kElement) return;
        if (node == heading_) heading_ = kNoNode;
        if (node == card_) LeaveCard();
        if (nodes_[node].Keyword() == kKeywordTable && nodes_.TagOf(node) != Tag::kTable) WrapChildren(node);
    }

private:
    void LookForCard(NodeIndex node, unsigned int keyword) noexcept {
        if (keyword == kKeywordHeading && heading_ == kNoNode) heading_ = node;
        if (card_ != kNoNode) {
            cardHasBlocks_ |=
                keyword != kKeywordInline && keyword != kKeywordAnchor && keyword != kKeywordBreak;
        } else if (nodes_[node].IsLink()) {
            card_ = node;
            cardHasBlocks_ = false;
            cardText_ = 0;
        }
    }

    void LeaveCard() noexcept {
        if (heading_ != kNoNode || cardHasBlocks_ || cardText_ >= kTeaser) nodes_.ClearLink(card_);
        card_ = kNoNode;
    }

    // The element's children move into a cell in a row of its own.
    void WrapChildren(NodeIndex element) noexcept {
        const NodeIndex row = nodes_.NewElement(Tag::kTr, Namespace::kHtml, 0, 0, 0);
        const NodeIndex cell = nodes_.NewElement(Tag::kTd, Namespace::kHtml, 0, 0, 0);
        if (nodes_.Failed()) return;
        nodes_.SetRole(row, kKeywordRow, false);
        nodes_.SetRole(cell, kKeywordCell, false);
        nodes_.MoveChildren(element, cell);
        nodes_.Append(row, cell);
        nodes_.Append(element, row);
    }

    NodeStore& nodes_;
    const bool opensNoscript_;
    const bool cardsAreContent_;
    NodeIndex heading_ = kNoNode;
    NodeIndex card_ = kNoNode;  // the outermost open link
    bool cardHasBlocks_ = false;
    unsigned int cardText_ = 0;
};

}  // namespace

void ReadBlocks(NodeStore& nodes, const PageOutline& page) noexcept {
    const bool locked = IsLocked(page);
    if (!locked) ApplyMarks(nodes, page);
    if (!locked && IsMainReadAlone(page)) ReadAlone(nodes, page.main);
    BlockWalk walk(nodes, locked, !HasProse(page) && !IsLinksAlone(page));
    WalkTree(
        nodes, [&](NodeIndex node) { return walk.Enter(node); }, [&](NodeIndex node) { walk.Leave(node); });
}

}  // namespace ZOTParser

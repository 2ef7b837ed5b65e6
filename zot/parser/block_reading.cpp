#include "block_reading.h"

#include <algorithm>
#include <cstdint>

#include "clutter_names.h"
#include "main_text.h"
#include "text_structure.h"
#include "tree_walk.h"

namespace ZOTParser {
namespace {

// Of a hundred bytes that the page shows, those that its main element must hold to be read alone: an empty
// one waits for a script, or is a landing place for the keyboard.
constexpr std::uint64_t kLeastMainShare = 30;

// Bytes locked away for each byte shown, from which on the page waits for a script.
constexpr std::uint64_t kLockedPage = 4;

// A page has no prose when it has less of it than either says, or less of it in one place: that of the
// teasers of many cards is none.
constexpr unsigned int kLeastProse = 350;       // bytes: some sixty words
constexpr std::uint64_t kLeastProseShare = 10;  // of a hundred bytes shown
constexpr unsigned int kLeastStory = 200;       // bytes
constexpr std::uint64_t kLeastStoryShare = 3;   // of a hundred bytes shown

// A main element holds a list of cards, posts or rows, when of a hundred bytes that the page shows less are
// prose, and less prose stands in one place.
constexpr std::uint64_t kListProseShare = 50;
constexpr std::uint64_t kListStoryShare = 15;

// A page of links alone has no more outside them, of a hundred bytes shown. It stays one: all of it is
// written.
constexpr std::uint64_t kMostBesideLinks = 2;

// What stands in the story and belongs to it: one byte in so many is prose, and no more than one in so many
// stands in links.
constexpr std::uint64_t kStoryProse = 2;
constexpr std::uint64_t kStoryLinks = 3;
constexpr unsigned int kCodeWithin = 5;  // blocks, from that which holds code to the code

// A form with less text than this, some hundred and fifty words, and of a hundred bytes shown, is there to
// search, to log in or to comment.
constexpr unsigned int kFilledInForm = 1000;  // bytes
constexpr std::uint64_t kFilledInFormShare = 40;

// A block that its author names as clutter is believed as long as it is no more than a part of the page: of a
// hundred bytes shown, and of a hundred bytes of prose.
constexpr std::uint64_t kMostNamedShare = 80;
constexpr std::uint64_t kMostNamedProse = 80;
// Comments with more of the prose are what there is to read.
constexpr std::uint64_t kMostCommentProse = 60;

// Blocks from one that is looked at to one whose element the memory is asked for.
constexpr std::size_t kBlocksAhead = 8;

// What is decided about a page before its blocks are looked at one by one.
struct PageKind {
    bool isLocked;
    bool isMainAlone;
    bool hasProse;
    bool isLinksAlone;
    bool isMainList;

    explicit PageKind(const PageOutline& page) noexcept {
        const TextBytes shown = page.Shown();
        const auto isAtLeast = [&](unsigned int part, std::uint64_t hundredth) {
            return std::uint64_t{part} * 100 >= shown.all * hundredth;
        };
        isLocked = page.locked > shown.all * kLockedPage;
        const unsigned int inMain = page.main != 0 ? page.blocks[page.main].bytes.Shown() : 0;
        isMainAlone = inMain != 0 && isAtLeast(inMain, kLeastMainShare);
        const unsigned int story = page.blocks[page.story].ownProse;
        hasProse = shown.prose >= kLeastProse && isAtLeast(shown.prose, kLeastProseShare) &&
                   story >= kLeastStory && isAtLeast(story, kLeastStoryShare);
        isLinksAlone = isAtLeast(shown.linked, 100 - kMostBesideLinks);
        isMainList = isMainAlone && !isLinksAlone && !isAtLeast(shown.prose, kListProseShare) &&
                     !isAtLeast(story, kListStoryShare);
    }
};

class BlockReading {
public:
    BlockReading(NodeStore& nodes, const PageOutline& page) noexcept
        : nodes_(nodes), page_(page), kind_(page), shown_(page.Shown()), read_(ReadBytes()) {}

    bool Read() noexcept {
        if (kind_.isLocked) {
            Unlock();
        } else {
            LeaveOut();
            const unsigned int root = kind_.isMainAlone ? page_.main : 0;
            if (kind_.hasProse) failed_ |= !LeaveOutAfterMainText(nodes_, page_, root);
            if (kind_.isMainAlone) ReadAlone(page_.blocks[page_.main].element);
        }
        ReadEachBlock();
        if (kind_.isMainList) ClearLinks(page_.blocks[page_.main].element);
        if (!kind_.hasProse && !kind_.isLinksAlone) {
            for (const NodeIndex card : page_.cards) nodes_.ClearLink(card);
        }
        for (const NodeIndex element : beside_) EndLineBefore(nodes_, element);
        return !failed_ && !nodes_.Failed();
    }

private:
    unsigned int ReadBytes() const noexcept {
        return kind_.isMainAlone ? page_.blocks[page_.main].bytes.Shown() : shown_.all;
    }

    // For a walk over all blocks.
    void ReadAhead(unsigned int index) const noexcept {
        const std::size_t ahead = std::size_t{index} + kBlocksAhead;
        if (ahead < page_.blocks.Size()) nodes_.ReadAhead(page_.blocks[ahead].element);
    }

    void Unlock() noexcept {
        for (unsigned int index = 1; index < page_.blocks.Size(); ++index) {
            const NodeIndex element = page_.blocks[index].element;
            if (nodes_[element].Keyword() == kKeywordSkipped) nodes_.ChangeRole(element, kKeywordBlock);
        }
    }

    // Every decision about a block that is no content is made here, from what the outline knows of the block
    // and of those around, before and behind it.
    void LeaveOut() noexcept {
        for (unsigned int index = 1; index < page_.blocks.Size(); ++index) {
            const Block& block = page_.blocks[index];
            ReadAhead(index);
            if (IsHidden(block)) {
                nodes_.LeaveOut(block.element, kKeywordSkipped);
            } else if (IsAround(block)) {
                nodes_.LeaveOut(block.element, kKeywordClutter);
            } else if (IsNamed(index) || (kind_.hasProse && IsForm(index))) {
                LeaveOutBesideText(index);
            } else {
                continue;
            }
            leftOutEnd_ = std::max(leftOutEnd_, block.end);
        }
        if (read_ == 0) return;
        for (const NodeIndex element : besideText_) nodes_.LeaveOut(element, kKeywordClutter);
    }

    // Notes a block that is clutter as long as there is anything else to read.
    void LeaveOutBesideText(unsigned int index) noexcept {
        const Block& block = page_.blocks[index];
        if (index >= leftOutEnd_ && (!kind_.isMainAlone || StandsInMain(index))) read_ -= block.bytes.Shown();
        failed_ |= !besideText_.Append(block.element);
    }

    bool StandsInMain(unsigned int index) const noexcept {
        return index > page_.main && index < page_.blocks[page_.main].end;
    }

    static bool IsHidden(const Block& block) noexcept {
        return block.description == Description::kHidden || block.description == Description::kWithoutScripts;
    }

    // On a page that shows nothing else, such as a menu for a frame, nothing stands around anything.
    bool IsAround(const Block& block) const noexcept {
        return block.description == Description::kAround && shown_.all != 0;
    }

    bool HoldsMain(unsigned int index) const noexcept {
        return page_.main > index && page_.main < page_.blocks[index].end;
    }

    bool IsNamed(unsigned int index) const noexcept {
        const Block& block = page_.blocks[index];
        const unsigned int shown = block.bytes.Shown();
        if (shown == 0 || index < leftOutEnd_ || !MayBeNamed(nodes_[block.element].Keyword())) return false;
        if (index == page_.main || HoldsMain(index)) return false;
        const auto hasProse = [&](std::uint64_t hundredth) {
            return std::uint64_t{block.bytes.prose} * 100 > shown_.prose * hundredth;
        };
        if (std::uint64_t{shown} * 100 >= shown_.all * kMostNamedShare || hasProse(kMostNamedProse))
            return false;
        switch (NameOf(nodes_, block.element)) {
            case ClutterName::kNone: return false;
            case ClutterName::kMenu: return std::uint64_t{block.bytes.linked} * 2 >= block.bytes.all;
            // A page with a main element is of today, and its comments are no part of an article any more.
            case ClutterName::kComments: return kind_.isMainAlone && !hasProse(kMostCommentProse);
            case ClutterName::kClutter: return true;
        }
        return false;
    }

    static bool MayBeNamed(unsigned int keyword) noexcept {
        return keyword == kKeywordBlock || keyword == kKeywordList || keyword == kKeywordForm;
    }

    bool IsForm(unsigned int index) const noexcept {
        const Block& block = page_.blocks[index];
        const unsigned int shown = block.bytes.Shown();
        return nodes_.TagOf(block.element) == Tag::kForm && shown < kFilledInForm && !HoldsMain(index) &&
               std::uint64_t{shown} * 100 <= shown_.all * kFilledInFormShare;
    }

    // Everything beside the element, and beside what it stands in, is clutter.
    void ReadAlone(NodeIndex element) noexcept {
        for (NodeIndex node = element;
             nodes_.TagOf(node) != Tag::kBody && nodes_.Parent(node) != kDocumentNode;
             node = nodes_.Parent(node)) {
            for (NodeIndex other = nodes_.FirstChild(nodes_.Parent(node)); other != kNoNode;
                 other = nodes_.NextSibling(other)) {
                const bool isRead =
                    nodes_.TypeOf(other) == NodeType::kElement && nodes_[other].Keyword() != kKeywordSkipped;
                if (other == node || !isRead) continue;
                nodes_.LeaveOut(other, kKeywordClutter);
                failed_ |= !beside_.Append(other);
            }
        }
    }

    // In document order: what stands before a block, and around it, has its role.
    void ReadEachBlock() noexcept {
        for (unsigned int index = 1; index < page_.blocks.Size();) {
            const Block& block = page_.blocks[index];
            ReadAhead(index);
            ReadBlock(index, block);
            index = nodes_.IsLeftOut(block.element) ? block.end : index + 1;
        }
    }

    void ReadBlock(unsigned int index, const Block& block) noexcept {
        switch (nodes_[block.element].Keyword()) {
            case kKeywordBlock:
                if (block.bytes.all == 0 || !IsLayoutBlock(nodes_.TagOf(block.element))) break;
                if (StandsInList(index) || ContinuesStory(index) || IsAroundOne(index)) break;
                MakeTable(block.element);
                EndLineBefore(nodes_, block.element);
                break;
            case kKeywordTable:
                if (block.isData) {
                    MakeLines(nodes_, block.element);
                } else if (StandsInList(index) || StandsInStory(index)) {
                    nodes_.ChangeRole(block.element, kKeywordBlock);
                } else {
                    EndLineBefore(nodes_, block.element);
                }
                break;
            case kKeywordRow:
            case kKeywordCell:
            case kKeywordHeaderCell:
            case kKeywordBody:
            case kKeywordHead:
            case kKeywordFoot:
                if (nodes_[page_.blocks[block.around].element].Keyword() == kKeywordBlock)
                    nodes_.ChangeRole(block.element, kKeywordBlock);
                break;
            case kKeywordPreformatted:
                if (index < preformattedEnd_) break;
                KeepPreformatted(nodes_, block.element);
                preformattedEnd_ = block.end;
                break;
            case kKeywordLegend:
            case kKeywordClutter: EndLineBefore(nodes_, block.element); break;
            default: break;
        }
    }

    // Whether the block is a part of a list that is read as one, since the ranking would take the card with
    // most text, and no other.
    bool StandsInList(unsigned int index) const noexcept { return kind_.isMainList && StandsInMain(index); }

    // Whether the layout table stands among the paragraphs of the story and does not lead through the site:
    // it lays out a part of the article then.
    bool StandsInStory(unsigned int index) const noexcept {
        const TextBytes& bytes = page_.blocks[index].bytes;
        return page_.story != 0 && index > page_.story && index < page_.blocks[page_.story].end &&
               std::uint64_t{bytes.linked} * kStoryLinks <= bytes.all;
    }

    void ClearLinks(NodeIndex root) noexcept {
        WalkTree(
            nodes_, root,
            [this](NodeIndex node) {
                if (nodes_.TypeOf(node) != NodeType::kElement) return false;
                nodes_.ClearLink(node);
                return true;
            },
            [](NodeIndex) {});
    }

    bool ShowsNothing(const Block& block) const noexcept {
        return block.bytes.Shown() == 0 || nodes_.IsLeftOut(block.element);
    }

    // Whether all that the block shows stands in one layout block inside it, which is the table then.
    bool IsAroundOne(unsigned int index) const noexcept {
        const ZOT::FastVector<Block>& blocks = page_.blocks;
        const Block& block = blocks[index];
        unsigned int inner = index + 1;
        while (inner < block.end && ShowsNothing(blocks[inner])) inner = blocks[inner].end;
        return inner < block.end && blocks[inner].bytes.Shown() == block.bytes.Shown() &&
               IsLayoutBlock(nodes_.TagOf(blocks[inner].element));
    }

    // Preformatted text has no sentences, and belongs to the text that speaks of it. It stands in a frame or
    // two, which may have a caption.
    bool HoldsCode(unsigned int index) const noexcept {
        const unsigned int end = std::min(page_.blocks[index].end, index + kCodeWithin);
        for (unsigned int inner = index + 1; inner < end; ++inner) {
            if (nodes_[page_.blocks[inner].element].Keyword() == kKeywordPreformatted) return true;
        }
        return false;
    }

    // Whether the block, one after the other in document order, stands among the paragraphs of the story and
    // reads like them, as do those around it: it is no part of the layout then, but of the article.
    bool ContinuesStory(unsigned int index) noexcept {
        const Block& story = page_.blocks[page_.story];
        const Block& block = page_.blocks[index];
        if (page_.story == 0 || index <= page_.story || index >= story.end || index < besideStoryEnd_)
            return false;
        const unsigned int shown = block.bytes.Shown();
        if (shown <= story.ownProse && std::uint64_t{block.bytes.linked} * kStoryLinks <= shown &&
            (std::uint64_t{block.bytes.prose} * kStoryProse >= shown || HoldsCode(index))) {
            return true;
        }
        besideStoryEnd_ = block.end;
        return false;
    }

    // The element's children move into a cell in a row of its own.
    void MakeTable(NodeIndex element) noexcept {
        nodes_.ChangeRole(element, kKeywordTable);
        nodes_.Enclose(element, Tag::kTd, kKeywordCell);
        nodes_.Enclose(element, Tag::kTr, kKeywordRow);
    }

    NodeStore& nodes_;
    const PageOutline& page_;
    const PageKind kind_;
    const TextBytes shown_;
    unsigned int read_;  // bytes that are to be read, and stand in no block of these:
    ZOT::FastVector<NodeIndex> besideText_;
    unsigned int leftOutEnd_ = 0;      // behind the last block inside what is left out so far
    unsigned int besideStoryEnd_ = 0;  // behind the last block of what stands in the story and is none of it
    ZOT::FastVector<NodeIndex> beside_;  // what is left out beside the main element, blocks or not
    unsigned int preformattedEnd_ = 0;   // behind the last block inside the last preformatted one
    bool failed_ = false;
};

}  // namespace

bool ReadBlocks(NodeStore& nodes, const PageOutline& page) noexcept {
    return BlockReading(nodes, page).Read();
}

}  // namespace ZOTParser

#include "page_outline.h"

#include <cstdint>

#include "tree_walk.h"

namespace ZOTParser {
namespace {

// Most pages have a block for more nodes than these.
constexpr unsigned int kNodesForBlock = 3;

// Prose is a run of text between two block borders that is as long as a sentence, is not mostly link, and has
// the end of a sentence in the longest of its texts. Lists of links, captions and prices are none.
constexpr unsigned int kSentence = 60;  // bytes: ten words
constexpr unsigned int kLinkPart = 3;   // less than one byte in so many stands in links

// Bytes from which on a link's own text is a teaser, some fifteen words. Names of pages are shorter.
constexpr unsigned int kTeaser = 90;

bool StandsInLine(unsigned int keyword) noexcept {
    return keyword == kKeywordInline || keyword == kKeywordAnchor || keyword == kKeywordBreak;
}

bool IsTablePart(unsigned int keyword) noexcept {
    switch (keyword) {
        case kKeywordRow:
        case kKeywordCell:
        case kKeywordHeaderCell:
        case kKeywordBody:
        case kKeywordHead:
        case kKeywordFoot: return true;
        default: return false;
    }
}

bool HasSentenceEnd(const char* first, const char* last) noexcept {
    return FindFirst(
               first, last, [](ByteVector v) { return v.Equal('.') | v.Equal('!') | v.Equal('?'); },
               [](char) { return true; }) != last;
}

class OutlineWalk {
public:
    OutlineWalk(NodeStore& nodes, const TableRoles& roles, PageOutline& page) noexcept
        : nodes_(nodes), roles_(roles), page_(page) {}

    bool Start() noexcept {
        if (!page_.blocks.Reserve(nodes_.End() / kNodesForBlock + 1)) return false;
        Open(kDocumentNode, Description::kNone);
        return !failed_;
    }

    bool Enter(NodeIndex node) noexcept {
        if (nodes_.TypeOf(node) == NodeType::kText) {
            if (!nodes_[node].IsSpace()) AddText(nodes_[node]);
            return false;
        }
        const unsigned int keyword = roles_.Give(nodes_, node);
        const bool inLine = StandsInLine(keyword);
        if (!inLine || nodes_.HasAttributeBit(node, kDescribesItself)) {
            if (keyword == kKeywordSkipped && nodes_.TagOf(node) != Tag::kNoscript) {
                GiveRolesBelow(node);
                return false;
            }
            const Description description = Describe(node);
            if (!inLine || description != Description::kNone) EnterBlock(node, keyword, description);
        }
        if (nodes_[node].IsLink() && link_ == kNoNode) EnterLink(node);
        return true;
    }

    void Leave(NodeIndex node) noexcept {
        if (node == link_) LeaveLink();
        if (node == openElement_) LeaveBlock(node);
    }

    bool Finish() noexcept {
        EndRun();
        Close();
        if (mains_ > 1) page_.main = 0;
        return !failed_;
    }

private:
    // --- blocks

    Description Describe(NodeIndex node) const noexcept {
        return hidden_ == 0 ? DescriptionOf(nodes_, node) : Description::kNone;
    }

    void EnterBlock(NodeIndex node, unsigned int keyword, Description description) noexcept {
        EndRun();
        const unsigned int index = Open(node, description);
        if (description == Description::kMain) {
            EnterMain(index);
        } else if (description != Description::kNone) {
            if (leftOut_ == 0) leftOut_ = index;
            if (description != Description::kAround) hidden_ = index;
        }
        if (StandsInLine(keyword)) return;
        if (leftOut_ == leftOutAroundLink_) linkHoldsBlocks_ = true;
        if (keyword == kKeywordHeading && heading_ == 0) heading_ = index;
        if (keyword == kKeywordTable) {
            EnterTable(index);
        } else if (IsTablePart(keyword)) {
            CountPart(keyword);
        } else {
            plainTable_ = 0;
        }
    }

    void LeaveBlock(NodeIndex node) noexcept {
        EndRun();
        const unsigned int index = Close();
        const Block& block = page_.blocks[index];
        if (index == main_) main_ = 0;
        if (index == heading_) heading_ = 0;
        if (index == hidden_) hidden_ = 0;
        if (index == leftOut_) LeaveLeftOut(block);
        if (nodes_[node].Keyword() == kKeywordTable) LeaveTable(index);
        TableRoles::EndLine(nodes_, node);
    }

    // From here to the closing the bytes are those before the block.
    unsigned int Open(NodeIndex node, Description description) noexcept {
        const auto index = static_cast<unsigned int>(page_.blocks.Size());
        if (!page_.blocks.Append({node, open_, index + 1, description, false, IsOfTable(node), 0, bytes_})) {
            failed_ = true;
            return open_;
        }
        openElement_ = node;
        return open_ = index;
    }

    bool IsOfTable(NodeIndex node) const noexcept {
        if (node == kDocumentNode || IsLayoutBlock(nodes_.TagOf(node))) return false;
        return nodes_[node].Keyword() == kKeywordTable || page_.blocks[open_].isOfTable;
    }

    unsigned int Close() noexcept {
        const unsigned int index = open_;
        Block& block = page_.blocks[index];
        block.end = static_cast<unsigned int>(page_.blocks.Size());
        block.bytes = bytes_ - block.bytes;
        open_ = block.around;
        openElement_ = page_.blocks[open_].element;
        return index;
    }

    // An element around the content cannot hold the first main one: its end tag is missing.
    void EnterMain(unsigned int index) noexcept {
        if (leftOut_ != 0 && hidden_ == 0 && mains_ == 0) {
            page_.blocks[leftOut_].description = Description::kNone;
            leftOut_ = 0;
        }
        if (leftOut_ != 0 || main_ != 0) return;
        main_ = page_.main = index;
        ++mains_;
    }

    void LeaveLeftOut(const Block& block) noexcept {
        bytes_.leftOut += block.bytes.all;
        page_.leftOut += block.bytes;
        page_.leftOut.leftOut += block.bytes.all;
        if (block.description != Description::kAround) page_.locked += block.bytes.all;
        if (block.description == Description::kWithoutScripts) page_.withoutScripts += block.bytes;
        leftOut_ = 0;
    }

    // --- tables: one without blocks or tables in its cells may hold data

    void EnterTable(unsigned int index) noexcept {
        plainTable_ = index;
        rows_ = cells_ = 0;
    }

    void CountPart(unsigned int keyword) noexcept {
        rows_ += keyword == kKeywordRow;
        cells_ += keyword == kKeywordCell || keyword == kKeywordHeaderCell;
    }

    void LeaveTable(unsigned int index) noexcept {
        Block& table = page_.blocks[index];
        table.isData = index == plainTable_ && rows_ >= 2 && cells_ >= 2 * rows_ &&
                       std::uint64_t{2} * table.bytes.linked < table.bytes.all;
    }

    // --- links

    void EnterLink(NodeIndex link) noexcept {
        link_ = link;
        linkHoldsBlocks_ = false;
        leftOutAroundLink_ = leftOut_;
        shownBeforeLink_ = bytes_.Shown();
    }

    void LeaveLink() noexcept {
        const bool isCard = heading_ != 0 || linkHoldsBlocks_ || bytes_.Shown() - shownBeforeLink_ >= kTeaser;
        if (isCard && !page_.cards.Append(link_)) failed_ = true;
        link_ = kNoNode;
    }

    // --- text

    void AddText(const Node& text) noexcept {
        const unsigned int size = text.SourceLength();
        bytes_.all += size;
        nodes_.ReadAheadInSource(text.SourcePosition());
        if (link_ != kNoNode) {
            bytes_.linked += size;
        } else if (size > longest_) {
            longest_ = size;
            longestPosition_ = text.SourcePosition();
        }
    }

    void EndRun() noexcept {
        const unsigned int run = bytes_.all - beforeRun_.all;
        if (run == 0) return;
        if (page_.blocks[open_].isOfTable) bytes_.inTables += run;
        if (run >= kSentence && (bytes_.linked - beforeRun_.linked) * kLinkPart < run) {
            const char* const longest = nodes_.Source() + longestPosition_;
            if (HasSentenceEnd(longest, longest + longest_)) AddProse(run);
        }
        beforeRun_ = bytes_;
        longest_ = 0;
    }

    void AddProse(unsigned int size) noexcept {
        bytes_.prose += size;
        if (leftOut_ != 0) return;
        unsigned int frame = open_;
        while (!IsFrame(page_.blocks[frame].element)) frame = page_.blocks[frame].around;
        page_.blocks[frame].ownProse += size;
        if (page_.blocks[frame].ownProse > page_.blocks[page_.story].ownProse) page_.story = frame;
    }

    bool IsFrame(NodeIndex element) const noexcept {
        const unsigned int keyword = nodes_[element].Keyword();
        return element == kDocumentNode || keyword == kKeywordCell || keyword == kKeywordHeaderCell ||
               IsLayoutBlock(nodes_.TagOf(element));
    }

    void GiveRolesBelow(NodeIndex root) noexcept {
        WalkTree(
            nodes_, root,
            [this](NodeIndex node) {
                if (nodes_.TypeOf(node) != NodeType::kElement) return false;
                roles_.Give(nodes_, node);
                return true;
            },
            [this](NodeIndex node) { TableRoles::EndLine(nodes_, node); });
    }

    NodeStore& nodes_;
    const TableRoles& roles_;
    PageOutline& page_;
    bool failed_ = false;
    TextBytes bytes_;        // so far
    unsigned int open_ = 0;  // the innermost open block
    NodeIndex openElement_ = kDocumentNode;
    // The outermost open block of each kind.
    unsigned int leftOut_ = 0;
    unsigned int hidden_ = 0;
    unsigned int main_ = 0;
    unsigned int heading_ = 0;
    unsigned int mains_ = 0;
    // The innermost table so far, as long as it has neither blocks nor tables in its cells.
    unsigned int plainTable_ = 0;
    unsigned int rows_ = 0;
    unsigned int cells_ = 0;
    // The outermost open link.
    NodeIndex link_ = kNoNode;
    bool linkHoldsBlocks_ = false;
    unsigned int leftOutAroundLink_ = 0;
    unsigned int shownBeforeLink_ = 0;
    // The run of text that is open, and the longest of its texts outside links.
    TextBytes beforeRun_;
    unsigned int longest_ = 0;
    unsigned int longestPosition_ = 0;
};

}  // namespace

bool PageOutline::Draw(NodeStore& nodes, const TableRoles& roles) noexcept {
    OutlineWalk walk(nodes, roles, *this);
    if (!walk.Start()) return false;
    WalkTree(
        nodes, kDocumentNode, [&](NodeIndex node) { return walk.Enter(node); },
        [&](NodeIndex node) { walk.Leave(node); });
    return walk.Finish() && !nodes.Failed();
}

}  // namespace ZOTParser

#include "page_outline.h"

#include "self_description.h"
#include "tree_walk.h"

namespace ZOTParser {
namespace {

// Prose is a run of text between two block borders that is as long as a sentence, is not mostly link, and has
// the end of a sentence in the longest of its texts. Lists of links, captions and prices are none.
constexpr unsigned int kSentence = 60;  // bytes: ten words
constexpr unsigned int kLinkPart = 3;   // less than one byte in so many stands in links

// A form with less text than this, some thirty words, is there to search, to log in or to subscribe.
constexpr unsigned int kFilledInForm = 180;  // bytes

bool EndsRun(unsigned int keyword) noexcept {
    return keyword != kKeywordInline && keyword != kKeywordAnchor && keyword != kKeywordBreak;
}

class OutlineWalk {
public:
    OutlineWalk(const NodeStore& nodes, PageOutline& page) noexcept : nodes_(nodes), page_(page) {}

    bool Enter(NodeIndex node) noexcept {
        if (nodes_.TypeOf(node) == NodeType::kText) {
            if (!nodes_.IsSpace(nodes_[node])) AddText(nodes_[node]);
            return false;
        }
        if (SaysNothing(node)) return true;
        if (!IsRead(node)) return false;
        const unsigned int keyword = nodes_[node].Keyword();
        if (EndsRun(keyword)) EndRun();
        openTables_ += keyword == kKeywordTable;
        openLinks_ += nodes_[node].IsLink();
        if (locked_ != kNoNode || clutter_ != kNoNode) return true;
        if (keyword == kKeywordSkipped) {
            locked_ = node;
        } else {
            Describe(node);
            if (nodes_.TagOf(node) == Tag::kForm && locked_ != node && clutter_ != node) EnterForm(node);
        }
        return true;
    }

    void Leave(NodeIndex node) noexcept {
        if (nodes_.TypeOf(node) == NodeType::kText || SaysNothing(node) || !IsRead(node)) return;
        const unsigned int keyword = nodes_[node].Keyword();
        if (EndsRun(keyword)) EndRun();
        if (node == form_) LeaveForm();
        openTables_ -= keyword == kKeywordTable;
        openLinks_ -= nodes_[node].IsLink();
        for (NodeIndex* const open : {&locked_, &clutter_, &main_}) {
            if (*open == node) *open = kNoNode;
        }
    }

    void Finish() noexcept {
        EndRun();
        if (mains_ > 1) page_.main = kNoNode;
    }

private:
    // Most elements: those within a line, without any of the attributes that are looked for.
    bool SaysNothing(NodeIndex node) const noexcept {
        return nodes_[node].Keyword() == kKeywordInline && !nodes_.HasAttributeBit(node, kDescribesItself);
    }

    // Skipped elements are not, but for what is kept for browsers without scripts.
    bool IsRead(NodeIndex node) const noexcept {
        return nodes_[node].Keyword() != kKeywordSkipped || nodes_.TagOf(node) == Tag::kNoscript;
    }

    void Describe(NodeIndex node) noexcept {
        switch (DescriptionOf(nodes_, node)) {
            case Description::kNone: return;
            case Description::kHidden:
                locked_ = node;
                page_.marks.Append({node, PageOutline::Standing::kHidden});
                return;
            case Description::kAround:
                clutter_ = node;
                page_.marks.Append({node, PageOutline::Standing::kClutter});
                return;
            case Description::kMain:
                if (main_ != kNoNode) return;
                main_ = page_.main = node;
                ++mains_;
                return;
        }
    }

    void EnterForm(NodeIndex form) noexcept {
        form_ = form;
        shownBeforeForm_ = page_.shown;
        mainsBeforeForm_ = mains_;
    }

    void LeaveForm() noexcept {
        if (page_.shown - shownBeforeForm_ < kFilledInForm && mains_ == mainsBeforeForm_) {
            page_.marks.Append({form_, PageOutline::Standing::kForm});
        }
        form_ = kNoNode;
    }

    void AddText(const Node& text) noexcept {
        const unsigned int size = text.SourceLength();
        if (locked_ != kNoNode) page_.locked += size;
        if (locked_ != kNoNode && nodes_[locked_].Keyword() == kKeywordSkipped) return;
        page_.text += size;
        if (openTables_ != 0) page_.textInTables += size;
        if (locked_ != kNoNode || clutter_ != kNoNode) return;
        page_.shown += size;
        if (main_ != kNoNode) page_.mainShown += size;
        run_ += size;
        if (openLinks_ != 0) {
            runInLinks_ += size;
            page_.linked += size;
        } else if (longest_ == nullptr || size > longest_->SourceLength()) {
            longest_ = &text;
        }
    }

    bool HasSentenceEnd(const Node& text) const noexcept {
        const char* const first = nodes_.Source() + text.SourcePosition();
        const char* const last = first + text.SourceLength();
        return FindFirst(
                   first, last, [](ByteVector v) { return v.Equal('.') | v.Equal('!') | v.Equal('?'); },
                   [](char) { return true; }) != last;
    }

    void EndRun() noexcept {
        if (run_ == 0) return;
        if (run_ >= kSentence && runInLinks_ * kLinkPart < run_ && HasSentenceEnd(*longest_)) {
            page_.prose += run_;
        }
        run_ = runInLinks_ = 0;
        longest_ = nullptr;
    }

    const NodeStore& nodes_;
    PageOutline& page_;
    unsigned int openTables_ = 0;
    unsigned int openLinks_ = 0;
    unsigned int mains_ = 0;
    // The outermost open element of each kind.
    NodeIndex locked_ = kNoNode;
    NodeIndex clutter_ = kNoNode;
    NodeIndex main_ = kNoNode;
    NodeIndex form_ = kNoNode;  // the innermost
    unsigned int shownBeforeForm_ = 0;
    unsigned int mainsBeforeForm_ = 0;
    // The run of text that is open, in bytes.
    unsigned int run_ = 0;
    unsigned int runInLinks_ = 0;
    const Node* longest_ = nullptr;  // of its texts outside links
};

}  // namespace

PageOutline::PageOutline(const NodeStore& nodes) noexcept {
    OutlineWalk walk(nodes, *this);
    WalkTree(
        nodes, [&](NodeIndex node) { return walk.Enter(node); }, [&](NodeIndex node) { walk.Leave(node); });
    walk.Finish();
}

}  // namespace ZOTParser

#include "node_store.h"

#include <algorithm>
#include <cstring>

#include "tokenizer.h"

namespace ZOTParser {

static_assert(sizeof(Node) == 32, "a node is half a cache line");

NodeStore* NodeStore::Of(const Node& node) noexcept {
    NodeStore* store;
    std::memcpy(&store, static_cast<const void*>(&node - node.index_), sizeof(void*));
    return store;
}

// The count goes with its last holder; here only when there never was one.
NodeStore::~NodeStore() {
    if (!handedOut_) delete holders_;
    ZOT::PoolFree(source_);
    ZOT::PoolFree(nodes_);
}

bool NodeStore::Init(unsigned char* source, unsigned int size) {
    source_ = reinterpret_cast<char*>(source);
    size_ = size;
    holders_ = new ZOT::SharedCount;
    if (holders_ == nullptr) return Fail();
    if (!Grow()) return false;
    const NodeStore* const self = this;
    std::memcpy(static_cast<void*>(nodes_), &self, sizeof(void*));
    count_ = kDocumentNode;
    NewNode(WordOf(NodeType::kElement), 0, 0);
    NewNode(WordOf(NodeType::kElement), 0, 0);
    return true;
}

ZOT::RefCount<Node> NodeStore::HandOut() noexcept {
    handedOut_ = true;
    return {holders_, &nodes_[kDocumentNode]};
}

// A typical page has a node for every 20 to 40 bytes. One that has more goes on as it began, mostly: so the
// array grows once, to what the rest of the source will need and a little more, and never by more than it
// makes good.
bool NodeStore::Grow() noexcept {
    const std::size_t capacity = capacity_ == 0 ? size_ / 32 + 64 : NextCapacity();
    if (capacity > 0xFFFFFFFFu) return Fail();
    void* const memory = ZOT::PoolReallocate(nodes_, count_ * sizeof(Node), capacity * sizeof(Node));
    if (memory == nullptr) return Fail();
    nodes_ = static_cast<Node*>(memory);
    capacity_ = static_cast<unsigned int>(capacity);
    return true;
}

std::size_t NodeStore::NextCapacity() const noexcept {
    constexpr NodeIndex kLookedAt = 16;  // the last nodes, of which some stand in the source
    unsigned int position = 0;
    for (NodeIndex node = count_ - kLookedAt; node != count_; ++node)
        position = std::max(position, nodes_[node].position_);
    const std::size_t count = count_;
    const std::size_t expected = position == 0 ? count : count * size_ / position;  // 0: the source is read
    return std::clamp(expected + expected / 16, count + count / 4, 4 * count);
}

void NodeStore::InsertBefore(NodeIndex next, NodeIndex child) noexcept {
    Node& after = nodes_[next];
    Node& node = nodes_[child];
    node.parent_ = after.parent_;
    node.next_ = next;
    node.prev_ = after.prev_;
    if (nodes_[after.parent_].first_ == next) {
        nodes_[after.parent_].first_ = child;
    } else {
        nodes_[after.prev_].next_ = child;
    }
    after.prev_ = child;
}

void NodeStore::Remove(NodeIndex index) noexcept {
    Node& node = nodes_[index];
    if (node.parent_ == kNoNode) return;
    Node& up = nodes_[node.parent_];
    const NodeIndex first = up.first_;
    if (first == index) {
        up.first_ = node.next_;
    } else {
        nodes_[node.prev_].next_ = node.next_;
    }
    // The next sibling, or for the last one the first sibling, takes over the way back.
    if (node.next_ != kNoNode) {
        nodes_[node.next_].prev_ = node.prev_;
    } else if (first != index) {
        nodes_[first].prev_ = node.prev_;
    }
    node.parent_ = node.next_ = node.prev_ = kNoNode;
}

void NodeStore::MoveChildren(NodeIndex from, NodeIndex to) noexcept {
    NodeIndex child = FirstChild(from);
    nodes_[from].first_ = kNoNode;
    while (child != kNoNode && !failed_) {
        const NodeIndex next = nodes_[child].next_;
        Append(to, child);
        child = next;
    }
}

void NodeStore::Enclose(NodeIndex parent, Tag tag, unsigned int keyword) noexcept {
    const NodeIndex element = NewElement(tag, Namespace::kHtml, 0, 0, 0);
    if (failed_) return;
    SetRole(element, keyword, false);
    const NodeIndex first = FirstChild(parent);
    for (NodeIndex child = first; child != kNoNode; child = nodes_[child].next_)
        nodes_[child].parent_ = element;
    nodes_[element].first_ = first;
    nodes_[parent].first_ = kNoNode;
    Append(parent, element);
}

void NodeStore::AppendBreak(NodeIndex parent) noexcept {
    const NodeIndex node = NewBreak();
    if (!failed_) Append(parent, node);
}

void NodeStore::InsertBreak(NodeIndex next) noexcept {
    const NodeIndex node = NewBreak();
    if (!failed_) InsertBefore(next, node);
}

void NodeStore::InsertSpace(NodeIndex next) noexcept {
    const NodeIndex node =
        NewNode(kKeywordText | WordOf(NodeType::kText) | kSpaceText | Node::kSpaceFlag, 0, 0);
    if (!failed_) InsertBefore(next, node);
}

void NodeStore::LimitDepth(unsigned int limit) noexcept {
    NodeIndex node = kDocumentNode;
    unsigned int depth = 0;
    for (;;) {
        if (depth == limit && TypeOf(node) == NodeType::kElement && nodes_[node].first_ != kNoNode) {
            // Its children follow it as siblings, from the first element on.
            NodeIndex child = nodes_[node].first_;
            while (child != kNoNode && TypeOf(child) != NodeType::kElement) child = nodes_[child].next_;
            const NodeIndex parent = nodes_[node].parent_;
            const NodeIndex before = nodes_[node].next_;
            while (child != kNoNode) {
                const NodeIndex next = nodes_[child].next_;
                Remove(child);
                if (before != kNoNode) {
                    InsertBefore(before, child);
                } else {
                    Append(parent, child);
                }
                child = next;
            }
        }
        if (depth < limit && FirstChild(node) != kNoNode) {
            node = FirstChild(node);
            ++depth;
            continue;
        }
        while (node != kDocumentNode && nodes_[node].next_ == kNoNode) {
            node = nodes_[node].parent_;
            --depth;
        }
        if (node == kDocumentNode) return;
        node = nodes_[node].next_;
    }
}

unsigned int NodeStore::NewPiece(TextKind kind, unsigned int position, unsigned int length) noexcept {
    // Index 0 means none, so the first slot stays unused.
    if (pieces_.Size() == 0 && !pieces_.Append(TextPiece{})) return Fail();
    const auto index = static_cast<unsigned int>(pieces_.Size());
    if (!pieces_.Append(TextPiece{position, length, kind, 0, index})) return Fail();
    return index;
}

void NodeStore::AppendToText(NodeIndex text, TextKind kind, unsigned int position,
                             unsigned int length) noexcept {
    Node& node = nodes_[text];
    const bool adjacent = node.position_ + node.length_ == position;
    if (!IsSpace(position, length)) node.word_ &= ~Node::kSpaceFlag;
    if ((node.word_ & kPieces) == 0) {
        if (adjacent && TextKindOf(text) == kind) {
            node.length_ += length;
            return;
        }
        const unsigned int head = NewPiece(TextKindOf(text), node.position_, node.length_);
        if (failed_) return;
        node.first_ = head;
        node.word_ |= kPieces;
    }
    node.length_ = position + length - node.position_;
    const unsigned int last = pieces_[node.first_].tail;
    if (adjacent && pieces_[last].kind == kind) {
        pieces_[last].length += length;
        return;
    }
    const unsigned int piece = NewPiece(kind, position, length);
    if (failed_) return;
    pieces_[last].next = piece;
    pieces_[node.first_].tail = piece;
}

template <class Visit>
void NodeStore::VisitPieces(const Node& text, Visit visit) const {
    if ((text.word_ & kPieces) == 0) {
        visit(text.position_, text.length_, static_cast<TextKind>(text.word_ >> kTextKindShift & 3));
        return;
    }
    for (unsigned int index = text.first_; index != 0; index = pieces_[index].next) {
        visit(pieces_[index].position, pieces_[index].length, pieces_[index].kind);
    }
}

void NodeStore::GetText(const Node& text, std::u16string& out) const {
    if ((text.word_ & kSpaceText) != 0) {
        out.push_back(u' ');
        return;
    }
    VisitPieces(text, [&](unsigned int position, unsigned int length, TextKind kind) {
        AppendDecodedText(source_ + position, source_ + position + length, kind, out);
    });
}

std::size_t NodeStore::DecodeRoom(const Node& text) const noexcept {
    std::size_t bytes = 1;  // a blank that the page does not spell out
    VisitPieces(text, [&](unsigned int, unsigned int length, TextKind) { bytes += length; });
    return bytes + kDecodeSlack;
}

char16_t* NodeStore::Decode(const Node& text, char16_t* units) const noexcept {
    if ((text.word_ & kSpaceText) != 0) *units++ = u' ';
    VisitPieces(text, [&](unsigned int position, unsigned int length, TextKind kind) {
        units = DecodeText(source_ + position, source_ + position + length, kind, units);
    });
    return units;
}

void NodeStore::GetSpans(const Node& text, std::vector<TextSpan>& spans) const {
    VisitPieces(text, [&](unsigned int position, unsigned int length, TextKind kind) {
        if (length != 0) spans.push_back({position, length, kind == TextKind::kRaw});
    });
}

void NodeStore::MergeAttributes(NodeIndex element, unsigned int position) noexcept {
    if (!merged_.Append(MergedTag{element, position})) Fail();
}

bool NodeStore::HasAttribute(NodeIndex element, std::string_view name) const noexcept {
    bool found = false;
    VisitAttributes(nodes_[element], [&](const Attribute& attribute) {
        found = IsIgnoringCase(attribute.name, name);
        return !found;
    });
    return found;
}

// Looks no further than the names are the same: the element's own name may be as long as the page, and an end
// tag may be held against every open element.
bool NodeStore::IsNamed(NodeIndex element, Span name) const noexcept {
    const char* own = source_ + nodes_[element].position_ + 1;
    if (static_cast<std::size_t>(SourceEnd() - own) <= name.Size()) return false;
    for (const char* at = name.first; at != name.last; ++at, ++own) {
        if (LowerCase(*at) != LowerCase(*own)) return false;
    }
    return EndsTagName(*own);
}

std::string_view NodeStore::Name(NodeIndex element) const noexcept {
    if (TagOf(element) != Tag::kUnknown) return NameOf(TagOf(element));
    const char* const name = source_ + nodes_[element].position_ + 1;
    return {name, static_cast<std::size_t>(FindTagNameEnd(name, SourceEnd()) - name)};
}

}  // namespace ZOTParser

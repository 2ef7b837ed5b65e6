#pragma once

#include <algorithm>
#include <zot/fast_vector.h>
#include <zot/parser.h>

#include "attribute_reader.h"
#include "tag.h"
#include "text_decoder.h"

namespace ZOTParser {

using Node = HtmlDocTree::HtmlTreeNode;

// A node by its place in the array of the store.
using NodeIndex = unsigned int;
constexpr NodeIndex kNoNode = 0;
constexpr NodeIndex kDocumentNode = 1;
// Handed out when memory is out. The tree is thrown away then, so it does not matter what becomes of this
// one.
constexpr NodeIndex kSpareNode = 2;
constexpr NodeIndex kFirstNode = 3;

// Positions, and a little room behind the last one, fit 32 bits.
constexpr unsigned int kLongestSource = 0xFFFFFFFFu - kSourcePadding;

enum class NodeType : unsigned int { kElement, kText, kComment, kDoctype, kBreak };

// Owns the source and the nodes of a tree.
//
// An element's attributes and a comment's data are not stored: they are read from the source at the node's
// position when somebody asks. A text node that is one span of the source is just that; one whose characters
// stand in several places has a list of pieces. All positions are byte offsets into the source.
//
// When memory runs out, Failed() turns true and stays so.
class NodeStore : public ZOT::PoolObject {
public:
    // The store of a node that is in one.
    static NodeStore* Of(const Node& node) noexcept;

    NodeStore() noexcept = default;
    NodeStore(const NodeStore&) = delete;  // one page, one store
    NodeStore& operator=(const NodeStore&) = delete;
    ~NodeStore();

    // Takes over `source` (pool memory, `size` bytes and kSourcePadding readable ones behind them) and makes
    // the document node. False when memory runs out; the source is then freed.
    bool Init(unsigned char* source, unsigned int size);

    const char* Source() const noexcept { return source_; }
    const char* SourceEnd() const noexcept { return source_ + size_; }
    unsigned int SourceSize() const noexcept { return size_; }
    unsigned int PositionOf(const char* at) const noexcept { return static_cast<unsigned int>(at - source_); }
    bool Failed() const noexcept { return failed_; }
    // Whoever builds the tree may run out of memory too. Returns false.
    bool Fail() noexcept {
        failed_ = true;
        return false;
    }

    // The document node as its first holder. From then on the store belongs to its holders: the last one
    // deletes it.
    ZOT::RefCount<Node> HandOut() noexcept;
    // A further holder of a store that was handed out.
    ZOT::RefCount<Node> Entry(NodeIndex node) const noexcept { return {holders_, &nodes_[node]}; }

    // Nodes made so far, and where the next one goes.
    NodeIndex End() const noexcept { return count_; }
    Node& operator[](NodeIndex index) noexcept { return nodes_[index]; }
    const Node& operator[](NodeIndex index) const noexcept { return nodes_[index]; }

    // `attributes` are AttributeBit; those that roles depend on are kept. The element has no role yet.
    NodeIndex NewElement(Tag tag, Namespace ns, unsigned int attributes, unsigned int position,
                         unsigned int length) noexcept {
        if (ns == Namespace::kHtml) has_[static_cast<unsigned int>(tag)] = true;
        return NewNode(WordOf(NodeType::kElement) | static_cast<unsigned int>(tag) << kTagShift |
                           static_cast<unsigned int>(ns) << kNamespaceShift |
                           (attributes & kKeptAttributes) << kAttributeShift,
                       position, length);
    }
    // An element or a text like another one, without its children and its place in the tree.
    NodeIndex Clone(NodeIndex node) noexcept {
        const NodeHead head = HeadOf(node);  // making a node may move the array
        const NodeIndex clone = NewNode(head.word, head.position, head.length);
        if ((head.word & kPieces) != 0) nodes_[clone].first_ = nodes_[node].first_;
        return clone;
    }
    NodeIndex NewText(TextKind kind, unsigned int position, unsigned int length) noexcept {
        const unsigned int space = IsSpace(position, length) ? Node::kSpaceFlag : 0;
        return NewNode(kKeywordText | WordOf(NodeType::kText) |
                           static_cast<unsigned int>(kind) << kTextKindShift | space,
                       position, length);
    }
    // Comments and doctypes: `position` and `length` are those of the data.
    NodeIndex NewOther(NodeType type, unsigned int position, unsigned int length) noexcept {
        return NewNode(WordOf(type), position, length);
    }
    // Whether an element of that name was made.
    bool Has(Tag tag) const noexcept { return has_[static_cast<unsigned int>(tag)]; }

    NodeType TypeOf(NodeIndex node) const noexcept {
        return static_cast<NodeType>(nodes_[node].word_ >> kTypeShift & kTypeMask);
    }
    Tag TagOf(NodeIndex node) const noexcept {
        return static_cast<Tag>(nodes_[node].word_ >> kTagShift & 0xFF);
    }
    Namespace NamespaceOf(NodeIndex node) const noexcept {
        return static_cast<Namespace>(nodes_[node].word_ >> kNamespaceShift & 3);
    }
    TextKind TextKindOf(NodeIndex node) const noexcept {
        return static_cast<TextKind>(nodes_[node].word_ >> kTextKindShift & 3);
    }

    bool HasAttributeBit(NodeIndex node, AttributeBit bit) const noexcept {
        return (nodes_[node].word_ >> kAttributeShift & bit) != 0;
    }

    // A small number, 1 to 3, that an element and its clones remember; 0: none yet.
    unsigned int Note(NodeIndex element) const noexcept { return nodes_[element].word_ >> kNoteShift & 3; }
    void SetNote(NodeIndex element, unsigned int note) noexcept {
        nodes_[element].word_ |= note << kNoteShift;
    }

    // Gives an element its keyword id and, if it is one, the mark of a link.
    void SetRole(NodeIndex element, unsigned int keyword, bool link) noexcept {
        nodes_[element].word_ |= keyword | (link ? kLinkFlag : 0);
    }

    // Gives an element that has a role another one; whether it is a link stays.
    void ChangeRole(NodeIndex element, unsigned int keyword) noexcept {
        nodes_[element].word_ = (nodes_[element].word_ & ~0xFFu) | keyword;
    }

    // Takes an element out of what is read, and so out of the links: what stands in a link is read.
    void LeaveOut(NodeIndex element, KeywordId keyword) noexcept {
        ChangeRole(element, keyword);
        ClearLink(element);
    }

    bool IsLeftOut(NodeIndex element) const noexcept {
        const unsigned int keyword = nodes_[element].Keyword();
        return keyword == kKeywordSkipped || keyword == kKeywordClutter;
    }

    void ClearLink(NodeIndex element) noexcept { nodes_[element].word_ &= ~kLinkFlag; }

    NodeIndex Parent(NodeIndex node) const noexcept { return nodes_[node].parent_; }
    NodeIndex FirstChild(NodeIndex node) const noexcept {
        return TypeOf(node) == NodeType::kText ? kNoNode : nodes_[node].first_;
    }
    NodeIndex NextSibling(NodeIndex node) const noexcept { return nodes_[node].next_; }
    NodeIndex PreviousSibling(NodeIndex node) const noexcept {
        return nodes_[nodes_[node].parent_].first_ == node ? kNoNode : nodes_[node].prev_;
    }
    NodeIndex LastChild(NodeIndex node) const noexcept {
        const NodeIndex first = nodes_[node].first_;
        return first == kNoNode ? kNoNode : nodes_[first].prev_;
    }

    // Links a node that has no place yet.
    void Append(NodeIndex parent, NodeIndex child) noexcept;
    void InsertBefore(NodeIndex next, NodeIndex child) noexcept;
    // Takes a node out of its place, if it has one. Its children stay with it.
    void Remove(NodeIndex node) noexcept;
    // Appends all children of `from` to `to`, in order.
    void MoveChildren(NodeIndex from, NodeIndex to) noexcept;
    // Puts an element that the page does not spell out between `parent` and all its children.
    void Enclose(NodeIndex parent, Tag tag, unsigned int keyword) noexcept;
    // A line break as the last child, a line break and a text of one blank in front of a node. The page does
    // not spell them out.
    void AppendBreak(NodeIndex parent) noexcept;
    void InsertBreak(NodeIndex next) noexcept;
    void InsertSpace(NodeIndex next) noexcept;
    // Lifts what lies deeper than `depth` elements below the document up to that depth, in document order.
    void LimitDepth(unsigned int depth) noexcept;

    // Appends characters to a text node.
    void AppendToText(NodeIndex text, TextKind kind, unsigned int position, unsigned int length) noexcept;
    // No more characters go into the text: something that is not delivered follows it.
    void CloseText(NodeIndex text) noexcept { nodes_[text].word_ |= kClosedText; }
    bool IsOpenText(NodeIndex node) const noexcept {
        return TypeOf(node) == NodeType::kText && (nodes_[node].word_ & kClosedText) == 0;
    }
    void GetText(const Node& text, std::u16string& out) const;
    // See HtmlTreeNode.
    std::size_t DecodeRoom(const Node& text) const noexcept;
    char16_t* Decode(const Node& text, char16_t* units) const noexcept;
    void GetSpans(const Node& text, std::vector<TextSpan>& spans) const;

    // The attributes of a later tag that count for an element that is there already (html and body), behind
    // its own.
    void MergeAttributes(NodeIndex element, unsigned int position) noexcept;
    // Calls visit(const Attribute&) for the element's attributes, in the order in which they count, until it
    // returns false. Of several with one name the first one counts.
    template <class Visit>
    void VisitAttributes(const Node& element, Visit visit) const;

    bool HasAttribute(NodeIndex element, std::string_view name) const noexcept;

    // The element's name as the page spells it; for one that the page does not spell out, as the standard
    // does.
    std::string_view Name(NodeIndex element) const noexcept;
    // Whether that name, of an element that the page spells out, is `name` in any letter case.
    bool IsNamed(NodeIndex element, Span name) const noexcept;

    // Ask the memory for what is looked at soon: a node, and the source some way behind `position`, for a
    // walk in document order.
    void ReadAhead(NodeIndex node) const noexcept { __builtin_prefetch(&nodes_[node]); }
    void ReadAheadInSource(unsigned int position) const noexcept {
        __builtin_prefetch(source_ + std::min(std::size_t{position} + kReadAhead, std::size_t{size_}));
    }

private:
    static constexpr std::size_t kReadAhead = 2048;  // bytes
    static constexpr unsigned int kTagShift = 8;
    static constexpr unsigned int kNamespaceShift = 16;
    static constexpr unsigned int kTypeShift = 19;
    static constexpr unsigned int kTypeMask = 7;
    static constexpr unsigned int kTextKindShift = 22;
    static constexpr unsigned int kNoteShift = kTextKindShift;  // of an element
    static constexpr unsigned int kClosedText = 1u << 24;
    static constexpr unsigned int kAttributeShift = 26;
    static constexpr unsigned int kKeptAttributes = kHasHref | kDescribesItself;
    static constexpr unsigned int kSpaceText = 1u << 31;  // one blank
    static constexpr unsigned int kPieces = 1u << 25;     // first_ is the first piece of a list

    struct TextPiece {
        unsigned int position;
        unsigned int length;
        TextKind kind;
        unsigned int next;  // 0: the last one
        unsigned int tail;  // of the first piece: the last one
    };
    // Calls visit(position, length, kind) for the parts of a text, in order.
    template <class Visit>
    void VisitPieces(const Node& text, Visit visit) const;

    struct MergedTag {
        NodeIndex element;
        unsigned int position;
    };

    static constexpr unsigned int WordOf(NodeType type) noexcept {
        return static_cast<unsigned int>(type) << kTypeShift;
    }

    // Whether the source has nothing but white space there.
    bool IsSpace(unsigned int position, unsigned int length) const noexcept {
        const char* const first = source_ + position;
        return IsHtmlSpace(*first) && FindNoSpace(first + 1, first + length) == first + length;
    }

    NodeIndex NewNode(unsigned int word, unsigned int position, unsigned int length) noexcept {
        if (count_ == capacity_) [[unlikely]] {
            if (!Grow()) return kSpareNode;
        }
        Node& node = nodes_[count_];
        node.word_ = word;
        node.position_ = position;
        node.length_ = length;
        node.index_ = count_;
        node.parent_ = node.first_ = node.next_ = node.prev_ = kNoNode;
        return count_++;
    }
    struct NodeHead {
        unsigned int word, position, length;
    };
    NodeHead HeadOf(NodeIndex node) const noexcept {
        return {nodes_[node].word_, nodes_[node].position_, nodes_[node].length_};
    }
    NodeIndex NewBreak() noexcept { return NewNode(kKeywordBreak | WordOf(NodeType::kBreak), 0, 0); }
    bool Grow() noexcept;
    std::size_t NextCapacity() const noexcept;
    unsigned int NewPiece(TextKind kind, unsigned int position, unsigned int length) noexcept;
    template <class Visit>
    bool VisitTag(unsigned int position, Visit& visit) const;

    ZOT::SharedCount* holders_ = nullptr;  // its last holder deletes it
    bool handedOut_ = false;
    char* source_ = nullptr;
    unsigned int size_ = 0;
    Node* nodes_ = nullptr;
    unsigned int count_ = 0;
    unsigned int capacity_ = 0;
    bool failed_ = false;
    bool has_[kTagCount] = {};
    ZOT::FastVector<TextPiece> pieces_;
    ZOT::FastVector<MergedTag> merged_;
};

inline void NodeStore::Append(NodeIndex parent, NodeIndex child) noexcept {
    Node& up = nodes_[parent];
    Node& node = nodes_[child];
    node.parent_ = parent;
    node.next_ = kNoNode;
    if (up.first_ == kNoNode) {
        up.first_ = node.prev_ = child;
        return;
    }
    Node& first = nodes_[up.first_];
    node.prev_ = first.prev_;
    nodes_[first.prev_].next_ = child;
    first.prev_ = child;
}

template <class Visit>
bool NodeStore::VisitTag(unsigned int position, Visit& visit) const {
    AttributeReader reader(FindTagNameEnd(source_ + position + 1, SourceEnd()), SourceEnd());
    Attribute attribute;
    while (reader.Next(attribute)) {
        if (!visit(static_cast<const Attribute&>(attribute))) return false;
    }
    return true;
}

template <class Visit>
void NodeStore::VisitAttributes(const Node& element, Visit visit) const {
    if (element.length_ != 0 && !VisitTag(element.position_, visit)) return;
    // Only these take attributes of later tags, of which a page may have any number.
    const Tag name = TagOf(element.index_);
    if (name != Tag::kHtml && name != Tag::kBody) return;
    for (const MergedTag& tag : merged_) {
        if (tag.element == element.index_ && !VisitTag(tag.position, visit)) return;
    }
}

}  // namespace ZOTParser

#pragma once

#include <cstddef>
#include <iterator>
#include <new>
#include <string>
#include <vector>
#include <zot/charset.h>
#include <zot/ref_count.h>
#include <zot/stream.h>
#include <zot/stream_parser.h>

// The HTML parser: bytes in, the tree that a browser builds (WHATWG HTML standard, scripting off) out, each
// node with its role and its place in the source.

namespace ZOTParser {

// The keyword ids: the roles that nodes play. They are the low eight bits of a node's keyword word.
enum KeywordId : unsigned int {
    kKeywordInline = 1,   // no role: its children count as if they stood in its place
    kKeywordHead = 3,     // row group
    kKeywordSkipped = 4,  // nothing below is read
    kKeywordHeading = 5,
    kKeywordFoot = 9,  // foot row group
    kKeywordList = 11,
    kKeywordBlock = 12,
    kKeywordRow = 15,
    kKeywordListItem = 18,
    kKeywordHeaderCell = 21,
    kKeywordParagraph = 22,
    kKeywordRule = 23,     // break before
    kKeywordClutter = 26,  // of the block reading: nothing below is read, but a reader of the page sees it
    kKeywordCell = 27,
    kKeywordBreak = 28,
    kKeywordAnchor = 31,
    kKeywordLegend = 33,  // break after
    kKeywordBody = 39,    // row group
    kKeywordDefinition = 40,
    kKeywordAddress = 42,
    kKeywordForm = 44,
    kKeywordQuote = 49,
    kKeywordTable = 50,
    kKeywordPreformatted = 54,
    kKeywordText = 72,
};

// Bit of the keyword word that marks a link.
constexpr unsigned int kLinkFlag = 0x40000;

// How the pages parsed with it are read, and which role each tag plays. Building the tree does not depend on
// it. Immutable once built: any number of threads may parse with one table.
//
// In the table reading a page's tables are the table elements, and every tag has one role. In the block
// reading the layout blocks (div, section, article, ...) are tables too, each of one row and one cell, which
// hold what stands in the block and are no elements of the page; what a browser does not show is skipped, and
// what stands around the content is clutter.
class QUILL_API HtmlKeywordTable {
public:
    enum PrtType : unsigned int {
        // The table reading for a page without layout blocks and for one laid out wholly with tables, the
        // block reading for every other page. What the library uses.
        kDefaultReading = 0,
        kTableReading = 1,
        kBlockReading = 2,
    };

    // What HtmlDocTree::GetText gives.
    enum NodeAtt : unsigned int {
        kDocumentText = 256,  // all the text that a reader of the page could see
    };

    explicit HtmlKeywordTable(PrtType type);

    PrtType Type() const noexcept { return type_; }

    // The keyword word, in the table reading, of an element with the tag `tag` (an index of the parser's tag
    // list). Its link flag says that the element is a link if it has an address (`href`).
    unsigned int Word(unsigned int tag) const noexcept { return words_[tag]; }

    static constexpr unsigned int kTags = 256;  // room of the tag list

private:
    PrtType type_;
    unsigned int words_[kTags];
};

// Where characters of a text stand in the UTF-8 text that was parsed, in bytes.
struct TextSpan {
    unsigned int position;
    unsigned int length;
    bool verbatim;  // "&" and "<" stand for themselves there: a CDATA section, or an element such as xmp
};

// The tree of one document.
//
// Its nodes live in one store that is freed when the tree and the last entry taken from it are gone: an entry
// that is held keeps all nodes alive. Reading is safe from several threads, parsing into it is not.
class QUILL_API HtmlDocTree : public ZOT::PoolObject {
public:
    class HtmlTreeNode;
    class ChildIterator;
    class ChildRange;

    // An empty tree for a document in the character set `charset`; kCharsetNone lets the parser find it out.
    explicit HtmlDocTree(ZOT::CHARSET charset);
    HtmlDocTree(const HtmlDocTree&) = delete;  // a tree is as large as its page: share its entries instead
    HtmlDocTree& operator=(const HtmlDocTree&) = delete;
    ~HtmlDocTree();

    // Whether a document was parsed. A page without anything but what the parser implies is none.
    bool HasDocument() const noexcept;

    // The top-level entries: the html element, or nothing.
    ChildRange Entries() const noexcept;

    // Replaces `text` by the text of the document that `kind` names; by nothing for a kind that does not
    // exist.
    void GetText(std::u16string& text, HtmlKeywordTable::NodeAtt kind) const;

    // The character set given, or the one found.
    ZOT::CHARSET Charset() const noexcept { return charset_; }

    // Bytes of the UTF-8 text that was parsed: the range of source positions.
    unsigned int SourceSize() const noexcept;

private:
    friend class HtmlDocParser;

    ZOT::CHARSET charset_;
    ZOT::RefCount<HtmlTreeNode> document_;  // the parent of the top-level entries
};

// One element or text of the tree. 32 bytes, and all nodes of a tree stand in one array; the links are
// indices into it, 0 for none. Slot 0 is no node: it holds the way to the store.
class QUILL_API HtmlDocTree::HtmlTreeNode {
public:
    HtmlTreeNode(const HtmlTreeNode&) = delete;  // a node is found by its place in the array
    HtmlTreeNode& operator=(const HtmlTreeNode&) = delete;

    // The keyword id in the low eight bits, kLinkFlag, and bits of the parser's own.
    unsigned int KeywordWord() const noexcept { return word_; }
    unsigned int Keyword() const noexcept { return word_ & 0xFF; }
    bool IsLink() const noexcept { return (word_ & kLinkFlag) != 0; }

    // Where the node stands in the UTF-8 text that was parsed, in bytes: a text from its first to its last
    // character, an element its start tag. 0 and 0 for an element that the page does not spell out.
    unsigned int SourcePosition() const noexcept { return position_; }
    unsigned int SourceLength() const noexcept { return length_; }

    bool HasChildren() const noexcept;
    ChildRange Children() const noexcept;

    // Replaces `text` by the characters of a text node: character references decoded, newlines normalised,
    // invalid bytes as U+FFFD. Nothing for other nodes.
    void GetText(std::u16string& text) const;

    // The same without a string: writes the characters to `units`, where DecodeRoom() units have room (a few
    // more than there are), and returns their end.
    std::size_t DecodeRoom() const noexcept;
    char16_t* Decode(char16_t* units) const noexcept;

    // Replaces `spans` by the places of a text node's characters, in order and none of them empty. They lie
    // between SourcePosition and its end, with what is no part of the text between them: markup that the
    // parser ignored, or all that stands between the parts of a text that a table pushed out. Nothing for
    // other nodes.
    void GetSpans(std::vector<TextSpan>& spans) const;

    // Whether GetText gives nothing but HTML's white space, and something: the space between two tags. Costs
    // nothing. False for other nodes.
    bool IsSpace() const noexcept { return (word_ & kSpaceFlag) != 0; }

    // Replaces `value` by the value of the attribute `name` (ASCII, lower case) as UTF-8. Empty: no such
    // attribute, or no value.
    void GetParam(const std::string& name, std::string& value) const;

    // A node does not own its memory: deleting one, which the last holder of an entry does, frees the store.
    static void operator delete(HtmlTreeNode* node, std::destroying_delete_t) noexcept;

private:
    friend class NodeStore;
    friend class ChildIterator;
    friend class ZOT::RefCount<HtmlTreeNode>;  // Clang 14 wants the destructor even for a destroying delete
    HtmlTreeNode() noexcept = default;
    ~HtmlTreeNode() = default;

    static constexpr unsigned int kSpaceFlag = 1u << 30;  // of the keyword word of a text

    unsigned int word_;
    unsigned int position_;
    unsigned int length_;
    unsigned int index_;  // of this node
    unsigned int parent_;
    unsigned int first_;  // first child; a text: its first further piece, see NodeStore
    unsigned int next_;   // next sibling
    unsigned int prev_;   // previous sibling; the first child has the last one here
};

// Walks the child entries of a node in document order. `*it` is the entry, a counted holder; `it->` reaches
// the node without touching a count.
class HtmlDocTree::ChildIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = ZOT::RefCount<HtmlTreeNode>;
    using difference_type = std::ptrdiff_t;
    using pointer = const HtmlTreeNode*;
    using reference = value_type;

    ChildIterator() noexcept = default;
    explicit ChildIterator(const HtmlTreeNode* node) noexcept : node_(node) {}

    QUILL_API value_type operator*() const;
    const HtmlTreeNode* operator->() const noexcept { return node_; }
    ChildIterator& operator++() noexcept {
        node_ = node_->next_ == 0 ? nullptr : node_ - node_->index_ + node_->next_;
        return *this;
    }
    ChildIterator operator++(int) noexcept {
        ChildIterator old(*this);
        ++*this;
        return old;
    }
    friend bool operator==(ChildIterator a, ChildIterator b) noexcept { return a.node_ == b.node_; }
    friend bool operator!=(ChildIterator a, ChildIterator b) noexcept { return a.node_ != b.node_; }

private:
    const HtmlTreeNode* node_ = nullptr;  // null: the end
};

class HtmlDocTree::ChildRange {
public:
    explicit ChildRange(const HtmlTreeNode* first) noexcept : first_(first) {}
    ChildIterator Begin() const noexcept { return ChildIterator(first_); }
    ChildIterator End() const noexcept { return ChildIterator(); }
    ChildIterator begin() const noexcept { return Begin(); }
    ChildIterator end() const noexcept { return End(); }

private:
    const HtmlTreeNode* first_;
};

inline bool HtmlDocTree::HtmlTreeNode::HasChildren() const noexcept {
    return first_ != 0 && Keyword() != kKeywordText;
}

inline HtmlDocTree::ChildRange HtmlDocTree::HtmlTreeNode::Children() const noexcept {
    return ChildRange(HasChildren() ? this - index_ + first_ : nullptr);
}

// Parses one page into a tree. The stream, the table and the tree belong to the caller and outlive the
// parser.
class QUILL_API HtmlDocParser : public ZOT::PoolObject {
public:
    HtmlDocParser(ZOT::BinaryStreamBuf& stream, HtmlKeywordTable& table, HtmlDocTree& tree);
    HtmlDocParser(const HtmlDocParser&) = delete;  // one parser, one parse
    HtmlDocParser& operator=(const HtmlDocParser&) = delete;
    ~HtmlDocParser();

    // Reads the stream from its read position to its end and fills the tree, which is empty. True when the
    // tree then holds a document; false for a page without content, and when memory runs out (the tree stays
    // empty).
    bool Parse();

private:
    unsigned char* ReadSource(unsigned int& size);

    ZOTFile::BinaryStreamParser* reader_;
    HtmlKeywordTable& table_;
    HtmlDocTree& tree_;
};

}  // namespace ZOTParser

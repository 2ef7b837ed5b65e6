#include <zot/conv.h>
#include <zot/detect.h>
#include <zot/parser.h>

#include "node_store.h"
#include "roles.h"
#include "tree_builder.h"

namespace ZOTParser {
namespace {

constexpr unsigned char kByteOrderMark[] = {0xEF, 0xBB, 0xBF};

// Where the text begins: positions count a byte-order mark, but it is no text.
unsigned int SkipByteOrderMark(const NodeStore& nodes) noexcept {
    const bool marked = nodes.SourceSize() >= sizeof kByteOrderMark &&
                        std::memcmp(nodes.Source(), kByteOrderMark, sizeof kByteOrderMark) == 0;
    return marked ? sizeof kByteOrderMark : 0;
}

// Whether the page gave anything besides the elements that every document has.
bool HasContent(const NodeStore& nodes) noexcept {
    for (NodeIndex node = kFirstNode; node < nodes.End(); ++node) {
        const Tag tag = nodes.TagOf(node);
        const bool frame = tag == Tag::kHtml || tag == Tag::kHead || tag == Tag::kBody;
        if (!frame || nodes[node].SourceLength() != 0) return true;
    }
    return false;
}

// False when nothing comes of the page, and when memory runs out.
bool BuildTree(NodeStore& nodes, const HtmlKeywordTable& keywords) noexcept {
    TreeBuilder(nodes, {}).Run(SkipByteOrderMark(nodes));
    return !nodes.Failed() && HasContent(nodes) && AssignRoles(nodes, keywords);
}

}  // namespace

HtmlDocParser::HtmlDocParser(ZOT::BinaryStreamBuf& stream, HtmlKeywordTable& table, HtmlDocTree& tree)
    : reader_(new ZOTFile::BinaryStreamParser(stream)), table_(table), tree_(tree) {}

HtmlDocParser::~HtmlDocParser() {
    delete reader_;
}

bool HtmlDocParser::Parse() {
    unsigned int size = 0;
    unsigned char* const source = ReadSource(size);
    if (source == nullptr) return false;
    auto* const nodes = new NodeStore;
    if (nodes == nullptr) {
        ZOT::PoolFree(source);
        return false;
    }
    if (!nodes->Init(source, size) || !BuildTree(*nodes, table_)) {
        delete nodes;
        return false;
    }
    tree_.document_ = nodes->HandOut();
    return true;
}

// The page as UTF-8 in memory that is the caller's, or null.
unsigned char* HtmlDocParser::ReadSource(unsigned int& size) {
    if (reader_ == nullptr || !reader_->ReadAll(kSourcePadding) || reader_->Size() == 0) return nullptr;
    if (tree_.charset_ == ZOT::kCharsetNone) {
        tree_.charset_ = ZOT::DetectEncoding(reader_->Data(), reader_->Size());
    }
    if (tree_.charset_ == ZOT::kCharsetUtf8) {
        size = reader_->Size();
        return size > kLongestSource ? nullptr : reader_->Detach();
    }
    ZOT::PoolBuffer utf8;
    if (!ZOTCharset::ToUtf8(tree_.charset_, reader_->Data(), reader_->Size(), utf8, kSourcePadding))
        return nullptr;
    if (utf8.Size() > kLongestSource) return nullptr;
    size = static_cast<unsigned int>(utf8.Size());
    return utf8.Detach();
}

}  // namespace ZOTParser

#include <quill/partitions.h>

#include "call_memory.h"
#include "tree_builder.h"
#include "write_text.h"

namespace QuillNS {
namespace {

constexpr std::size_t kChildrenRoom = 16;  // of a new partition

void Share(const HtmlDocPartitions::Children& source, HtmlDocPartitions::Children& target) {
    for (const auto& child : source) target.Append(child);
}

}  // namespace

HtmlDocPartitions::HtmlDocPartitions() {
    children.Reserve(kChildrenRoom);
}

HtmlDocPartitions::HtmlDocPartitions(const ZOT::RefCount<ZOT::BinaryStream>& sharedStream,
                                     ZOT::CHARSET itsCharset, ContentType itsType)
    : stream(sharedStream), charset(itsCharset), contentType(itsType) {
    children.Reserve(kChildrenRoom);
}

HtmlDocPartitions::HtmlDocPartitions(const HtmlDocPartitions& other)
    : ZOT::PoolObject(), stream(other.stream), charset(other.charset), contentType(other.contentType) {
    children.Reserve(other.children.Size());
    Share(other.children, children);
}

HtmlDocPartitions& HtmlDocPartitions::operator=(const HtmlDocPartitions& other) {
    if (this == &other) return *this;
    const HtmlDocPartitions kept(
        other);  // `other` goes with the children when it stands below this partition
    stream = kept.stream;
    charset = kept.charset;
    contentType = kept.contentType;
    children.Clear();
    if (kept.children.Size() > children.Capacity()) children.Reserve(kept.children.Size());
    Share(kept.children, children);
    return *this;
}

HtmlDocPartitions::~HtmlDocPartitions() = default;

bool Beautify(const HtmlDocPartitions& partitions, std::u16string& text, std::u16string* documentText,
              DocumentType* type) {
    const ZOTMem::CallMemory memory;
    text.clear();
    return WriteText(BuildPartitionTree(partitions, documentText), text, type);
}

bool Beautify(const HtmlDocPartitions& partitions, ZOT::BinaryStreamBuf& out, std::u16string* documentText,
              DocumentType* type) {
    const ZOTMem::CallMemory memory;
    WriteText(BuildPartitionTree(partitions, documentText), out, type);
    return out.vSize() > 0;
}

}  // namespace QuillNS

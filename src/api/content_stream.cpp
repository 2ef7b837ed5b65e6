#include "content_stream.h"

#include <zot/memory_buffer.h>

namespace QuillNS {
namespace {

constexpr unsigned int kContentSize = 16384;  // first allocation of a document's bytes

}  // namespace

ZOT::RefCount<ZOT::BinaryStream> NewContentStream() {
    auto* const buffer = new ZOTFile::MemoryBuffer(kContentSize);
    if (buffer == nullptr) return {};
    auto* const stream = new ZOT::BinaryStream(buffer, true);
    if (stream == nullptr) delete buffer;
    return ZOT::RefCount<ZOT::BinaryStream>(stream);
}

}  // namespace QuillNS

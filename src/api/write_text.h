#pragma once

#include <string>
#include <quill/document_type.h>
#include <quill/table.h>
#include <zot/memory_buffer.h>
#include <zot/smart_ptr.h>
#include <zot/stream.h>

namespace QuillNS {

// First allocation of a buffer that takes the text of a page before it goes to the caller, in bytes.
constexpr unsigned int kWorkBufferSize = 4096;

// Takes the text of a page before it goes to the caller: all of it, or nothing when memory runs out.
class WorkBuffer final : public ZOTFile::MemoryBuffer {
public:
    WorkBuffer() : MemoryBuffer(kWorkBufferSize) {}

    unsigned int vPut(const void* bytes, unsigned int count) override {
        const unsigned int written = whole_ ? MemoryBuffer::vPut(bytes, count) : 0;
        if (written == count) return written;
        whole_ = false;
        vClear();
        return 0;
    }

private:
    bool whole_ = true;
};

// The last steps of every Beautify. A null root (memory ran out) has no text and counts as LinkPage. `type`
// may be null.

// Replaces `text` by the text of the tree. True when there is any.
bool WriteText(const ZOT::SmartPtr<KTable>& root, std::u16string& text, DocumentType* type);

// Appends the text of the tree to `out` at its write position.
void WriteText(const ZOT::SmartPtr<KTable>& root, ZOT::BinaryStreamBuf& out, DocumentType* type);

}  // namespace QuillNS

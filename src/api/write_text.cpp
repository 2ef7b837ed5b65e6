#include "write_text.h"

#include <quill/text_extractor.h>

#include "call_memory.h"

namespace QuillNS {

bool WriteText(const ZOT::SmartPtr<KTable>& root, std::u16string& text, DocumentType* type) {
    text.clear();
    WorkBuffer buffer;
    WriteText(root, buffer, type);
    text.reserve(buffer.vSize() / sizeof(char16_t));
    ZOTMem::PreferLargePages(text.data(), buffer.vSize());
    buffer.SeekG(0, ZOT::kFromBegin);
    buffer.Copy(text, ZOT::kWholeStream);
    return !text.empty();
}

void WriteText(const ZOT::SmartPtr<KTable>& root, ZOT::BinaryStreamBuf& out, DocumentType* type) {
    DocumentType found = LinkPage;
    if (root) ExtractText(root, &out, &found);
    if (type != nullptr) *type = found;
}

}  // namespace QuillNS

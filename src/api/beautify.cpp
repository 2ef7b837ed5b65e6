#include <quill/beautify.h>

#include "call_memory.h"
#include "tree_builder.h"
#include "write_text.h"

namespace QuillNS {

bool Beautify(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset, std::u16string& text,
              std::u16string* documentText, DocumentType* type) {
    const ZOTMem::CallMemory memory;
    text.clear();
    ZOT::SmartPtr<KTable> root = MakeRoot();
    BuildTree(page, charset, root, documentText);
    return WriteText(root, text, type);
}

bool Beautify(ZOTParser::HtmlDocTree& tree, std::u16string& text, std::u16string* documentText,
              DocumentType* type) {
    text.clear();
    ZOT::SmartPtr<KTable> root = MakeRoot();
    BuildTree(tree, root, documentText);
    return WriteText(root, text, type);
}

bool Beautify(ZOTParser::HtmlDocTree& tree, ZOT::BinaryStreamBuf& out, std::u16string* documentText,
              DocumentType* type) {
    ZOT::SmartPtr<KTable> root = MakeRoot();
    BuildTree(tree, root, documentText);
    WorkBuffer buffer;
    WriteText(root, buffer, type);
    if (buffer.vSize() == 0) return false;
    buffer.SeekG(0, ZOT::kFromBegin);
    buffer.Copy(out, ZOT::kWholeStream);
    return true;
}

bool Beautify(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset, ZOT::BinaryStreamBuf& out,
              std::u16string* documentText, DocumentType* type) {
    const ZOTMem::CallMemory memory;
    ZOT::SmartPtr<KTable> root = MakeRoot();
    BuildTree(page, charset, root, documentText);
    WriteText(root, out, type);
    return out.vSize() > 0;
}

ZOT::SmartPtr<KTable> GetDocumentTree(ZOT::BinaryStreamBuf& page, ZOT::CHARSET charset) {
    ZOT::SmartPtr<KTable> root = MakeRoot();
    BuildTree(page, charset, root, nullptr);
    return root;
}

ZOT::SmartPtr<KTable> GetDocumentTree(ZOTParser::HtmlDocTree& tree) {
    ZOT::SmartPtr<KTable> root = MakeRoot();
    BuildTree(tree, root, nullptr);
    return root;
}

}  // namespace QuillNS

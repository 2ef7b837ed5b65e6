#include <zot/parser.h>

#include "document_text.h"
#include "node_store.h"
#include "tokenizer.h"

namespace ZOTParser {

HtmlDocTree::HtmlDocTree(ZOT::CHARSET charset) : charset_(charset) {}

HtmlDocTree::~HtmlDocTree() = default;

bool HtmlDocTree::HasDocument() const noexcept {
    return static_cast<bool>(document_);
}

HtmlDocTree::ChildRange HtmlDocTree::Entries() const noexcept {
    return document_ ? document_->Children() : ChildRange(nullptr);
}

void HtmlDocTree::GetText(std::u16string& text, HtmlKeywordTable::NodeAtt kind) const {
    text.clear();
    if (kind == HtmlKeywordTable::kDocumentText) DocumentText(*this, text);
}

unsigned int HtmlDocTree::SourceSize() const noexcept {
    return document_ ? NodeStore::Of(*document_)->SourceSize() : 0;
}

void HtmlDocTree::HtmlTreeNode::GetText(std::u16string& text) const {
    text.clear();
    if (Keyword() == kKeywordText) NodeStore::Of(*this)->GetText(*this, text);
}

std::size_t HtmlDocTree::HtmlTreeNode::DecodeRoom() const noexcept {
    return Keyword() == kKeywordText ? NodeStore::Of(*this)->DecodeRoom(*this) : 0;
}

char16_t* HtmlDocTree::HtmlTreeNode::Decode(char16_t* units) const noexcept {
    return Keyword() == kKeywordText ? NodeStore::Of(*this)->Decode(*this, units) : units;
}

void HtmlDocTree::HtmlTreeNode::GetSpans(std::vector<TextSpan>& spans) const {
    spans.clear();
    if (Keyword() == kKeywordText) NodeStore::Of(*this)->GetSpans(*this, spans);
}

void HtmlDocTree::HtmlTreeNode::GetParam(const std::string& name, std::string& value) const {
    value.clear();
    if (Keyword() == kKeywordText) return;
    NodeStore::Of(*this)->VisitAttributes(*this, [&](const Attribute& attribute) {
        if (!IsIgnoringCase(attribute.name, name)) return true;
        AppendDecodedAttribute(attribute.value.first, attribute.value.last, value);
        return false;
    });
}

void HtmlDocTree::HtmlTreeNode::operator delete(HtmlTreeNode* node, std::destroying_delete_t) noexcept {
    delete NodeStore::Of(*node);
}

HtmlDocTree::ChildIterator::value_type HtmlDocTree::ChildIterator::operator*() const {
    return NodeStore::Of(*node_)->Entry(node_->index_);
}

}  // namespace ZOTParser

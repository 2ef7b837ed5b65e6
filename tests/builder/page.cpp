#include "page.h"

#include <zot/memory_buffer.h>

#include "tree_builder.h"

namespace QuillNS {
namespace {

using ZOTParser::HtmlDocTree;

HtmlDocTree::ChildIterator FindTable(HtmlDocTree::ChildRange nodes) {
    for (auto node = nodes.Begin(); node != nodes.End(); ++node) {
        if (node->Keyword() == ZOTParser::kKeywordTable) return node;
        const auto below = FindTable(node->Children());
        if (below != HtmlDocTree::ChildIterator()) return below;
    }
    return {};
}

std::string Quoted(const std::u16string& text) {
    std::string quoted = "'";
    for (const char16_t unit : text) {
        const char shown = unit == u'\n' ? '/' : unit < 0x80 ? static_cast<char>(unit) : '?';
        quoted += shown;
    }
    return quoted + "'";
}

std::string Dump(KTable& table) {
    std::string dump = "{";
    for (unsigned int row = 0; row != table.Rows(); ++row) {
        if (row != 0) dump += " ;";
        for (unsigned int col = 0; col != table.Cols(); ++col) {
            if (row != 0 || col != 0) dump += " ";
            const auto& cell = table.GetCell(col, row);
            dump += cell ? "(" + Dump(*cell) + ")" : ".";
        }
    }
    return dump + "}";
}

}  // namespace

Page::Page(std::string_view html) : tree_(ZOT::kCharsetUtf8) {
    const std::string bytes(html);
    ZOTFile::MemoryBuffer stream(bytes.data(), static_cast<unsigned int>(bytes.size()), 0);
    ZOTParser::HtmlKeywordTable keywords(ZOTParser::HtmlKeywordTable::kTableReading);
    ZOTParser::HtmlDocParser(stream, keywords, tree_).Parse();
}

HtmlDocTree::ChildRange Page::FirstTable() const {
    return FindTable(tree_.Entries())->Children();
}

ZOT::SmartPtr<KTable> ContentOf(std::string_view html) {
    Page page(html);
    ZOT::SmartPtr<KTable> root = MakeRoot();
    BuildTree(page.Tree(), root, nullptr);
    return root;
}

ZOT::SmartPtr<KCell> BodyOf(std::string_view html) {
    return ContentOf(html)->GetCell(0, 1);
}

std::string Dump(const KCell& cell) {
    std::string dump;
    for (const auto& item : cell) {
        if (!dump.empty()) dump += " ";
        dump += item->IsText() ? Quoted(item->Text()) : Dump(*item->Table());
    }
    return dump;
}

std::string DumpBody(std::string_view html) {
    // The table owns the cell's way to its parent: keep it.
    const ZOT::SmartPtr<KTable> root = ContentOf(html);
    const auto& body = root->GetCell(0, 1);
    return body ? Dump(*body) : "none";
}

}  // namespace QuillNS

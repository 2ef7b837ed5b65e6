#include "tree_builder.h"

#include "node_walker.h"
#include "start_up.h"

namespace QuillNS {
namespace {

// Rows of a root table.
constexpr unsigned int kRootRows = 3;
constexpr unsigned int kBodyRow = 1;
constexpr unsigned int kPartitionRow = 2;

void TakeDocumentText(const ZOTParser::HtmlDocTree& tree, std::u16string& text) {
    std::u16string documentText;
    tree.GetText(documentText, ZOTParser::HtmlKeywordTable::kDocumentText);
    if (!documentText.empty()) text.swap(documentText);
}

bool HasOwnContent(const HtmlDocPartitions& partition) {
    const bool isRead = partition.contentType == HtmlDocPartitions::HtmlContent ||
                        partition.contentType == HtmlDocPartitions::TextContent;
    return isRead && partition.stream && partition.stream->Buffer() != nullptr &&
           partition.charset != ZOT::kCharsetNone;
}

// False when memory runs out.
bool AddChildPartitions(const HtmlDocPartitions& partition, KTable& root) {
    const ZOT::SmartPtr<KCell> cell = root.CreateCell(0, kPartitionRow);
    if (!cell) return false;
    for (const auto& child : partition.children) {
        const ZOT::SmartPtr<KTable> childRoot = BuildPartitionTree(*child, nullptr);
        const ZOT::SmartPtr<KCellItem> item = cell->AddCellItem();
        if (!childRoot || !item) return false;
        item->Table(childRoot);
        cell->AddTables(1);
    }
    return true;
}

}  // namespace

ZOT::SmartPtr<KTable> MakeRoot() {
    return {new KTable(nullptr, 1, kRootRows, 0), true};
}

void BuildTree(ZOT::BinaryStreamBuf& stream, ZOT::CHARSET charset, ZOT::SmartPtr<KTable>& root,
               std::u16string* text) {
    ZOTParser::HtmlDocTree tree(charset);
    ZOTParser::HtmlDocParser parser(stream, SharedKeywordTable(), tree);
    parser.Parse();
    BuildTree(tree, root, text);
}

void BuildTree(ZOTParser::HtmlDocTree& tree, ZOT::SmartPtr<KTable>& root, std::u16string* text) {
    if (!tree.HasDocument()) return;
    if (text != nullptr) TakeDocumentText(tree, *text);
    const auto entries = tree.Entries();
    const bool hasContent = entries.Begin() != entries.End() && entries.Begin()->HasChildren();
    if (!hasContent || !root) return;

    NodeWalker walker(tree.SourceSize());
    ZOT::SmartPtr<KCell> body = root->CreateCell(0, kBodyRow);
    if (body) walker.ParseNodes(entries.Begin(), entries.End(), body, false, false);
    if (!body || walker.OutOfMemory()) root = ZOT::SmartPtr<KTable>();
}

ZOT::SmartPtr<KTable> BuildPartitionTree(const HtmlDocPartitions& partition, std::u16string* text) {
    ZOT::SmartPtr<KTable> root = MakeRoot();
    if (HasOwnContent(partition)) BuildTree(*partition.stream->Buffer(), partition.charset, root, text);
    if (root && !AddChildPartitions(partition, *root)) root = ZOT::SmartPtr<KTable>();
    return root;
}

}  // namespace QuillNS

#include "roles.h"

#include "block_reading.h"
#include "reading_choice.h"
#include "table_roles.h"

namespace ZOTParser {
namespace {

bool ReadTables(NodeStore& nodes, const TableRoles& roles) noexcept {
    const NodeIndex end = nodes.End();
    for (NodeIndex node = kFirstNode; node < end; ++node) {
        if (nodes.TypeOf(node) != NodeType::kElement) continue;
        roles.Give(nodes, node);
        TableRoles::EndLine(nodes, node);
    }
    return !nodes.Failed();
}

}  // namespace

bool AssignRoles(NodeStore& nodes, const HtmlKeywordTable& keywords) noexcept {
    const TableRoles roles(keywords);
    const bool chooses = keywords.Type() == HtmlKeywordTable::kDefaultReading;
    const bool hasBlocks =
        keywords.Type() == HtmlKeywordTable::kBlockReading || roles.Has(nodes, kKeywordBlock);
    if (keywords.Type() == HtmlKeywordTable::kTableReading || !hasBlocks) return ReadTables(nodes, roles);
    PageOutline page;
    if (!page.Draw(nodes, roles)) return false;
    return (chooses && IsLaidOutWithTables(page)) || ReadBlocks(nodes, page);
}

}  // namespace ZOTParser

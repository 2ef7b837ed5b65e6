#pragma once

#include "node_store.h"

namespace ZOTParser {

// Whether the library reads a page by its layout tables: one that has no layout blocks, and one whose words
// stand in tables all but a few. Every other page is read by its blocks. The roles are assigned already.
bool IsLaidOutWithTables(const NodeStore& nodes) noexcept;

}  // namespace ZOTParser

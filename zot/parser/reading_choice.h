#pragma once

#include "page_outline.h"

namespace ZOTParser {

// Whether the library reads a page that has layout blocks by its layout tables all the same: one whose text
// stands in tables, but for a trifle, and without a layout block between table and text.
bool IsLaidOutWithTables(const PageOutline& page) noexcept;

}  // namespace ZOTParser

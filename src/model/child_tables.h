#pragma once

#include <quill/table.h>

namespace QuillNS {

// Call `visit` with each table (a ZOT::SmartPtr) that stands in a cell, in item order.
template <class Visit>
void VisitChildTables(const KCell& cell, Visit&& visit) {
    if (!cell.MayHoldTables()) return;
    for (const ZOT::SmartPtr<KCellItem>& item : cell) {
        if (item->IsTable()) visit(item->Table());
    }
}

// The same for all cells of a table's grid: column by column, not as the grid is kept.
template <class Visit>
void VisitChildTables(const KTable& table, Visit&& visit) {
    const ZOT::SmartPtr<KCell>* const grid = table.Begin();
    if (grid == table.End()) return;
    const std::size_t cols = table.Cols();
    const std::size_t rows = table.Rows();
    for (std::size_t col = 0; col < cols; ++col) {
        for (std::size_t row = 0; row < rows; ++row) {
            const ZOT::SmartPtr<KCell>& cell = grid[row * cols + col];
            if (cell) VisitChildTables(*cell, visit);
        }
    }
}

}  // namespace QuillNS

// The grid of a page's tables, against a plain layout that marks every slot of every span.

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz_target.h"
#include "grid_layout.h"
#include "zot/parsed_page.h"

namespace {

using NodeIterator = ZOTParser::HtmlDocTree::ChildIterator;
using ZOTParser::HtmlDocTree;

constexpr std::size_t kMostSlots = 1u << 16;  // a plain grid beyond this is not worth its time

// Rows in the order of the grid, each with its cells.
class PlainGrid {
public:
    explicit PlainGrid(HtmlDocTree::ChildRange table) {
        CountRows(table);
        NodeIterator foot;
        PlaceRows(table, &foot);
        if (foot != NodeIterator()) PlaceRows(foot->Children(), nullptr);
    }

    bool TooLarge() const { return slots_ > kMostSlots; }
    const std::vector<std::vector<QuillNS::LayoutSlot>>& Rows() const { return rows_; }

private:
    static bool IsGroup(NodeIterator node) {
        return node->Keyword() == ZOTParser::kKeywordBody || node->Keyword() == ZOTParser::kKeywordHead ||
               node->Keyword() == ZOTParser::kKeywordFoot;
    }

    void CountRows(HtmlDocTree::ChildRange nodes) {
        for (NodeIterator node = nodes.Begin(); node != nodes.End(); ++node) {
            if (node->Keyword() == ZOTParser::kKeywordRow) rows_.emplace_back();
            if (IsGroup(node)) CountRows(node->Children());
        }
    }

    void PlaceRows(HtmlDocTree::ChildRange nodes, NodeIterator* foot) {
        for (NodeIterator node = nodes.Begin(); node != nodes.End(); ++node) {
            if (node->Keyword() == ZOTParser::kKeywordRow) {
                PlaceRow(node->Children());
                ++row_;
            } else if (foot != nullptr && node->Keyword() == ZOTParser::kKeywordFoot) {
                if (node->HasChildren()) *foot = node;
            } else if (IsGroup(node)) {
                PlaceRows(node->Children(), foot);
            }
        }
    }

    void PlaceRow(HtmlDocTree::ChildRange nodes) {
        std::size_t col = 0;
        for (NodeIterator node = nodes.Begin(); node != nodes.End() && !TooLarge(); ++node) {
            if (node->Keyword() != ZOTParser::kKeywordCell &&
                node->Keyword() != ZOTParser::kKeywordHeaderCell) {
                continue;
            }
            while (col < rows_[row_].size() && rows_[row_][col].occupied) ++col;
            const std::size_t width = Span(node, "colspan", 1000);
            const std::size_t height = Span(node, "rowspan", rows_.size() - row_);
            slots_ += (col + width) * height;
            if (TooLarge()) return;
            for (std::size_t row = row_; row != row_ + height; ++row) {
                rows_[row].resize(std::max(rows_[row].size(), col + width));
                for (std::size_t covered = col; covered != col + width; ++covered) {
                    rows_[row][covered].occupied = true;
                }
            }
            rows_[row_][col].cell = node;
        }
    }

    static std::size_t Span(NodeIterator cell, const char* attribute, std::size_t most) {
        std::string value;
        cell->GetParam(attribute, value);
        if (value.empty()) return 1;
        const long long span = std::strtoll(value.c_str(), nullptr, 10);
        return span < 1 ? 1 : std::min(static_cast<std::size_t>(span), most);
    }

    std::vector<std::vector<QuillNS::LayoutSlot>> rows_;
    std::size_t row_ = 0;
    std::size_t slots_ = 0;
};

void RequireSameGrid(const QuillNS::LayoutGrid& grid, const PlainGrid& plain) {
    Require(grid.Rows() == plain.Rows().size(), "as many rows as the plain layout");
    for (unsigned int row = 0; row != grid.Rows(); ++row) {
        const auto& slots = plain.Rows()[row];
        Require(std::equal(grid[row].begin(), grid[row].end(), slots.begin(), slots.end(),
                           [](const QuillNS::LayoutSlot& a, const QuillNS::LayoutSlot& b) {
                               return a.occupied == b.occupied && a.cell == b.cell;
                           }),
                "the slots of the plain layout");
    }
}

void CheckTable(HtmlDocTree::ChildRange table) {
    const auto layOut = [&table](unsigned int sourceSize, QuillNS::LayoutGrid& grid) {
        QuillNS::GridBudget budget(sourceSize);
        unsigned int cols = 0;
        unsigned int rows = 0;
        const bool laidOut = QuillNS::LayoutTable(table.Begin(), table.End(), cols, rows, grid, budget);
        Require(laidOut || rows == 0, "only a table without rows is not laid out");
        for (unsigned int row = 0; laidOut && row != rows; ++row) {
            Require(grid[row].Size() <= cols, "no row is longer than the grid is wide");
        }
        return laidOut ? std::size_t{cols} * rows : 0;
    };
    QuillNS::LayoutGrid tight;
    layOut(0, tight);

    const PlainGrid plain(table);
    if (plain.TooLarge() || plain.Rows().empty()) return;
    QuillNS::LayoutGrid ample;
    layOut(0xFFFFFFFF, ample);
    RequireSameGrid(ample, plain);
}

void CheckTables(HtmlDocTree::ChildRange nodes) {
    for (NodeIterator node = nodes.Begin(); node != nodes.End(); ++node) {
        if (node->Keyword() == ZOTParser::kKeywordTable) CheckTable(node->Children());
        CheckTables(node->Children());
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ParsedPage page(std::string_view(reinterpret_cast<const char*>(data), size));
    CheckTables(page.Tree().Entries());
    return 0;
}

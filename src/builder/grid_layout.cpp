// Rows are filled from left to right. A cell takes the first free column and covers its spans:
//
//   <tr><td rowspan=2>A<td>B      A B
//   <tr><td>C                     . C      '.' is covered, so C starts in column 1
//
// What spans into a row from above is known from one number per column: the row in which the column is free
// again. So a cell costs its width, however many rows it covers, and each row is written once, when its cells
// are placed. Together that is never more than columns times rows, which the budget bounds.

#include "grid_layout.h"

#include <algorithm>
#include <iterator>

namespace QuillNS {
namespace {

using NodeIterator = ZOTParser::HtmlDocTree::ChildIterator;

// https://html.spec.whatwg.org/multipage/tables.html#dom-tdth-colspan
constexpr unsigned int kMaxColumnSpan = 1000;

const std::string kRowSpan = "rowspan";
const std::string kColumnSpan = "colspan";

bool IsRow(NodeIterator node) {
    return node->Keyword() == ZOTParser::kKeywordRow;
}

bool IsCell(NodeIterator node) {
    return node->Keyword() == ZOTParser::kKeywordCell || node->Keyword() == ZOTParser::kKeywordHeaderCell;
}

bool IsFoot(NodeIterator node) {
    return node->Keyword() == ZOTParser::kKeywordFoot;
}

bool IsRowGroup(NodeIterator node) {
    return node->Keyword() == ZOTParser::kKeywordBody || node->Keyword() == ZOTParser::kKeywordHead ||
           IsFoot(node);
}

unsigned int CountRows(NodeIterator first, NodeIterator last) {
    unsigned int rows = 0;
    for (NodeIterator node = first; node != last; ++node) {
        if (IsRow(node)) ++rows;
        if (IsRowGroup(node)) rows += CountRows(node->Children().Begin(), node->Children().End());
    }
    return rows;
}

template <class T>
bool GrowTo(ZOT::FastVector<T>& vector, std::size_t size) {
    while (vector.Size() < size) {
        if (!vector.Append(T())) return false;
    }
    return true;
}

// What of the page's wishes is granted. Each asks for fewer slots than the one before.
enum class Grant { kSpans, kNoSpans, kSingleColumn };

enum class Outcome { kPlaced, kOverBudget, kOutOfMemory };

}  // namespace

// One attempt to lay a table out.
class GridLayout {
public:
    GridLayout(LayoutGrid& grid, unsigned int rows, Grant grant, const GridBudget& budget)
        : slots_(grid.slots_),
          ends_(grid.ends_),
          freeFrom_(grid.freeFrom_),
          rows_(rows),
          grant_(grant),
          budget_(budget) {}

    Outcome Place(NodeIterator first, NodeIterator last);
    unsigned int Cols() const { return cols_; }

private:
    void PlaceRows(NodeIterator first, NodeIterator last);
    void PlaceRow(NodeIterator first, NodeIterator last);
    void PlaceCell(NodeIterator cell);
    void OpenRow();
    void CloseRow();

    unsigned int FirstFreeColumn() const;
    unsigned int Span(NodeIterator cell, const std::string& attribute, unsigned int most);
    void Cover(unsigned int firstCol, unsigned int lastCol, unsigned int freeFrom);

    void Check(bool allocated) {
        if (!allocated) outcome_ = Outcome::kOutOfMemory;
    }
    bool Stopped() const { return outcome_ != Outcome::kPlaced; }

    ZOT::FastVector<LayoutSlot>& slots_;
    ZOT::FastVector<std::size_t>& ends_;
    ZOT::FastVector<unsigned int>& freeFrom_;
    unsigned int coveredRows_ = 0;  // the largest of them
    unsigned int rows_;
    unsigned int cols_ = 0;
    Grant grant_;
    const GridBudget& budget_;
    Outcome outcome_ = Outcome::kPlaced;

    bool footsInPlace_ = false;
    NodeIterator foot_;  // the last foot group met

    // The row that is being filled.
    unsigned int row_ = 0;
    unsigned int nextCol_ = 0;
    std::size_t rowBegin_ = 0;

    std::string value_;
};

bool LayoutTable(NodeIterator first, NodeIterator last, unsigned int& cols, unsigned int& rows,
                 LayoutGrid& grid, GridBudget& budget) {
    rows = CountRows(first, last);
    if (rows == 0) return false;
    for (const Grant grant : {Grant::kSpans, Grant::kNoSpans, Grant::kSingleColumn}) {
        GridLayout layout(grid, rows, grant, budget);
        const Outcome outcome = layout.Place(first, last);
        if (outcome == Outcome::kOutOfMemory) return false;
        if (outcome == Outcome::kOverBudget) continue;
        cols = layout.Cols();
        rows = grid.Rows();
        budget.Spend(std::uint64_t{cols} * rows);
        break;
    }
    return true;
}

const ZOTParser::HtmlDocTree::HtmlTreeNode* OnlyCell(ZOTParser::HtmlDocTree::ChildRange children) {
    const auto only = [](ZOTParser::HtmlDocTree::ChildRange entries) {
        NodeIterator first = entries.Begin();
        return first != entries.End() && std::next(first) == entries.End() ? first.operator->() : nullptr;
    };
    const auto* const row = only(children);
    if (row == nullptr || row->Keyword() != ZOTParser::kKeywordRow) return nullptr;
    const auto* const cell = only(row->Children());
    const bool isPlain =
        cell != nullptr && cell->Keyword() == ZOTParser::kKeywordCell && cell->SourceLength() == 0;
    return isPlain ? cell : nullptr;
}

unsigned int SpanOf(const std::string& value, unsigned int most) {
    const char* at = value.c_str();
    while (*at == ' ' || (*at >= '\t' && *at <= '\r')) ++at;
    const bool negative = *at == '-';
    if (*at == '-' || *at == '+') ++at;
    std::uint64_t number = 0;
    for (; *at >= '0' && *at <= '9' && number < most; ++at)
        number = number * 10 + static_cast<unsigned int>(*at - '0');
    if (negative || number < 1) return 1;
    return static_cast<unsigned int>(std::min<std::uint64_t>(number, most));
}

Outcome GridLayout::Place(NodeIterator first, NodeIterator last) {
    slots_.Resize(0);
    ends_.Resize(0);
    freeFrom_.Resize(0);
    PlaceRows(first, last);
    if (foot_ != NodeIterator()) {
        footsInPlace_ = true;
        PlaceRows(foot_->Children().Begin(), foot_->Children().End());
    }
    // Rows of earlier foot groups: counted, but nothing is placed in them.
    while (!Stopped() && grant_ != Grant::kSingleColumn && row_ < rows_) {
        OpenRow();
        CloseRow();
    }
    return outcome_;
}

void GridLayout::PlaceRows(NodeIterator first, NodeIterator last) {
    for (NodeIterator node = first; node != last && !Stopped(); ++node) {
        if (IsRow(node)) {
            PlaceRow(node->Children().Begin(), node->Children().End());
        } else if (IsFoot(node) && !footsInPlace_) {
            if (node->HasChildren()) foot_ = node;
        } else if (IsRowGroup(node)) {
            PlaceRows(node->Children().Begin(), node->Children().End());
        }
    }
}

void GridLayout::PlaceRow(NodeIterator first, NodeIterator last) {
    const bool rowPerCell = grant_ == Grant::kSingleColumn;
    if (!rowPerCell) OpenRow();
    for (NodeIterator node = first; node != last && !Stopped(); ++node) {
        if (!IsCell(node)) continue;
        if (rowPerCell) OpenRow();
        PlaceCell(node);
        if (rowPerCell) CloseRow();
    }
    if (!rowPerCell) CloseRow();
}

// The row begins with what spans into it from above.
void GridLayout::OpenRow() {
    rowBegin_ = slots_.Size();
    nextCol_ = 0;
    if (coveredRows_ <= row_) return;
    std::size_t size = freeFrom_.Size();
    while (freeFrom_[size - 1] <= row_) --size;
    Check(GrowTo(slots_, rowBegin_ + size));
    if (Stopped()) return;
    for (std::size_t col = 0; col < size; ++col) slots_[rowBegin_ + col].occupied = freeFrom_[col] > row_;
}

void GridLayout::CloseRow() {
    cols_ = std::max(cols_, static_cast<unsigned int>(slots_.Size() - rowBegin_));
    Check(ends_.Append(slots_.Size()));
    ++row_;
}

void GridLayout::PlaceCell(NodeIterator cell) {
    const unsigned int col = FirstFreeColumn();
    const unsigned int rowSpan = Span(cell, kRowSpan, rows_ - row_);
    const unsigned int endCol = col + Span(cell, kColumnSpan, kMaxColumnSpan);
    if (grant_ != Grant::kSingleColumn && !budget_.Allows(std::max(cols_, endCol), rows_)) {
        outcome_ = Outcome::kOverBudget;
        return;
    }
    Check(GrowTo(slots_, rowBegin_ + endCol) && GrowTo(freeFrom_, endCol));
    if (Stopped()) return;
    Cover(col, endCol, row_ + rowSpan);
    slots_[rowBegin_ + col].cell = cell;
    nextCol_ = endCol;
}

unsigned int GridLayout::FirstFreeColumn() const {
    unsigned int col = nextCol_;
    while (rowBegin_ + col < slots_.Size() && slots_[rowBegin_ + col].occupied) ++col;
    return col;
}

unsigned int GridLayout::Span(NodeIterator cell, const std::string& attribute, unsigned int most) {
    if (grant_ != Grant::kSpans) return 1;
    cell->GetParam(attribute, value_);
    return value_.empty() ? 1 : SpanOf(value_, most);
}

void GridLayout::Cover(unsigned int firstCol, unsigned int endCol, unsigned int freeFrom) {
    for (unsigned int col = firstCol; col != endCol; ++col) {
        slots_[rowBegin_ + col].occupied = true;
        freeFrom_[col] = std::max(freeFrom_[col], freeFrom);
    }
    coveredRows_ = std::max(coveredRows_, freeFrom);
}

}  // namespace QuillNS

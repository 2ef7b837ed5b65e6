#pragma once

#include <cstddef>
#include <cstdint>

#include <zot/fast_vector.h>
#include <zot/parser.h>

namespace QuillNS {

// How many grid slots (columns times rows) the tables of a page may still take together, in document order.
// Spans let a few bytes ask for any number of slots, so the source pays for them.
class GridBudget {
public:
    static constexpr std::uint64_t kBase = 16384;  // slots
    static constexpr std::uint64_t kPerByte = 4;   // slots per byte of the parsed source

    explicit GridBudget(unsigned int sourceSize) : left_(kBase + kPerByte * sourceSize) {}

    bool Allows(std::uint64_t cols, std::uint64_t rows) const { return cols * rows <= left_; }
    void Spend(std::uint64_t slots) { left_ -= slots < left_ ? slots : left_; }

private:
    std::uint64_t left_;
};

// One position of a table's grid: free (neither), covered by the span of a cell that starts elsewhere
// (occupied), or the place where a cell starts (both).
struct LayoutSlot {
    bool occupied = false;
    ZOTParser::HtmlDocTree::ChildIterator cell;  // the end iterator: no cell starts here
};

class LayoutRow {
public:
    LayoutRow(const LayoutSlot* first, const LayoutSlot* last) : first_(first), last_(last) {}
    const LayoutSlot* begin() const { return first_; }
    const LayoutSlot* end() const { return last_; }
    std::size_t Size() const { return static_cast<std::size_t>(last_ - first_); }
    const LayoutSlot& operator[](std::size_t col) const { return first_[col]; }

private:
    const LayoutSlot* first_;
    const LayoutSlot* last_;
};

// The rows of a table. Each is as long as the farthest column that a cell which starts in it, or spans into
// it, reaches.
//
//   slots_  [ A ][ B ][ C ][ . ][ D ][ E ]     <tr><td>A<td rowspan=2>B <tr><td>C <tr> <tr><td>D<td>E
//   ends_           2         4    4         6
class LayoutGrid {
public:
    unsigned int Rows() const { return static_cast<unsigned int>(ends_.Size()); }
    LayoutRow operator[](unsigned int row) const {
        return {slots_.Begin() + (row == 0 ? 0 : ends_[row - 1]), slots_.Begin() + ends_[row]};
    }

    void Swap(LayoutGrid& other) noexcept {
        slots_.Swap(other.slots_);
        ends_.Swap(other.ends_);
        freeFrom_.Swap(other.freeFrom_);
    }

private:
    friend class GridLayout;
    ZOT::FastVector<LayoutSlot> slots_;
    ZOT::FastVector<std::size_t> ends_;
    // While it is laid out, for each column the first row from here on that nothing covers.
    ZOT::FastVector<unsigned int> freeFrom_;
};

// Lays out the table whose child entries are [first, last): every cell gets the position where it starts, as
// the spans of the cells before it leave it. Rows are found inside row groups too (a group inside a group
// counts as its rows in its place); those of the last foot group come last, those of earlier foot groups keep
// their number at the end of the grid and hold no cells.
//
// `cols` and `rows` are 0 on entry; `grid` is replaced, in the room that it has. False when the table has no
// rows (`rows` is then 0), and when memory runs out.
//
// A table whose grid would outgrow `budget` is laid out without spans, and one that is too large even so as a
// single column with one cell in each row. The order of the cells stays.
bool LayoutTable(ZOTParser::HtmlDocTree::ChildIterator first, ZOTParser::HtmlDocTree::ChildIterator last,
                 unsigned int& cols, unsigned int& rows, LayoutGrid& grid, GridBudget& budget);

// The cell of a table of one row and one cell that the page does not spell out, which is what the blocks of a
// page are delivered as; null for any other table. Its layout is one slot.
const ZOTParser::HtmlDocTree::HtmlTreeNode* OnlyCell(ZOTParser::HtmlDocTree::ChildRange children);

// The value of a span attribute as `atoi` reads it (white space, a sign, digits; 0 for anything else), held
// within 1 to `most`. An absent (empty) one is 1.
unsigned int SpanOf(const std::string& value, unsigned int most);

}  // namespace QuillNS

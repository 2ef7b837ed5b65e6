#include "grid_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "page.h"

namespace QuillNS {
namespace {

constexpr unsigned int kAmple = 1u << 20;  // source bytes that pay for every grid of these tests

// The rows of a table, divided by bars: where a cell starts its text, '.' for a covered slot, '-' for a free
// one. "none" for a table without rows.
std::string DumpGrid(const std::string& rowsHtml, unsigned int sourceSize = kAmple) {
    const Page page("<table>" + rowsHtml + "</table>");
    const auto table = page.FirstTable();
    LayoutGrid grid;
    GridBudget budget(sourceSize);
    unsigned int cols = 0;
    unsigned int rows = 0;
    if (!LayoutTable(table.Begin(), table.End(), cols, rows, grid, budget))
        return rows == 0 ? "none" : "no memory";
    EXPECT_EQ(rows, grid.Rows());

    std::string dump;
    std::size_t longest = 0;
    for (unsigned int row = 0; row != rows; ++row) {
        if (row != 0) dump += " |";
        longest = std::max(longest, grid[row].Size());
        for (const LayoutSlot& slot : grid[row]) {
            if (!dump.empty()) dump += " ";
            std::u16string text;
            const bool starts = slot.cell != ZOTParser::HtmlDocTree::ChildIterator();
            if (starts && slot.cell->HasChildren()) slot.cell->Children().Begin()->GetText(text);
            EXPECT_TRUE(slot.occupied || !starts);
            dump += starts ? std::string(text.begin(), text.end()) : slot.occupied ? "." : "-";
        }
    }
    EXPECT_EQ(cols, longest);
    return dump;
}

TEST(GridLayout, PlacesCells) {
    struct Case {
        const char* html;
        const char* grid;
    };
    const Case cases[] = {
        {"<tr><td>A<th>B<tr><td>C", "A B | C"},
        {"<tr><td rowspan=2>A<td>B<tr><td>C", "A B | . C"},
        {"<tr><td colspan=3>A", "A . ."},
        {"<tr><td colspan=2>A<td>B<tr><td>C", "A . B | C"},
        {"<tr><td rowspan=2 colspan=2>A<td>B<tr><td>C", "A . B | . . C"},
        {"<tr><td>A<td rowspan=3>B<tr><td>C<td>D<tr>", "A B | C . D | - ."},
        // A span that runs into one from above shares the slot.
        {"<tr><td>A<td rowspan=2>B<tr><td colspan=3>C", "A B | C . ."},
        {"<tr><td>A<td rowspan=3>B<tr><td colspan=3>C<tr><td>D<td>E", "A B | C . . | D . E"},
        // Spans end with the table, and nonsense counts as 1.
        {"<tr><td>A<tr><td rowspan=10>B<tr><td>C", "A | B | . C"},
        {"<tr><td rowspan=0>A<tr><td>B", "A | B"},
        {"<tr><td rowspan=-1>A<td colspan=x>B<td colspan=''>C<tr><td>D", "A B C | D"},
        {"<tr><td colspan=2x>A", "A ."},
        {"<tr><td colspan=' +2'>A", "A ."},
        {"<tr><td colspan=-99999999999999999999>A", "A"},
        // Rows without cells are rows; a table without rows is none.
        {"<tr><tr><td>A<tr>", " | A |"},
        {"<caption>A</caption>", "none"},
        {"", "none"},
        // Rows of a table inside a cell belong to that one.
        {"<tr><td>A<table><tr><td>B<tr><td>C</table>", "A"},
        // The last foot group comes last. Rows of earlier ones are counted and left empty.
        {"<tfoot><tr><td>F<tbody><tr><td>A<thead><tr><td>H", "A | H | F"},
        {"<tfoot><tr><td>X<tbody><tr><td>A<tfoot><tr><td>F", "A | F |"},
        {"<tfoot><tr><td>X<tbody><tr><td>A<tfoot><tr><td rowspan=9>F<td>G", "A | F G | ."},
        // A foot group without rows does not count as one.
        {"<tfoot><tr><td>F<tfoot></tfoot><tbody><tr><td>A", "A | F"},
    };
    for (const Case& c : cases) EXPECT_EQ(DumpGrid(c.html), c.grid) << c.html;
}

std::string Repeat(const std::string& text, int times) {
    std::string repeated;
    for (int i = 0; i < times; ++i) repeated += text;
    return repeated;
}

TEST(GridLayout, ColumnSpansEndAtAThousand) {
    EXPECT_EQ(DumpGrid("<tr><td colspan=65534>A"), "A" + Repeat(" .", 999));
    EXPECT_EQ(DumpGrid("<tr><td colspan=99999999999999999999>A"), "A" + Repeat(" .", 999));
}

TEST(GridLayout, ATableThatOutgrowsTheBudgetLosesItsSpans) {
    const std::string rows = Repeat("<tr><td colspan=1000>A<td>B", 17);
    EXPECT_EQ(DumpGrid(rows, 0), "A B" + Repeat(" | A B", 16));  // 17 * 1001 slots, 16384 are there
    EXPECT_NE(DumpGrid(rows, 1000), "A B" + Repeat(" | A B", 16));
}

TEST(GridLayout, ATableThatIsTooLargeEvenSoBecomesAColumn) {
    const std::string html = "<tr>" + Repeat("<td>A", 200) + Repeat("<tr><td>B", 100);
    EXPECT_EQ(DumpGrid(html, 0),
              "A" + Repeat(" | A", 199) + Repeat(" | B", 100));  // 200 * 101 slots otherwise
}

TEST(GridLayout, TablesShareTheBudget) {
    const Page page("<table><tr><td colspan=1000>A<td>B</table>");
    const auto table = page.FirstTable();
    GridBudget budget(0);
    std::string widths;
    for (int i = 0; i < 18; ++i) {
        LayoutGrid grid;
        unsigned int cols = 0;
        unsigned int rows = 0;
        ASSERT_TRUE(LayoutTable(table.Begin(), table.End(), cols, rows, grid, budget));
        widths += std::to_string(cols) + " ";
    }
    EXPECT_EQ(widths, Repeat("1001 ", 16) + "2 2 ");
}

// Slots are paid for by the source, whatever the page asks for.
TEST(GridLayout, HostileTablesStayWithinTheBudget) {
    const std::string cases[] = {
        Repeat("<tr><td rowspan=10000>A", 10000),
        Repeat("<tr><td rowspan=10000 colspan=1000>A", 10000),
        "<tr>" + Repeat("<td>A", 1000) + Repeat("<tr><td>B", 20000),
        "<tr>" + Repeat("<td rowspan=65534>A", 1000) + Repeat("<tr>", 20000),
        Repeat("<tr>", 50000),
        Repeat("<tr>" + Repeat("<td>A", 30) + "<td colspan=1000 rowspan=65534>B", 300),
    };
    for (const std::string& html : cases) {
        const Page page("<table>" + html + "</table>");
        const auto table = page.FirstTable();
        LayoutGrid grid;
        GridBudget budget(static_cast<unsigned int>(html.size()));
        unsigned int cols = 0;
        unsigned int rows = 0;
        ASSERT_TRUE(LayoutTable(table.Begin(), table.End(), cols, rows, grid, budget));
        EXPECT_LE(std::uint64_t{cols} * rows, GridBudget::kBase + GridBudget::kPerByte * html.size());
    }
}

}  // namespace
}  // namespace QuillNS

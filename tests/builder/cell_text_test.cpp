#include "cell_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <quill/table.h>

namespace QuillNS {
namespace {

class CellTextTest : public ::testing::Test {
protected:
    void Add(std::u16string raw, bool inAnchor = false) { text_.AddText(raw, 10, 4, cell_, inAnchor); }
    void AddPreformatted(std::u16string raw) { text_.AddPreformattedText(raw, 10, 4, cell_, false); }
    void AddTable() {
        cell_->AddCellItem()->Table(ZOT::SmartPtr<KTable>(new KTable(nullptr, 1, 1, 1), true));
    }

    // The items' texts, each closed by a bar; a table shows as T.
    std::u16string Dump() const {
        std::u16string dump;
        for (const auto& item : *cell_) dump += (item->IsText() ? item->Text() : u"T") + u"|";
        return dump;
    }

    CellText text_;
    ZOT::SmartPtr<KCell> cell_{new KCell(nullptr, 0, 0), true};
};

TEST_F(CellTextTest, CleansAndJoins) {
    struct Case {
        std::vector<std::u16string> texts;
        std::u16string dump;
    };
    const Case cases[] = {
        {{u"one"}, u"one|"},
        {{u" \n one \t two "}, u"one two |"},
        {{u"one", u"two"}, u"one|two|"},
        {{u"one", u" two"}, u"one| two|"},
        {{u"one ", u" two"}, u"one | two|"},
        // White space alone parts words, once, and makes no item.
        {{u"one", u" \n\t ", u"\u00A0", u"two"}, u"one |two|"},
        {{u"one ", u" "}, u"one |"},
        {{u" ", u"\u3000 "}, u""},
        {{u"one", u"\u200B", u"two"}, u"one |two|"},
        {{u"one", u" \u00AD ", u"two"}, u"one |two|"},
        {{u"one", u"\u2028", u"two"}, u"one |two|"},
        // A line feed between texts eats the white space on its other side.
        {{u"one\u2028", u"  two"}, u"one\n|two|"},
        {{u"one ", u"\u2029two"}, u"one|\ntwo|"},
        {{u"one\u2028", u"\u2028two"}, u"one\n|two|"},
    };
    for (const Case& c : cases) {
        cell_ = new KCell(nullptr, 0, 0);
        for (const std::u16string& text : c.texts) Add(text);
        EXPECT_EQ(Dump(), c.dump);
    }
}

TEST_F(CellTextTest, ATableCutsTheTextOff) {
    Add(u"one");
    AddTable();
    Add(u" ");
    BreakLine(cell_);
    EXPECT_EQ(Dump(), u"one|T|");
    Add(u" two");
    EXPECT_EQ(Dump(), u"one|T|two|");
}

TEST_F(CellTextTest, KeepsTheSourceSpanOfTheNode) {
    Add(u" one ");
    Add(u" ");
    BreakLine(cell_);
    EXPECT_EQ((*cell_->Back())->SourcePosition(), 10u);
    EXPECT_EQ((*cell_->Back())->SourceLength(), 4u);
}

TEST_F(CellTextTest, CountsWords) {
    Add(u" one two");      // the blank before it goes, and does not count
    Add(u" three", true);  // the blank before it stays, and counts
    Add(u"   ", true);
    EXPECT_EQ(cell_->Words(), 4u);
    EXPECT_EQ(cell_->WordsInLinksAndImages(), 2u);
    AddPreformatted(u"a\r\nb");
    EXPECT_EQ(cell_->Words(), 6u);
}

TEST_F(CellTextTest, PreformattedTextStaysAsItIs) {
    struct Case {
        std::u16string raw, dump;
    };
    const Case cases[] = {
        {u"  a \n\n  b\t", u"  a \n\n  b\t|"},
        {u"a\r\nb\r\n", u"a\nb\n|"},
        {u"a\rb\r\r\nc\r", u"a\rb\r\nc\r|"},
        {u" ", u" |"},
        {u"\u200B", u"\u200B|"},
    };
    for (const Case& c : cases) {
        cell_ = new KCell(nullptr, 0, 0);
        AddPreformatted(c.raw);
        EXPECT_EQ(Dump(), c.dump);
    }
}

TEST_F(CellTextTest, BreaksTheLineAtMostTwice) {
    BreakLine(cell_);
    EXPECT_EQ(Dump(), u"");
    Add(u"one");
    BreakLine(cell_);
    EXPECT_EQ(Dump(), u"one\n|");
    BreakLine(cell_);
    BreakLine(cell_);
    EXPECT_EQ(Dump(), u"one\n\n|");
}

TEST_F(CellTextTest, AnEmptyTextIsNotBroken) {
    AddPreformatted(u"\n");
    BreakLine(cell_);
    EXPECT_EQ(Dump(), u"\n\n|");
    (*cell_->Back())->Text().clear();
    BreakLine(cell_);
    EXPECT_EQ(Dump(), u"|");
}

}  // namespace
}  // namespace QuillNS
